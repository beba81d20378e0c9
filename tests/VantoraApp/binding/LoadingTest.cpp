#include "BindingFixture.h"

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
    ASSERT_EQ(loaderSpy().opened.size(), 1U);
    EXPECT_EQ(loaderSpy().opened[0].path, RECORDING_LIBRARY);
    EXPECT_EQ(loaderSpy().opened[0].flags, RTLD_LAZY | RTLD_LOCAL);
    EXPECT_EQ(loaderSpy().lookups, allExports());
    EXPECT_THAT(calls(), ElementsAre("CreateLibrary()"));
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
            if (name == "KPLDeletePages") {
                EXPECT_EQ(binding->AttachFunction("KPLDeletePages", true), nullptr);
                EXPECT_NE(binding->AttachFunction("KPLNewPage", true), nullptr);
                expectInert(*binding);
            }
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

TEST_F(Loading, HandsTheLowEightBitsOfEachCharacterToTheLoader)
{
    const std::pair<std::wstring, std::string> rows[] = {
        {L"", ""},
        {L"/nowhere/\u00E9\u0141\U0001F642", "/nowhere/\xE9"
                                             "AB"},
    };
    for (const auto& [path, bytes] : rows) {
        const Binding binding(path);
        EXPECT_EQ(loaderSpy().opened.back().path, bytes);
        EXPECT_FALSE(binding.LibraryLoaded());
    }
}

TEST_F(Loading, UsesAnInstanceOfZeroOrLessButDoesNotReleaseIt)
{
    for (const int instance : {0, INT_MIN}) {
        record->instance = instance;
        {
            const auto binding = load();
            EXPECT_TRUE(binding->LibraryLoaded());
            calls();
            EXPECT_EQ(binding->PageCount(), integerResultOf("PageCount"));
            EXPECT_THAT(calls(), ElementsAre("PageCount(" + std::to_string(instance) + ")"));
        }
        EXPECT_THAT(calls(), IsEmpty());
    }
    EXPECT_EQ(loaderSpy().closed, 2);
}

static_assert(!std::is_copy_constructible_v<KarvelPDFLibraryCPDylibCPP1311>);
static_assert(!std::is_copy_assignable_v<KarvelPDFLibraryCPDylibCPP1311>);
static_assert(!std::is_polymorphic_v<KarvelPDFLibraryCPDylibCPP1311>);

} // namespace
