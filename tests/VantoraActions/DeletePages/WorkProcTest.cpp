#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraApp/errors/CErrorHandler.h"
#include "VantoraApp/interface/ActionInterface.h"
#include "tests/VantoraApp/binding/Recording.h"

#include <QtCore/QLibrary>
#include <QtCore/QPluginLoader>

#include <gmock/gmock.h>

namespace {

using Calls = std::vector<std::string>;

/// The action of the built plug-in, with a library that records what it is asked to do.
class WorkProc : public testing::Test {
protected:
    WorkProc()
    {
        using Access = Recording* (*)();
        record = reinterpret_cast<Access>(library.resolve("recording"))();
        *record = Recording();
    }

    ~WorkProc() override { delete plugin.instance(); }

    /// Runs the action; `pageCounts` is what the library answers to PageCount, in turn.
    int run(const PreferencesMap& options, const std::list<int>& pageCounts)
    {
        const std::string path = RECORDING_LIBRARY;
        KarvelPDFLibraryCPDylibCPP1311 binding({path.begin(), path.end()});
        EXPECT_TRUE(binding.LibraryLoaded());
        record->calls.clear();
        record->answers["PageCount"] = pageCounts;

        PreferencesMap preferences = options;
        WorkProcInfoStruct info{};
        info.pPDFLibrary = &binding;
        info.pErrorHandler = &errors;
        info.pPrefs = &preferences;
        const int result = qobject_cast<CActionInterface*>(plugin.instance())->WorkProc(&info);
        calls = record->calls;
        EXPECT_EQ(preferences, options);
        return result;
    }

    QLibrary library{RECORDING_LIBRARY};
    QPluginLoader plugin{DELETE_PAGES_PLUGIN};
    Recording* record = nullptr;
    CErrorHandler errors;
    Calls calls;
};

PreferencesMap pageRange(const char* text)
{
    return {{"byPageRangeTextEdit", QString(text)}};
}

const std::string count = "PageCount(7)";
const std::string unshare = "RemoveSharedContentStreams(7)";
const std::string newPage = "NewPage(7)";

std::string deletion(int firstPage, int pageCount)
{
    return "DeletePages(7, " + std::to_string(firstPage) + ", " + std::to_string(pageCount) + ")";
}

struct Row {
    const char* name;
    PreferencesMap options;
    std::list<int> pageCounts;
    Calls calls; ///< after the two that there always are
};

TEST_F(WorkProc, DeletesTheRunsFromTheLastToTheFirst)
{
    const Row rows[] = {
        {"an empty text", pageRange(""), {3}, {}},
        {"the option of another name", {{"pages", "1"}}, {3}, {}},
        {"a number, not a text", {{"byPageRangeTextEdit", 2}}, {3, 3}, {count, deletion(2, 1)}},
        {"every page", pageRange("1-3"), {3, 3}, {count, newPage, deletion(1, 3)}},
        {"two runs, one page left",
         pageRange("1,2,4-5"),
         {5, 5, 3},
         {count, deletion(4, 2), count, deletion(1, 2)}},
        {"a range above the page count", pageRange("11-20"), {10}, {}},
        {"a range across it", pageRange("8-12"), {10, 10}, {count, deletion(8, 3)}},
        {"page 0 of an unchecked text",
         pageRange("3,"),
         {5, 5, 4},
         {count, deletion(3, 1), count, deletion(0, 1)}},
        {"a document that a run empties later",
         pageRange("1,3"),
         {3, 3, 1},
         {count, deletion(3, 1), count, newPage, deletion(1, 1)}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(run(row.options, row.pageCounts), 0);
        Calls expected{count, unshare};
        expected.insert(expected.end(), row.calls.begin(), row.calls.end());
        EXPECT_EQ(calls, expected);
        EXPECT_EQ(errors.GetCount(), 0);
    }
}

TEST_F(WorkProc, DoesNotLookAtTheResultsOfTheLibrary)
{
    for (const char* function : {"RemoveSharedContentStreams", "NewPage", "DeletePages"})
        record->answers[function] = {0};
    EXPECT_EQ(run(pageRange("1-3"), {3, 3}), 0);
    EXPECT_EQ(calls, (Calls{count, unshare, count, newPage, deletion(1, 3)}));
}

TEST_F(WorkProc, TurnsAnExceptionOfTheLibraryIntoItsMessage)
{
    errors.StoreError("an earlier message");
    record->throws = true;
    EXPECT_EQ(run(pageRange("2,4"), {5, 5, 4}), 1);
    EXPECT_EQ(calls, (Calls{count, unshare, count, deletion(4, 1)}));
    EXPECT_EQ(errors.GetCount(), 2);
    EXPECT_EQ(errors.GetLast(), "Delete pages error");
}

TEST_F(WorkProc, DoesNothingOnABindingWithoutALibrary)
{
    KarvelPDFLibraryCPDylibCPP1311 failed(L"/nonexistent/library");
    PreferencesMap preferences = pageRange("1-3");
    WorkProcInfoStruct info{&failed, &errors, {}, &preferences};
    EXPECT_EQ(qobject_cast<CActionInterface*>(plugin.instance())->WorkProc(&info), 0);
    EXPECT_EQ(errors.GetCount(), 0);
}

} // namespace
