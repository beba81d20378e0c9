#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/documents/Batch.h"
#include "VantoraHost/core/reports/ReportFile.h"
#include "VantoraHost/core/watching/Arrivals.h"
#include "VantoraHost/core/watching/PuttingAside.h"
#include "VantoraHost/core/watching/WatchState.h"
#include "VantoraHost/core/watching/WatchedFolder.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <map>

// Documents that arrive in folders: which they are, when they are whole, what has become of them.
namespace {

namespace fs = std::filesystem;
using namespace vantora;
using namespace std::chrono_literals;
using testing::ElementsAre;

TEST(DocumentNames, LeaveOutWhatIsHiddenOrNotWhole)
{
    const std::pair<const char*, bool> rows[] = {{"a.pdf", true},
                                                 {"A.PDF", true},
                                                 {"a b\n.pDf", true},
                                                 {"a.pdf.part", false},
                                                 {"a.pdf~", false},
                                                 {"a.pdf.crdownload", false},
                                                 {".a.pdf", false},
                                                 {"~$a.pdf", false},
                                                 {".pdf", false},
                                                 {"a.txt", false},
                                                 {"pdf", false},
                                                 {"", false},
                                                 {".karvel-save-4711-00ff00ff00ff00ff.tmp", false}};
    for (const auto& [name, is] : rows) {
        EXPECT_EQ(isDocumentName(name), is) << name;
    }
}

/// A clock and a folder that stand still unless a test moves them.
class Waiting : public testing::Test {
protected:
    std::vector<std::string> take(Arrivals& arrivals, std::size_t most = 100)
    {
        const Arrivals::Eyes eyes = {
            now, std::chrono::nanoseconds(now.time_since_epoch()).count(),
            [this](const std::string& name) {
                const auto found = folder.find(name);
                return found == folder.end() ? std::nullopt : std::optional(found->second);
            },
            [this](const Arrival& arrival) { return arrival.name == done; }};
        std::vector<std::string> names;
        for (const Arrival& arrival : arrivals.take(eyes, most)) {
            names.push_back(arrival.name);
        }
        return names;
    }

    void write(const std::string& name, std::int64_t size, Writer writer = Writer::None)
    {
        Sighting& file = folder[name];
        file.version = {1, 2, size, size};
        file.changed = std::chrono::nanoseconds(now.time_since_epoch()).count();
        file.writer = writer;
    }

