#include "BindingFixture.h"

#include <algorithm>
#include <climits>
#include <type_traits>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Loading : public BindingTest {
protected:
    static std::vector<std::string> allExports()
    {
        std::vector<std::string> names;
        for (const ForwarderRow& row : forwarderRows()) {
            names.push_back("KPL" + row.name);
        }
        for (const char* name :
             {"KPLCreateLibrary", "KPLCreateBuffer", "KPLAddToBuffer", "KPLReleaseLibrary",
              "KPLStringResultLength", "KPLAnsiStringResultLength", "KPLReleaseBuffer"}) {
            names.emplace_back(name);
        }
        return names;
    }

    /// Every operation answers its empty value, and the library hears nothing of it.
    void expectInert(Binding& binding) const
    {
        EXPECT_FALSE(binding.LibraryLoaded());
        for (const ForwarderRow& row : forwarderRows()) {
            EXPECT_EQ(row.call(binding, {true, false}), emptyOutcome(row.result)) << row.name;
        }
        int bufferUsed = 1;
        const std::string text(1, '\0');
        EXPECT_EQ(binding.StringParm(text, bufferUsed), text.c_str());
        EXPECT_EQ(bufferUsed, 0);
        EXPECT_EQ(binding.WideStringParm(L"text"), nullptr);
        EXPECT_THAT(record->calls, IsEmpty());
    }
};

TEST_F(Loading, FindsEveryExportInTheOrderOfTheListThenCreatesAnInstance)
{
    const auto binding = load();
    EXPECT_TRUE(binding->LibraryLoaded());
    EXPECT_EQ(loaderSpy().lookups, allExports());
    EXPECT_THAT(calls(), ElementsAre("CreateLibrary()"));
}

TEST_F(Loading, OpensTheLibraryLazilyAndForItselfOnly)
{
    load();
    ASSERT_EQ(loaderSpy().opened.size(), 1U);
    EXPECT_EQ(loaderSpy().opened[0].path, RECORDING_LIBRARY);
    EXPECT_EQ(loaderSpy().opened[0].flags, RTLD_LAZY | RTLD_LOCAL);
}

TEST_F(Loading, ReleasesTheInstanceBeforeItClosesTheLibrary)
{
    {
        const auto binding = load();
        calls();
    }
    EXPECT_THAT(calls(), ElementsAre("ReleaseLibrary(7)"));
    EXPECT_EQ(loaderSpy().closed, 1);
}

TEST_F(Loading, GivesEachBindingItsOwnInstance)
{
    const auto first = load();
    record->instance = 8;
    const auto second = load();
    calls();
    first->PageCount();
    second->PageCount();
    EXPECT_THAT(calls(), ElementsAre("PageCount(7)", "PageCount(8)"));
}

TEST_F(Loading, OfNoSuchFileFailsAndCallsNothing)
{
    {
        Binding binding(L"/nowhere/KarvelPDFLibraryCPDylib1311.dylib");
        expectInert(binding);
        EXPECT_EQ(binding.AttachFunction("malloc", true), nullptr);
    }
    EXPECT_THAT(calls(), IsEmpty());
    EXPECT_THAT(loaderSpy().lookups, IsEmpty());
    EXPECT_EQ(loaderSpy().closed, 0);
}

TEST_F(Loading, OfAFileThatIsNoLibraryFails)
{
    const std::string source = __FILE__;
    Binding binding(std::wstring(source.begin(), source.end()));
    expectInert(binding);
}

TEST_F(Loading, OfALibraryThatLacksOneExportFailsAfterAllLookups)
{
    {
        const std::string incomplete = INCOMPLETE_LIBRARY;
        Binding binding(std::wstring(incomplete.begin(), incomplete.end()));
        EXPECT_EQ(loaderSpy().lookups, allExports());
        EXPECT_EQ(binding.AttachFunction("KPLDeletePages", true), nullptr);
        EXPECT_NE(binding.AttachFunction("KPLNewPage", true), nullptr);
        expectInert(binding);
    }
    EXPECT_EQ(loaderSpy().closed, 1);
}

