#include "KarvelPDFLibrary/signatures/Signatures.h"

#include "tests/support/Inspect.h"
#include "tests/support/Sketch.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <tuple>

namespace {

using namespace karvel;

TEST(SignatureFields, AreSignedWhenTheyHaveAValue)
{
    const support::Sketch sketch = {{""},
                                    "/AcroForm << /Fields [@text @unsigned @group @empty] >>",
                                    {{"text", "<< /FT /Tx /T (a) /V (text) >>"},
                                     {"unsigned", "<< /FT /Sig /T (b) >>"},
                                     {"group", "<< /FT /Sig /T (c) /V @value /Kids [@below] >>"},
                                     {"below", "<< /T (d) /Parent @group >>"},
                                     {"empty", "<< /FT /Sig /T (e) /V null >>"},
                                     {"value", "<< /Type /Sig /Contents <00> >>"}}};
    auto document = support::opened(sketch.built());
    EXPECT_EQ(signatures::count(*document), 3);
    EXPECT_FALSE(signatures::isSigned(*document, 1).value());
    EXPECT_TRUE(signatures::isSigned(*document, 2).value());
    EXPECT_FALSE(signatures::isSigned(*document, 3).value());
    EXPECT_EQ(signatures::fieldOf(*document, 2).value(), 3);
    for (const int none : {0, 4, -1}) {
        EXPECT_EQ(signatures::isSigned(*document, none).error().code, ErrorCode::NotFound) << none;
    }
}

TEST(SignatureTexts, AreWhatTheSignatureSaysOfItself)
{
    const support::Sketch sketch = {
        {""},
        "/AcroForm << /Fields [@signed @unsigned @odd] >>",
        {{"signed", "<< /FT /Sig /T (a) /V << /Name (Ann) /M (D:20240229120000+01'00') "
                    "/Filter /Some.Handler /Contents <00> >> >>"},
         {"unsigned", "<< /FT /Sig /T (b) >>"},
         {"odd", "<< /FT /Sig /T (c) /V << /Name 7 /M (yesterday) >> >>"}}};
    auto document = support::opened(sketch.built());
    using signatures::Text;
    const std::tuple<int, Text, const char*> rows[] = {
        {1, Text::Signer, "Ann"},     {1, Text::Date, "2024-02-29T12:00:00+01:00"},
        {1, Text::Reason, ""},        {1, Text::Handler, "Some.Handler"},
        {2, Text::Signer, ""},        {3, Text::Signer, ""},
        {3, Text::Date, "yesterday"},
    };
    for (const auto& [number, text, said] : rows) {
        EXPECT_EQ(signatures::textOf(*document, number, text).value(), said) << number;
    }
    EXPECT_FALSE(signatures::textOf(*document, 4, Text::Signer));
}

/// A signed document whose byte range is `range` of the places before and after its contents and of
/// its end, with `more` after it.
std::string
signedBy(const std::function<std::array<std::size_t, 4>(std::size_t before, std::size_t after,
                                                        std::size_t end)>& range,
         const std::string& more, const std::string& contents = "<00ff>")
{
    std::string pdf =
        support::Sketch{{""},
                        "/AcroForm << /Fields [@field] >>",
                        {{"field", "<< /FT /Sig /T (a) /V @value >>"},
                         {"value", "<< /Type /Sig /ByteRange [000000 000000 000000 000000] "
                                   "/Contents " +
                                       contents + " >>"}}}
            .built();
    const std::size_t before = pdf.find("/Contents " + contents) + 10;
    std::size_t place = pdf.find("[000000") + 1;
    for (const std::size_t number : range(before, before + contents.size(), pdf.size())) {
        const std::string digits = std::to_string(number);
        pdf.replace(place + 6 - digits.size(), digits.size(), digits);
        place += 7;
    }
    return pdf + more;
}

TEST(SignatureCoverage, IsOfTheWholeFileOnlyWhereNothingButTheContentsIsLeftOut)
{
    using signatures::Coverage;
    using Numbers = std::array<std::size_t, 4>;
    const auto all = [](std::size_t before, std::size_t after, std::size_t end) {
        return Numbers{0, before, after, end - after};
    };
    const struct {
        const char* name;
        std::string pdf;
        Coverage coverage;
    } rows[] = {
        {"all but the contents", signedBy(all, ""), Coverage::WholeFile},
        {"contents with white space", signedBy(all, "", "<00 ff >"), Coverage::WholeFile},
        {"an earlier revision", signedBy(all, "\n% something after it\n"),
         Coverage::EarlierRevision},
        {"the end is left out",
         signedBy(
             [](auto b, auto a, auto e) {
                 return Numbers{0, b, a, e - a - 20};
             },
             ""),
         Coverage::Less},
        {"the beginning is left out",
         signedBy(
             [](auto b, auto a, auto e) {
                 return Numbers{9, b - 9, a, e - a};
             },
             ""),
         Coverage::Less},
        {"more than the contents is left out",
         signedBy(
             [](auto b, auto a, auto e) {
                 return Numbers{0, b - 4, a, e - a};
             },
             ""),
         Coverage::Less},
        {"ranges that overlap",
         signedBy(
             [](auto, auto a, auto e) {
                 return Numbers{0, a + 9, a, e - a};
             },
             ""),
         Coverage::Unknown},
        {"a range beyond the file",
         signedBy(
             [](auto b, auto a, auto e) {
                 return Numbers{0, b, a, e};
             },
             ""),
         Coverage::Unknown},
    };
    for (const auto& row : rows) {
        auto document = support::opened(row.pdf);
        EXPECT_EQ(signatures::coverageOf(*document, 1).value(), row.coverage) << row.name;
    }
    auto unsignedOne = support::opened(
        support::Sketch{{""}, "/AcroForm << /Fields [<< /FT /Sig /T (b) >>] >>", {}}.built());
    EXPECT_EQ(signatures::coverageOf(*unsignedOne, 1).value(), Coverage::Unknown);
}

} // namespace