    Arrivals::Time now = Arrivals::Time(100'000s);
    std::map<std::string, Sighting> folder;
    std::string done;
};

TEST_F(Waiting, LastsUntilADocumentHasStayedTheSame)
{
    Arrivals arrivals(2s, true);
    write("a.pdf", 10);
    arrivals.notice("a.pdf", Noticed::Whole, now);
    EXPECT_THAT(take(arrivals), ElementsAre());
    EXPECT_FALSE(arrivals.onlyGrowing());
    EXPECT_EQ(arrivals.nextLook(), now + 2s);
    now += 1s;
    write("a.pdf", 20);
    now += 1s;
    EXPECT_THAT(take(arrivals), ElementsAre());
    EXPECT_TRUE(arrivals.onlyGrowing());
    now += 1s;
    EXPECT_THAT(take(arrivals), ElementsAre("a.pdf"));
    EXPECT_EQ(arrivals.size(), 0U);
}

TEST_F(Waiting, LastsAsLongAsADocumentIsBeingWritten)
{
    Arrivals arrivals(0s, true);
    write("a.pdf", 10, Writer::Some);
    arrivals.notice("a.pdf", Noticed::Seen, now);
    for (int look = 0; look < 20; ++look) {
        EXPECT_THAT(take(arrivals), ElementsAre());
        EXPECT_GT(*arrivals.nextLook(), now) << "looks without a pause";
        EXPECT_LE(*arrivals.nextLook(), now + 5s);
        now = *arrivals.nextLook();
    }
    write("a.pdf", 10);
    arrivals.notice("a.pdf", Noticed::Whole, now);
    EXPECT_THAT(take(arrivals), ElementsAre("a.pdf"));
}

TEST_F(Waiting, IsLongerWhereNobodyCanTellWhoWrites)
{
    Arrivals arrivals(0s, true);
    write("closed.pdf", 10, Writer::Unknown);
    write("seen.pdf", 10, Writer::Unknown);
    arrivals.notice("seen.pdf", Noticed::Seen, now);
    arrivals.notice("closed.pdf", Noticed::Whole, now);
    EXPECT_THAT(take(arrivals), ElementsAre("closed.pdf"));
    now += 1s;
    EXPECT_THAT(take(arrivals), ElementsAre("seen.pdf"));
}

TEST_F(Waiting, CountsTheTimeBeforeOnlyByTheOwnClock)
{
    for (const bool ageTells : {true, false}) {
        Arrivals arrivals(2s, ageTells);
        write("a.pdf", 10);
        now += 1h;
        arrivals.notice("a.pdf", Noticed::Seen, now);
        EXPECT_EQ(take(arrivals).size(), ageTells ? 1U : 0U);
    }
}

TEST_F(Waiting, ForgetsWhatIsGoneOrDone)
{
    Arrivals arrivals(0s, true);
    write("done.pdf", 10);
    done = "done.pdf";
    arrivals.notice("gone.pdf", Noticed::Whole, now);
    arrivals.notice("done.pdf", Noticed::Whole, now);
    EXPECT_THAT(take(arrivals), ElementsAre());
    EXPECT_EQ(arrivals.nextLook(), std::nullopt);
}

TEST_F(Waiting, TakesSoManyInTheOrderInWhichTheyCame)
{
    Arrivals arrivals(0s, true);
    for (const char* name : {"c.pdf", "a.pdf", "b.pdf"}) {
        write(name, 1);
        arrivals.notice(name, Noticed::Whole, now);
    }
    arrivals.notice("c.pdf", Noticed::Whole, now);
    EXPECT_THAT(take(arrivals, 2), ElementsAre("c.pdf", "a.pdf"));
    EXPECT_THAT(take(arrivals, 2), ElementsAre("b.pdf"));
}

TEST_F(Waiting, HasNoPlaceForAnyNumber)
{
    Arrivals arrivals(0s, true);
    for (std::size_t i = 0; i < Arrivals::mostWaiting; ++i) {
        ASSERT_TRUE(arrivals.notice(std::to_string(i) + ".pdf", Noticed::Whole, now));
    }
    EXPECT_FALSE(arrivals.notice("one more.pdf", Noticed::Whole, now));
    EXPECT_TRUE(arrivals.notice("7.pdf", Noticed::Whole, now)) << "it has one";
}

class InWatchedFolder : public InOwnFolder {
protected:
    InWatchedFolder()
    {
        fs::create_directory("in");
        fs::create_directory("aside");
        write("in/a.pdf", "one");
    }

    std::string write(const std::string& name, const std::string& bytes) const
    {
        return scratch.write(name, bytes);
    }

