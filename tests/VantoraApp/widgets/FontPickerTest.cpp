#include "tests/VantoraApp/binding/Recording.h"
#include "tests/VantoraApp/widgets/PickedFonts.h"

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

TEST(SystemFontsOf, TheLibraryAreListed)
{
    const FontsRow rows[] = {
        {"none", L"", {}},
        {"only a line end", L"\r\n", {}},
        {"one", L"Arial", {"Arial"}},
        {"in the order of the library",
         L"Symbola\r\nArial\r\nArial",
         {"Symbola", "Arial", "Arial"}},
        {"with line ends at the end", L"A\r\nB\r\n\r\n\r\n", {"A", "B"}},
        {"with an empty one in the middle", L"\r\nA\r\n\r\nB", {"", "A", "", "B"}},
        {"with single line end characters", L"A\nB\rC\r\nD", {"A\nB\rC", "D"}},
        {"with characters of two code units",
         L"\U0001D4D0\u00E4\r\nB",
         {QString::fromUtf8("\U0001D4D0\u00E4"), "B"}}};
    for (const FontsRow& row : rows) {
        SCOPED_TRACE(row.sentence);
        const LoadedLibrary library(RECORDING_LIBRARY);
        recording(library).texts["GetInstalledFontsByCharset"] = {row.answer};
        EXPECT_EQ(pickedFonts(), row.fonts);
    }
}

TEST(SystemFonts, AreAskedForOnceByALibraryOfTheirOwn)
{
    const LoadedLibrary library(RECORDING_LIBRARY);
    pickedFonts();
    EXPECT_THAT(recording(library).calls,
                testing::ElementsAre("CreateLibrary()", "GetInstalledFontsByCharset(7, 2, 1)",
                                     "StringResultLength(7)", "ReleaseLibrary(7)"));
}

} // namespace