TEST_F(Loading, FailsWhicheverExportIsMissing)
{
    for (const std::string& name : allExports()) {
        loaderSpy() = LoaderSpy();
        loaderSpy().hidden = name;
        {
            const auto binding = load();
            EXPECT_FALSE(binding->LibraryLoaded()) << name;
            EXPECT_EQ(loaderSpy().lookups.size(), 859U) << name;
            EXPECT_EQ(binding->PageCount(), 0) << name;
        }
        EXPECT_EQ(loaderSpy().closed, 1) << name;
        EXPECT_THAT(calls(), IsEmpty()) << name;
    }
}

TEST_F(Loading, TreatsAnOptionalExportThatIsMissingAsNoFailure)
{
    const auto binding = load();
    EXPECT_EQ(binding->AttachFunction("KPLNoSuchFunction", true), nullptr);
    EXPECT_TRUE(binding->LibraryLoaded());
    EXPECT_EQ(binding->AttachFunction("KPLNoSuchFunction", false), nullptr);
    EXPECT_FALSE(binding->LibraryLoaded());
}

struct PathRow {
    const char* sentence;
    std::wstring path;
    std::string bytes;
};

class NarrowPath : public BindingTest, public testing::WithParamInterface<PathRow> {};

TEST_P(NarrowPath, HandsTheLowEightBitsOfEachCharacterToTheLoader)
{
    const Binding binding(GetParam().path);
    ASSERT_EQ(loaderSpy().opened.size(), 1U);
    EXPECT_EQ(loaderSpy().opened[0].path, GetParam().bytes);
    EXPECT_FALSE(binding.LibraryLoaded());
}

INSTANTIATE_TEST_SUITE_P(
    , NarrowPath,
    testing::Values(PathRow{"an_empty_path", L"", ""},
                    PathRow{"a_bare_name", L"NoSuchLibrary.dylib", "NoSuchLibrary.dylib"},
                    PathRow{"a_character_of_one_byte", L"/nowhere/\u00E9", "/nowhere/\xE9"},
                    PathRow{"a_character_above_it", L"/nowhere/\u0141", "/nowhere/A"},
                    PathRow{"a_character_beyond_the_basic_plane", L"/nowhere/\U0001F642",
                            "/nowhere/B"}),
    [](const auto& info) { return std::string(info.param.sentence); });

TEST_F(Loading, FindsAFileByTheLowEightBitsOfItsName)
{
    std::wstring wide = path();
    std::for_each(wide.begin(), wide.end(), [](wchar_t& unit) { unit += 0x100; });
    EXPECT_TRUE(Binding(wide).LibraryLoaded());
}

class InstanceNumber : public BindingTest, public testing::WithParamInterface<int> {};

TEST_P(InstanceNumber, OfZeroOrLessIsUsedButNotReleased)
{
    record->instance = GetParam();
    {
        const auto binding = load();
        EXPECT_TRUE(binding->LibraryLoaded());
        calls();
        EXPECT_EQ(binding->PageCount(), integerResultOf("PageCount"));
        EXPECT_THAT(calls(), ElementsAre("PageCount(" + std::to_string(GetParam()) + ")"));
    }
    EXPECT_THAT(calls(), IsEmpty());
    EXPECT_EQ(loaderSpy().closed, 1);
}

INSTANTIATE_TEST_SUITE_P(, InstanceNumber, testing::Values(0, -1, INT_MIN));

static_assert(!std::is_copy_constructible_v<KarvelPDFLibraryCPDylibCPP1311>);
static_assert(!std::is_copy_assignable_v<KarvelPDFLibraryCPDylibCPP1311>);
static_assert(!std::is_polymorphic_v<KarvelPDFLibraryCPDylibCPP1311>);

} // namespace