    static WatchedFolder folder(const char* path = "in") { return *WatchedFolder::open(path); }
};

TEST_F(InWatchedFolder, OnlyRegularFilesAreDocuments)
{
    fs::create_symlink("a.pdf", "in/link.pdf");
    fs::create_directory("in/folder.pdf");
    ASSERT_EQ(::mkfifo("in/pipe.pdf", 0600), 0);
    std::vector<std::string> names;
    EXPECT_EQ(folder().list([&](const std::string& name, const FileVersion& version) {
        EXPECT_EQ(version.size, 3);
        names.push_back(name);
        return true;
    }),
              0);
    EXPECT_THAT(names, ElementsAre("a.pdf"));
    for (const char* name : {"link.pdf", "folder.pdf", "pipe.pdf", "missing.pdf"}) {
        EXPECT_FALSE(folder().lookAt(name)) << name;
    }
}

TEST_F(InWatchedFolder, AWriterIsSeen)
{
    EXPECT_EQ(folder().lookAt("a.pdf")->writer, Writer::None);
    const karvel::io::FileDescriptor file(::open("in/a.pdf", O_WRONLY | O_APPEND | O_CLOEXEC));
    EXPECT_EQ(folder().lookAt("a.pdf")->writer, Writer::Some);
}

TEST_F(InWatchedFolder, ItIsKnownWhetherThePathStillLeadsThere)
{
    const WatchedFolder watched = folder();
    EXPECT_TRUE(watched.isThere());
    fs::rename("in", "elsewhere");
    EXPECT_FALSE(watched.isThere());
    fs::create_directory("in");
    EXPECT_FALSE(watched.isThere());
    EXPECT_TRUE(watched.lookAt("a.pdf")) << "names are of the folder that was opened";
}

TEST_F(InWatchedFolder, WhatIsInsideIsKnownByWhateverPath)
{
    fs::create_directories("in/deep/er");
    fs::create_symlink("in/deep", "link");
    const FileIdentity in = folder().identity();
    const std::pair<const char*, bool> rows[] = {
        {"in", true},     {"in/deep/er", true}, {"link", true}, {"./in/../in/deep", true},
        {"aside", false}, {".", false},         {"/", false},   {"missing", false}};
    for (const auto& [path, inside] : rows) {
        EXPECT_EQ(isInside(path, in), inside) << path;
    }
}

TEST_F(InWatchedFolder, ADocumentIsPutAsideUnderAFreeName)
{
    write("aside/a.pdf", "there before");
    const WatchedFolder watched = folder();
    const FileVersion version = watched.lookAt("a.pdf")->version;
    const auto moved = putAside(watched.folder(), "a.pdf", version, "aside");
    ASSERT_TRUE(moved) << moved.error().sentence;
    EXPECT_EQ(*moved, "a (1).pdf");
    EXPECT_EQ(support::readFile("aside/a (1).pdf"), "one");
    EXPECT_EQ(support::readFile("aside/a.pdf"), "there before");
    EXPECT_FALSE(fs::exists("in/a.pdf"));
}

TEST_F(InWatchedFolder, OnlyTheVersionThatWasSeenIsPutAside)
{
    const WatchedFolder watched = folder();
    const FileVersion version = watched.lookAt("a.pdf")->version;
    write("other", "two");
    fs::rename("other", "in/a.pdf");
    const auto moved = putAside(watched.folder(), "a.pdf", version, "aside");
    ASSERT_FALSE(moved);
    EXPECT_EQ(moved.error().reason, Reason::ChangedMeanwhile);
    EXPECT_EQ(support::readFile("in/a.pdf"), "two");
    EXPECT_TRUE(fs::is_empty("aside"));
}

TEST_F(InWatchedFolder, WhatCannotBePutAsideStays)
{
    const WatchedFolder watched = folder();
    const auto moved =
        putAside(watched.folder(), "a.pdf", watched.lookAt("a.pdf")->version, "missing");
    ASSERT_FALSE(moved);
    EXPECT_THAT(moved.error().sentence, testing::HasSubstr("No such file or directory"));
    EXPECT_EQ(support::readFile("in/a.pdf"), "one");
}

/// What a watch finds in its report when it is started again.
class AfterARestart : public InWatchedFolder {
protected:
    AfterARestart()
    {
        fs::create_directory("out");
        write("out/a.pdf", "output");
    }

    DocumentReport line(DocumentStatus status) const
    {
        DocumentReport report;
        report.input = "in/a.pdf";
        report.output = "out/a.pdf";
        report.status = status;
        report.bytesBefore = stateOf("in/a.pdf")->size;
        report.inputModified = stateOf("in/a.pdf")->changed;
        report.bytesAfter = stateOf("out/a.pdf")->size;
        report.outputModified = stateOf("out/a.pdf")->changed;
        return report;
    }

    /// What is known of the document by these lines.
    std::optional<DocumentStatus> known(const std::vector<DocumentReport>& lines,
                                        bool failuresCount = true)
    {
        auto file = ReportFile::open("report", ExistingReport::Replace);
        for (const DocumentReport& one : lines) {
            file->add(one, {});
        }
        EXPECT_TRUE(file->sync());
        WatchState state;
        EXPECT_TRUE(state.read("report", failuresCount, [](const std::string&) { return true; }));
        placed = state.takePlaced();
        return state.of("in/a.pdf", *versionAt("in/a.pdf"));
    }

