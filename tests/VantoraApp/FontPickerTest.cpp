#include "VantoraApp/CActionUtils.h"
#include "tests/VantoraApp/binding/Recording.h"

#include <QtCore/QProcess>
#include <QtCore/QStringList>
#include <QtWidgets/QComboBox>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <memory>

namespace {

/// A library in this process under the name by which the picker asks for it: the loader gives the
/// one that is there.
class LoadedLibrary {
public:
    explicit LoadedLibrary(const char* path) : handle(dlopen(path, RTLD_NOW | RTLD_LOCAL))
    {
        if (handle == nullptr)
            ADD_FAILURE() << dlerror();
    }
    ~LoadedLibrary() { dlclose(handle); }
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    Recording& recording() const
    {
        return *reinterpret_cast<Recording* (*)()>(dlsym(handle, "recording"))();
    }

private:
    void* handle;
};

QStringList picked()
{
    QComboBox box;
    box.addItem("before");
    CActionUtils::SetupSystemFontsComboBox(&box);
    QStringList all;
    for (int row = 0; row < box.count(); ++row)
        all.append(box.itemText(row));
    return all;
}

TEST(SystemFonts, AreNoneWithoutTheLibrary)
{
    EXPECT_EQ(picked(), QStringList());
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
    library.recording().texts["GetInstalledFontsByCharset"] = {GetParam().answer};
    EXPECT_EQ(picked(), GetParam().fonts);
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
    picked();
    EXPECT_THAT(library.recording().calls,
                testing::ElementsAre("CreateLibrary()", "GetInstalledFontsByCharset(7, 2, 1)",
                                     "StringResultLength(7)", "ReleaseLibrary(7)"));
}

} // namespace
