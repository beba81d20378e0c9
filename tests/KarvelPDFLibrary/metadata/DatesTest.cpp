#include "KarvelPDFLibrary/metadata/Dates.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel::metadata;

struct Row {
    const char* name;
    const char* text;
    const char* iso; // empty: no date
};

TEST(PdfDates, AreReadAsIso8601)
{
    const Row rows[] = {
        {"whole", "D:20240229120305+01'30'", "2024-02-29T12:03:05+01:30"},
        {"without last apostrophe", "D:20240229120305-08'00", "2024-02-29T12:03:05-08:00"},
        {"universal", "D:20240229120305Z", "2024-02-29T12:03:05+00:00"},
        {"universal with zeros", "D:20240229120305Z00'00'", "2024-02-29T12:03:05+00:00"},
        {"hours of offset only", "D:20240229120305+01", "2024-02-29T12:03:05+01:00"},
        {"unknown offset", "D:20240229120305", "2024-02-29T12:03:05"},
        {"year only", "D:2024", "2024-01-01T00:00:00"},
        {"without prefix", "20240229", "2024-02-29T00:00:00"},
        {"day that does not exist", "D:20230229", ""},
        {"month 13", "D:20241301", ""},
        {"words", "yesterday", ""},
        {"empty", "", ""},
        {"hostile", "D:99999999999999999999999999999999999999999999999999999", ""}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto date = fromPdf(row.text);
        EXPECT_EQ(date ? toIso8601(*date) : "", row.iso);
    }
}

TEST(IsoDates, AreWrittenAsPdf)
{
    const Row rows[] = {{"whole", "2024-02-29T12:03:05+01:30", "D:20240229120305+01'30'"},
                        {"universal", "2024-02-29T12:03:05Z", "D:20240229120305+00'00'"},
                        {"fraction", "2024-02-29T12:03:05.25-08:00", "D:20240229120305-08'00'"},
                        {"without seconds", "2024-02-29T12:03", "D:20240229120300"},
                        {"day", "2024-02-29", "D:20240229000000"},
                        {"century without leap day", "1900-02-29", ""},
                        {"hour 24", "2024-02-29T24:00:00", ""},
                        {"slashes", "2024/02/29", ""}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto date = fromIso8601(row.text);
        EXPECT_EQ(date ? toPdf(*date) : "", row.iso);
    }
}

} // namespace
