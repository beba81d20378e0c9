#include "KarvelPDFLibrary/metadata/Dates.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel::metadata;

struct Row {
    const char* name;
    const char* text;
    const char* iso; // empty: no date
};

class PdfDates : public testing::TestWithParam<Row> {};

TEST_P(PdfDates, AreReadAsIso8601)
{
    const auto date = fromPdf(GetParam().text);
    EXPECT_EQ(date ? toIso8601(*date) : "", GetParam().iso);
}

INSTANTIATE_TEST_SUITE_P(
    Dates, PdfDates,
    testing::Values(
        Row{"whole", "D:20240229120305+01'30'", "2024-02-29T12:03:05+01:30"},
        Row{"without_last_apostrophe", "D:20240229120305-08'00", "2024-02-29T12:03:05-08:00"},
        Row{"universal", "D:20240229120305Z", "2024-02-29T12:03:05+00:00"},
        Row{"universal_with_zeros", "D:20240229120305Z00'00'", "2024-02-29T12:03:05+00:00"},
        Row{"hours_of_offset_only", "D:20240229120305+01", "2024-02-29T12:03:05+01:00"},
        Row{"unknown_offset", "D:20240229120305", "2024-02-29T12:03:05"},
        Row{"year_only", "D:2024", "2024-01-01T00:00:00"},
        Row{"without_prefix", "20240229", "2024-02-29T00:00:00"},
        Row{"day_that_does_not_exist", "D:20230229", ""}, Row{"month_13", "D:20241301", ""},
        Row{"words", "yesterday", ""}, Row{"empty", "", ""},
        Row{"hostile", "D:99999999999999999999999999999999999999999999999999999", ""}),
    [](const auto& info) { return info.param.name; });

class IsoDates : public testing::TestWithParam<Row> {};

TEST_P(IsoDates, AreWrittenAsPdf)
{
    const auto date = fromIso8601(GetParam().text);
    EXPECT_EQ(date ? toPdf(*date) : "", GetParam().iso);
}

INSTANTIATE_TEST_SUITE_P(
    Dates, IsoDates,
    testing::Values(Row{"whole", "2024-02-29T12:03:05+01:30", "D:20240229120305+01'30'"},
                    Row{"universal", "2024-02-29T12:03:05Z", "D:20240229120305+00'00'"},
                    Row{"fraction", "2024-02-29T12:03:05.25-08:00", "D:20240229120305-08'00'"},
                    Row{"without_seconds", "2024-02-29T12:03", "D:20240229120300"},
                    Row{"day", "2024-02-29", "D:20240229000000"},
                    Row{"century_without_leap_day", "1900-02-29", ""},
                    Row{"hour_24", "2024-02-29T24:00:00", ""}, Row{"slashes", "2024/02/29", ""}),
    [](const auto& info) { return info.param.name; });

} // namespace
