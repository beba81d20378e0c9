#include "VantoraHost/core/reports/DocumentReport.h"

#include "VantoraHost/core/reports/Json.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace vantora;

TEST(Report, OfADoneDocumentHasEveryFigure)
{
    DocumentReport report;
    report.input = "a.pdf";
    report.output = "b.pdf";
    report.outputExisted = true;
    report.inputModified = "2";
    report.inputSha256 = "ab";
    report.outputModified = "1";
    report.inPart = true;
    report.status = DocumentStatus::Done;
    report.pagesBefore = 5;
    report.pagesAfter = 3;
    report.pagesRemoved = std::vector<int>{2, 4};
    report.bytesBefore = 5000000000;
    report.bytesAfter = 12;
    report.warnings = {"one"};
    report.repairs = {"two"};
    report.leftToJudge = {"three"};
    report.losses = {{3, "gone"}};
    report.outputSha256 = "ef";
    report.verified = {7, {"told"}, {{5, 4}, {}, {}, {}, {1, 0}}, {{2, 4, "ii", "iv"}}};
    report.seconds = 0.25;
    const RunIdentity run = {"1.0", "cd", R"([{"action":"A"}])", 3};
    EXPECT_EQ(
        toJson(report, run),
        R"({"schema":1,"input":"a.pdf","output":"b.pdf","output_existed":true,)"
        R"("pages_before":5,"pages_after":3,)"
        R"("pages_removed":[2,4],"bytes_before":5000000000,"bytes_after":12,)"
        R"("input_modified":"2","input_modified_at":"1970-01-01T00:00:00.000000002Z",)"
        R"("input_sha256":"ab",)"
        R"("output_modified":"1","output_modified_at":"1970-01-01T00:00:00.000000001Z",)"
        R"("in_part":true,"left_blank":false,"status":"done","warnings":["one","repaired: two"],)"
        R"("output_sha256":"ef","verified":true,"looked_for":7,"not_told":["told"],)"
        R"("amounts":{"outline_entries":{"before":5,"after":4},"links":{"before":0,"after":0},)"
        R"("fields":{"before":0,"after":0},"signatures":{"before":0,"after":0},)"
        R"("attachments":{"before":1,"after":0}},)"
        R"("labels_removed":[{"first":2,"last":4,"first_label":"ii","last_label":"iv"}],)"
        R"("losses":[{"page":3,"text":"gone"}],"errors":[],"left":["three"],"seconds":0.25,)"
        R"("run":{"version":"1.0","started":"3","started_at":"1970-01-01T00:00:00.000000003Z",)"
        R"("steps_sha256":"cd","steps":[{"action":"A"}]}})");
}

TEST(Report, OfAFailedDocumentSaysNullForWhatIsNotKnown)
{
    DocumentReport report;
    report.input = "a.pdf";
    report.error = Error{Reason::PasswordWrong, "a.pdf", "no"};
    EXPECT_EQ(
        toJson(report),
        R"({"schema":1,"input":"a.pdf","output":null,"output_existed":null,"pages_before":null,)"
        R"("pages_after":null,"pages_removed":null,"bytes_before":null,)"
        R"("bytes_after":null,"input_modified":null,"input_modified_at":null,"input_sha256":null,)"
        R"("output_modified":null,"output_modified_at":null,"in_part":false,"left_blank":false,"status":"failed",)"
        R"("warnings":[],)"
        R"("errors":[{"reason":"password-wrong","text":"no"}],"left":[],"seconds":0})");
}

TEST(JsonText, IsEscaped)
{
    const struct {
        const char* name;
        std::string text;
        const char* json;
    } rows[] = {
        {"quotes and backslashes", "a\"b\\c", "a\\\"b\\\\c"},
        {"control characters", {"\n\x1b\x7f\0", 4}, "\\u000a\\u001b\\u007f\\u0000"},
        {"accents", "\xc3\xa9", "\\u00e9"},
        {"beyond the basic plane", "\xf0\x9f\x93\x84", "\\ud83d\\udcc4"},
        {"bytes that are not UTF-8", "caf\xe9", "caf\\udce9"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(JsonObject().add("t", row.text).text(),
                  std::string("{\"t\":\"") + row.json + "\"}")
            << row.name;
    }
}

TEST(Json, OfNothingIsAnEmptyObject)
{
    EXPECT_EQ(JsonObject().text(), "{}");
    EXPECT_EQ(JsonObject().add("l", std::vector<std::string>()).text(), R"({"l":[]})");
    EXPECT_EQ(JsonObject().add("n", std::numeric_limits<double>::quiet_NaN()).text(),
              R"({"n":null})");
}

} // namespace