    std::vector<DocumentReport> placed;
};

TEST_F(AfterARestart, TheLastLineOfADocumentTells)
{
    const auto done = line(DocumentStatus::Done);
    const auto failed = line(DocumentStatus::Failed);
    const auto announced = line(DocumentStatus::Planned);
    const auto skipped = line(DocumentStatus::Skipped);
    EXPECT_EQ(known({}), std::nullopt);
    EXPECT_EQ(known({announced, done}), DocumentStatus::Done);
    EXPECT_EQ(known({failed, announced, done}), DocumentStatus::Done);
    EXPECT_EQ(known({skipped}), DocumentStatus::Skipped);
    EXPECT_EQ(known({done, failed}), DocumentStatus::Failed);
    EXPECT_EQ(known({failed}, false), std::nullopt) << "somebody has put it there again";
}

TEST_F(AfterARestart, ADocumentIsDoneWhenItsOutputIsTakenAway)
{
    const auto done = line(DocumentStatus::Done);
    fs::remove("out/a.pdf");
    EXPECT_EQ(known({done}), DocumentStatus::Done);
}

TEST_F(AfterARestart, AnAnnouncedOutputThatIsThereIsDone)
{
    const auto announced = line(DocumentStatus::Planned);
    EXPECT_EQ(known({announced}), DocumentStatus::Done);
    ASSERT_EQ(placed.size(), 1U);
    EXPECT_EQ(placed.front().status, DocumentStatus::Done);
}

TEST_F(AfterARestart, AnAnnouncedOutputThatIsNotThereIsStillToBeDone)
{
    const auto announced = line(DocumentStatus::Planned);
    write("out/a.pdf", "somebody else's");
    EXPECT_EQ(known({announced}), std::nullopt);
    fs::remove("out/a.pdf");
    EXPECT_EQ(known({announced}), std::nullopt);
    EXPECT_TRUE(placed.empty());
}

TEST_F(AfterARestart, AnotherVersionIsAnotherDocument)
{
    const auto done = line(DocumentStatus::Done);
    auto hashed = done;
    hashed.inputSha256 = "of something else";
    EXPECT_EQ(known({hashed}), std::nullopt);
    write("in/a.pdf", "longer");
    EXPECT_EQ(known({done}), std::nullopt);
}

/// Hears nothing.
class NoObserver : public RunObserver {
public:
    void outputsGetNames(const std::vector<DocumentReport>&) override {}
    void documentArrived(const DocumentReport& report) override { last = report; }
    void documentInTurn(const DocumentReport&) override {}
    bool cancelled() const override { return false; }

    DocumentReport last;
};

TEST_F(InWatchedFolder, OnlyTheVersionThatWasSeenIsOpened)
{
    write("in/a.pdf", support::documentOfPages(3));
    write("secret.pdf", support::documentOfPages(3));
    const auto library = loadPdfLibrary(PDF_LIBRARY);
    ASSERT_TRUE(library);
    StepRequest step;
    step.action = "Delete Pages";
    step.options = {{"byPageRangeTextEdit", "1"}};
    auto sequence = Sequence::of({step}, ActionCatalog::of({ACTION_FOLDER}));
    ASSERT_TRUE(sequence) << sequence.error().sentence;
    Target target;
    target.name = target.path = "aside/a.pdf";
    target.input = folder().lookAt("a.pdf")->version;
    for (const bool exchanged : {true, false}) {
        if (exchanged) {
            fs::rename("in/a.pdf", "kept.pdf");
            fs::create_symlink("../secret.pdf", "in/a.pdf");
        } else {
            fs::rename("kept.pdf", "in/a.pdf");
        }
        Batch batch;
        batch.inputs = {"in/a.pdf"};
        batch.targets = {target};
        NoObserver observer;
        ASSERT_TRUE(runBatch(**library, *sequence, batch, observer));
        EXPECT_EQ(observer.last.status, exchanged ? DocumentStatus::Failed : DocumentStatus::Done);
        EXPECT_EQ(fs::exists("aside/a.pdf"), !exchanged);
        if (exchanged) {
            EXPECT_EQ(observer.last.error->reason, Reason::ChangedMeanwhile);
        }
    }
}

} // namespace
