#include "VantoraHost/core/workers/SharedJudgement.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/FileIdentity.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace vantora;
using testing::ElementsAre;

/// A document of 70 pages whose file is a large one.
class LongDocument : public testing::Test {
protected:
    LongDocument()
        : path_(scratch_.write("long.pdf",
                               support::documentOfPages(70) + std::string(1'100'000, ' ')))
    {
    }

    Judges judges(std::size_t count) const
    {
        Judges judges;
        judges.library = PDF_LIBRARY;
        judges.count = count;
        judges.cancelled = [] { return false; };
        return judges;
    }

    std::string version() const { return versionText(*versionAt(path_)); }

    support::ScratchFolder scratch_;
    const std::string path_;
};

ChoiceSet choosing(const char* choice)
{
    return {{Choice::of(choice).value()}, {}, {}};
}

TEST_F(LongDocument, IsJudgedByAllOfSeveralProcesses)
{
    Batch batch;
    batch.inputs = {path_};
    batch.targets = {Target()};
    const auto judged = judgeTogether(choosing("text:/page [0-9]*7$/"), batch, judges(3));
    ASSERT_EQ(judged.size(), 1U);
    EXPECT_EQ(judged[0].range, "7,17,27,37,47,57,67");
    EXPECT_EQ(judged[0].pages, 70);
    EXPECT_EQ(judged[0].version, version());
}

TEST_F(LongDocument, IsLeftToTheWorkerWhereThatIsNoSlower)
{
    const std::string small = scratch_.write("small.pdf", support::documentOfPages(70));
    const std::string none = scratch_.write("none.pdf", std::string(1'100'000, ' '));
    const struct {
        const char* name;
        std::vector<std::string> inputs;
        const char* choice;
        std::size_t processes;
    } rows[] = {
        {"one process", {path_}, "text:7", 1},
        {"enough documents for all processes", {path_, small}, "text:7", 2},
        {"a small file", {small}, "text:7", 3},
        {"choices that need no look at pages", {path_}, "last:3", 3},
        {"what is no document", {none}, "text:7", 3},
        {"standard input", {"-"}, "text:7", 3},
    };
    for (const auto& row : rows) {
        Batch batch;
        batch.inputs = row.inputs;
        batch.targets.resize(row.inputs.size());
        EXPECT_TRUE(judgeTogether(choosing(row.choice), batch, judges(row.processes)).empty())
            << row.name;
    }
}

TEST_F(LongDocument, IsJudgedAnewWhenItIsNotAsItWasJudged)
{
    const struct {
        const char* name;
        JudgedDocument judged;
        std::vector<int> removed;
    } rows[] = {
        {"as it was judged", {version(), 70, "2-3", {}}, {2, 3}},
        {"another version", {version() + "1", 70, "2-3", {}}, {1}},
        {"other pages", {version(), 71, "2-3", {}}, {1}},
    };
    const auto library = loadPdfLibrary(PDF_LIBRARY).value();
    auto sequence = Sequence::of({{"Delete Pages", {{"HostChoosePages", "text:/page 1$/"}}}},
                                 ActionCatalog::of({ACTION_FOLDER}));
    ASSERT_TRUE(sequence) << sequence.error().sentence;
    for (const auto& row : rows) {
        JobSettings settings;
        settings.dryRun = true;
        settings.judged = {row.judged};
        const auto done = DocumentJob(*library, *sequence, settings).run(path_, Target());
        ASSERT_FALSE(done.report.error) << row.name << done.report.error->sentence;
        EXPECT_EQ(done.report.pagesRemoved, row.removed) << row.name;
    }
}

} // namespace
