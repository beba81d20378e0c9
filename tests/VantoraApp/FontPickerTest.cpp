#include "tests/VantoraApp/PickedFonts.h"
#include "tests/VantoraApp/binding/Recording.h"

#include <QtCore/QStringList>

#include <gmock/gmock.h>

namespace {

Recording& recording(const LoadedLibrary& library)
{
    return *reinterpret_cast<Recording* (*)()>(library.find("recording"))();
}

TEST(SystemFonts, AreNoneWithoutTheLibrary)
{
    EXPECT_EQ(pickedFonts(), QStringList());
}

struct FontsRow {
    const char* sentence;
    std::wstring answer;
    QStringList fonts;
};

class SystemFontsOf : public testing::TestWithParam<FontsRow> {};

TEST_P(SystemFontsOf, TheLibraryAreListed)
{
    const LoadedLibrary library(RECORDING_LIBRARY);
    recording(library).texts["GetInstalledFontsByCharset"] = {GetParam().answer};
    EXPECT_EQ(pickedFonts(), GetParam().fonts);
}

INSTANTIATE_TEST_SUITE_P(
    , SystemFontsOf,
    testing::Values(FontsRow{"none", L"", {}}, FontsRow{"only_a_line_end", L"\r\n", {}},
                    FontsRow{"one", L"Arial", {"Arial"}},
                    FontsRow{"in_the_order_of_the_library",
                             L"Symbola\r\nArial\r\nArial",
                             {"Symbola", "Arial", "Arial"}},
                    FontsRow{"with_line_ends_at_the_end", L"A\r\nB\r\n\r\n\r\n", {"A", "B"}},
                    FontsRow{
                        "with_an_empty_one_in_the_middle", L"\r\nA\r\n\r\nB", {"", "A", "", "B"}},
                    FontsRow{"with_single_line_end_characters", L"A\nB\rC\r\nD", {"A\nB\rC", "D"}},
                    FontsRow{"with_characters_of_two_code_units",
                             L"\U0001D4D0\u00E4\r\nB",
                             {QString::fromUtf8("\U0001D4D0\u00E4"), "B"}}),
    [](const auto& info) { return std::string(info.param.sentence); });

TEST(SystemFonts, AreAskedForOnceByALibraryOfTheirOwn)
{
    const LoadedLibrary library(RECORDING_LIBRARY);
    pickedFonts();
    EXPECT_THAT(recording(library).calls,
                testing::ElementsAre("CreateLibrary()", "GetInstalledFontsByCharset(7, 2, 1)",
                                     "StringResultLength(7)", "ReleaseLibrary(7)"));
}

} // namespace
