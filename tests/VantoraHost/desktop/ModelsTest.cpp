#include "VantoraHost/core/actions/DeletePagesOptions.h"
#include "VantoraHost/desktop/DesktopArguments.h"
#include "VantoraHost/desktop/documents/DiskWatch.h"
#include "VantoraHost/desktop/documents/DocumentFilter.h"
#include "VantoraHost/desktop/run/RunOutlook.h"
#include "VantoraHost/desktop/run/RunRemedy.h"
#include "VantoraHost/desktop/sequence/StepList.h"
#include "tests/support/Inspect.h"

#include <QtCore/QFile>

#include <QtCore/QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

using namespace vantora;
using namespace vantora::desktop;
using testing::ElementsAre;
using testing::HasSubstr;

QStringList namesOf(const QAbstractItemModel& model)
{
    QStringList names;
    for (int row = 0; row < model.rowCount(); ++row) {
        names << model.index(row, 0).data().toString();
    }
    return names;
}

TEST(Arguments, SayWhatToOpenOrToPrint)
{
    const struct {
        const char* name;
        QStringList given;
        QStringList files;
        const char* printed;
        const char* mistake;
    } rows[] = {
        {"nothing", {}, {}, "", ""},
        {"files and a folder", {"a.pdf", "scans"}, {"a.pdf", "scans"}, "", ""},
        {"another window", {"--new-window", "a.pdf"}, {"a.pdf"}, "", ""},
        {"a name that looks like an option", {"--", "-a.pdf"}, {"-a.pdf"}, "", ""},
        {"help", {"--help"}, {}, "vantora-desktop [--new-window] [FILE...]", ""},
        {"version", {"--version"}, {}, "vantora-desktop 1.", ""},
        {"no option", {"--fast"}, {}, "", "there is no option --fast"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const DesktopArguments read = readArguments(row.given);
        EXPECT_EQ(read.files, row.files);
        EXPECT_EQ(read.printed.has_value(), *row.printed != 0);
        EXPECT_THAT(read.printed.value_or(QString()).toStdString(), HasSubstr(row.printed));
        EXPECT_EQ(read.mistake.has_value(), *row.mistake != 0);
        EXPECT_THAT(read.mistake.value_or(QString()).toStdString(), HasSubstr(row.mistake));
    }
}

class Documents : public testing::Test {
protected:
    Documents()
    {
        list.append(list.newOnes({inputNamed("/s/b.pdf"), inputNamed("/s/a.pdf"),
                                  inputNamed("/t/c.pdf"), inputNamed("/s/b.pdf")}));
        const std::vector<DocumentId> ids = {id(0), id(1), id(2)};
        list.update(ids, [&](Document& document) {
            document.state = document.id == ids[2] ? DocumentState::Locked : DocumentState::Ready;
            document.pages = document.id == ids[0] ? 3 : 20;
            return true;
        });
    }

    DocumentId id(int row) const
    {
        return list.index(row, 0).data(DocumentList::IdRole).toULongLong();
    }

    DocumentList list;
};

TEST_F(Documents, AreListedOnceInTheOrderInWhichTheyCame)
{
    EXPECT_EQ(namesOf(list), QStringList({"b.pdf", "a.pdf", "c.pdf"}));
    EXPECT_TRUE(list.newOnes({inputNamed("/s/a.pdf")}).empty());
}

TEST_F(Documents, ComeBackToTheirPlacesWhenTheirRemovalIsUndone)
{
    const QSet<DocumentId> removed = {id(0), id(2)};
    const auto taken = list.take(removed);
    EXPECT_EQ(namesOf(list), QStringList({"a.pdf"}));
    EXPECT_EQ(list.newOnes({inputNamed("/s/b.pdf")}).size(), 1U) << "may be added again";
    list.putBack(taken);
    EXPECT_EQ(namesOf(list), QStringList({"b.pdf", "a.pdf", "c.pdf"}));
    EXPECT_EQ(list.rowOf(taken[1].second.id), 2);
}

TEST_F(Documents, SayHowManyPagesGoOnceTheyAreKnown)
{
    list.setForecast([](const Document& document) { return std::min(5, document.pages); });
    const auto going = [&](int row) {
        return list.index(row, DocumentList::Going).data().toString();
    };
    EXPECT_EQ(going(0), "3");
    EXPECT_EQ(going(1), "5");
    EXPECT_EQ(going(2), "") << "it is locked";
}

TEST_F(Documents, AreSortedByNumbersAndFilteredByNameAndState)
{
    DocumentFilter filter(list);
    filter.sort(DocumentList::Pages, Qt::DescendingOrder);
    EXPECT_EQ(namesOf(filter).last(), "b.pdf") << "3 is less than 20";
    filter.sort(DocumentList::Name);
    EXPECT_EQ(namesOf(filter), QStringList({"a.pdf", "b.pdf", "c.pdf"}));
    filter.setText("B.");
    EXPECT_EQ(namesOf(filter), QStringList({"b.pdf"}));
    filter.setText({});
    filter.setStates(DocumentFilter::States::Locked);
    EXPECT_EQ(namesOf(filter), QStringList({"c.pdf"}));
    filter.setStates(DocumentFilter::States::Usable);
    EXPECT_EQ(namesOf(filter), QStringList({"a.pdf", "b.pdf"}));
}

TEST_F(Documents, ShowNoControlCharactersOfTheirNames)
{
    list.append(list.newOnes({inputNamed("/s/a\nb\xff.pdf")}));
    EXPECT_EQ(list.index(3, 0).data().toString(), "a\\nb\\xff.pdf");
}

TEST(ChangedFiles, AreThoseThatAreNotWhatWasSeen)
{
    const support::ScratchFolder scratch;
    const auto watched = [&](DocumentId id, const char* name) {
        const std::string path = scratch.write(name, "as it was");
        return WatchedFile{id, path, *stateOf(path)};
    };
    const std::vector<WatchedFile> files = {watched(1, "kept"), watched(2, "longer"),
                                            watched(3, "removed"), watched(4, "touched")};
    scratch.write("longer", "as it wasn't");
    std::filesystem::remove(scratch.path("removed"));
    const auto time = std::filesystem::last_write_time(scratch.path("touched"));
    std::filesystem::last_write_time(scratch.path("touched"), time + std::chrono::seconds(1));
    EXPECT_THAT(changedAmong(files), ElementsAre(2U, 3U, 4U));
}

ListedStep deletion(const char* range = "")
{
    ListedStep step;
    step.action = deletepages::actionName;
    step.title = "Delete Pages";
    if (*range != 0) {
        step.preferences.insert(deletepages::rangeKey, range);
    }
    return step;
}

ListedStep other(bool isOn = true)
{
    ListedStep step;
    step.title = "Other";
    step.action = "Other";
    step.isOn = isOn;
    return step;
}

TEST(Steps, GiveTheMarksToTheFirstThatTakesPages)
{
    ListedStep off = deletion("9");
    off.isOn = false;
    const struct {
        const char* name;
        ListedSteps steps;
        int marksRow;
        const char* range;
        std::vector<std::string> requests; ///< "action range"
    } rows[] = {
        {"one", {deletion()}, 0, "2", {"Delete Pages 2"}},
        {"one, and nothing is marked", {deletion()}, 0, "", {}},
        {"a second one keeps its own",
         {deletion(), deletion("7")},
         0,
         "2",
         {"Delete Pages 2", "Delete Pages 7"}},
        {"one that is off is left out", {off, deletion()}, 1, "2", {"Delete Pages 2"}},
        {"none takes pages", {other()}, -1, "2", {"Other "}},
        {"all are off", {other(false)}, -1, "2", {}},
        {"others go on when nothing is marked", {other(), deletion()}, 1, "", {"Other "}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        StepList list;
        list.set(row.steps);
        EXPECT_EQ(list.marksRow(), row.marksRow);
        std::vector<std::string> requests;
        for (const StepRequest& request : list.requests(row.range)) {
            requests.push_back(
                request.action + ' ' +
                request.stored.value(deletepages::rangeKey).toString().toStdString());
        }
        EXPECT_EQ(requests, row.requests);
    }
}

TEST(Steps, ShowTheBeginningOfALongRangeInWholeNumbers)
{
    StepList list;
    list.set({deletion()});
    const auto shown = [&list](const QString& range) {
        list.setMarks(range);
        return list.index(0).data().toString().section(": ", 1);
    };
    EXPECT_EQ(shown("2,5-7").toStdString(), "2,5-7");
    QString range = "1";
    for (int page = 3; page < 10000; page += 2) {
        range += ',' + QString::number(page);
    }
    const QString text = shown(range);
    EXPECT_TRUE(text.endsWith(",...")) << text.toStdString();
    EXPECT_TRUE(range.startsWith(text.chopped(3))) << text.toStdString();
    EXPECT_LE(text.size(), 304) << "as many letters as a list lays out in no time";
    EXPECT_EQ(list.requests(range)[0].stored.value(deletepages::rangeKey), range);
}

TEST(Steps, AreMovedToBeforeTheOneTheyAreDroppedOn)
{
    const auto letters = [](const ListedSteps& steps) {
        std::string text;
        for (const ListedStep& step : steps) {
            text += step.action;
        }
        return text;
    };
    ListedSteps steps(4);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        steps[i].action = static_cast<char>('a' + static_cast<char>(i));
    }
    EXPECT_EQ(letters(moved(steps, 0, 3)), "bcad");
    EXPECT_EQ(letters(moved(steps, 3, 1)), "adbc");
    EXPECT_EQ(letters(moved(steps, 1, 4)), "acdb");
    EXPECT_EQ(letters(moved(steps, 2, 2)), "abcd");
}

class Plans : public testing::Test {
protected:
    Plans()
    {
        for (const char* folder : {"in", "in/sub", "elsewhere", "out"}) {
            std::filesystem::create_directory(scratch.path(folder));
        }
    }

    /// A document whose place in an output folder is what follows "in/".
    RunDocument document(const std::string& name, const char* range = "2") const
    {
        RunDocument document;
        document.id = ++ids;
        document.input = {scratch.write(name, "%PDF"), scratch.path("in/").size()};
        document.going = 1;
        if (*range != 0) {
            StepRequest step;
            step.action = deletepages::actionName;
            step.stored.insert(deletepages::rangeKey, range);
            document.steps = {step};
        }
        return document;
    }

    RunSettings settings(OutputPlace place) const
    {
        RunSettings settings;
        settings.place = place;
        settings.folder = QString::fromStdString(scratch.path("out"));
        return settings;
    }

    std::vector<std::string> outputsOf(const RunPlan& plan) const
    {
        std::vector<std::string> outputs;
        for (const RunGroup& group : plan.groups) {
            for (const auto& target : group.batch.targets) {
                outputs.push_back(target->path.substr(scratch.path("").size()));
            }
        }
        return outputs;
    }

    support::ScratchFolder scratch;
    mutable DocumentId ids = 0;
};

TEST_F(Plans, PutResultsWhereTheSettingsSay)
{
    const struct {
        const char* name;
        OutputPlace place;
        const char* folderName;
        std::vector<std::string> outputs;
    } rows[] = {
        {"a folder has the subfolders",
         OutputPlace::Folder,
         "{name}{ext}",
         {"out/a.pdf", "out/sub/b.pdf"}},
        {"and other names",
         OutputPlace::Folder,
         "{number}-{name}{ext}",
         {"out/1-a.pdf", "out/sub/2-b.pdf"}},
        {"beside, each in its own folder",
         OutputPlace::Beside,
         "",
         {"in/a-cut.pdf", "in/sub/b-cut.pdf"}},
        {"in place", OutputPlace::InPlace, "", {"in/a.pdf", "in/sub/b.pdf"}},
    };
    const std::vector<RunDocument> documents = {document("in/a.pdf"), document("in/sub/b.pdf")};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        RunSettings chosen = settings(row.place);
        chosen.folderName = row.folderName;
        const auto plan = planRun(documents, chosen);
        ASSERT_TRUE(plan) << plan.error().sentence;
        EXPECT_EQ(outputsOf(*plan), row.outputs);
        EXPECT_EQ(plan->documents, 2U);
        EXPECT_EQ(plan->pages, 2U);
    }
}

TEST_F(Plans, SayWhatExistsAlreadyAndWhatBecomesOfIt)
{
    scratch.write("out/a.pdf", "there");
    const std::vector<RunDocument> documents = {document("in/a.pdf"), document("in/b.pdf")};
    RunSettings chosen = settings(OutputPlace::Folder);
    auto plan = planRun(documents, chosen);
    ASSERT_EQ(plan->refused.size(), 1U);
    EXPECT_EQ(plan->refused[0].reason, Reason::OutputExists);
    EXPECT_EQ(plan->documents, 1U);
    chosen.taken = TakenName::Replace;
    plan = planRun(documents, chosen);
    EXPECT_EQ(plan->replaced, 1U);
    EXPECT_TRUE(plan->refused.empty());
    chosen.taken = TakenName::Number;
    plan = planRun(documents, chosen);
    EXPECT_THAT(outputsOf(*plan), ElementsAre("out/a (1).pdf", "out/b.pdf"));
}

TEST_F(Plans, LeaveDocumentsAloneThatNoStepIsForAndGroupTheOthersBySteps)
{
    const auto plan = planRun({document("in/a.pdf", "2"), document("in/b.pdf", ""),
                               document("in/c.pdf", "3"), document("in/d.pdf", "2")},
                              settings(OutputPlace::Folder));
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->untouched, 1U);
    ASSERT_EQ(plan->groups.size(), 2U);
    EXPECT_THAT(plan->groups[0].ids, ElementsAre(1U, 4U));
    EXPECT_THAT(plan->groups[1].ids, ElementsAre(3U));
}

TEST_F(Plans, TellOptionsApartThatHaveNoText)
{
    std::vector<RunDocument> documents = {document("in/a.pdf"), document("in/b.pdf")};
    documents[0].steps[0].stored.insert("order", QStringList({"front", "back"}));
    documents[1].steps[0].stored.insert("order", QStringList({"back", "front"}));
    const auto plan = planRun(documents, settings(OutputPlace::Folder));
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->groups.size(), 2U);
}

TEST_F(Plans, FailForSettingsThatCannotBe)
{
    RunSettings chosen = settings(OutputPlace::Folder);
    chosen.folderName = "{nmae}";
    EXPECT_THAT(planRun({document("in/a.pdf")}, chosen).error().sentence, HasSubstr("{nmae}"));
    chosen.folderName = "{name}";
    chosen.folder = QString::fromStdString(scratch.path("missing"));
    EXPECT_EQ(planRun({document("in/a.pdf")}, chosen).error().reason, Reason::OutputFolderMissing);
    chosen.folder.clear();
    EXPECT_EQ(explained(planRun({document("in/a.pdf")}, chosen).error()).toStdString(),
              "choose a folder for the results");
}

TEST_F(Plans, HaveCommandsThatDoTheSame)
{
    const std::vector<RunDocument> documents = {document("in/it's a.pdf", "1,3"),
                                                document("in/sub/b.pdf", "1,3")};
    RunSettings chosen = settings(OutputPlace::Folder);
    chosen.taken = TakenName::Number;
    chosen.keepsSigned = chosen.verifies = true;
    const QString commands = commandsOf(*planRun(documents, chosen), chosen)
                                 .replace(QString::fromStdString(scratch.path("")), "/");
    EXPECT_EQ(commands.toStdString(),
              "vantora run --pages '1,3' -d '/out' --rename --keep-signed --verify -- "
              "'/in/it'\\''s a.pdf'\n"
              "vantora run --pages '1,3' -d '/out/sub' --rename --keep-signed --verify -- "
              "'/in/sub/b.pdf'\n");
    chosen = settings(OutputPlace::InPlace);
    EXPECT_THAT(commandsOf(*planRun(documents, chosen), chosen).toStdString(),
                HasSubstr("--in-place --backup -- "));
}

TEST(Outlook, SaysWhatHoldsARunUpOrWhatItWillDo)
{
    RunOutlook outlook;
    outlook.obstacle = "There is no folder.";
    EXPECT_EQ(outlookText(outlook), "There is no folder.");
    outlook.obstacle.clear();
    EXPECT_EQ(outlookText(outlook), "There is nothing to do yet.");
    outlook.plan.documents = 2;
    outlook.plan.pages = 5;
    outlook.plan.refused = {{Reason::OutputExists, "/in/a.pdf", "the output exists"}};
    const std::string text = outlookText(outlook).toStdString();
    EXPECT_THAT(text, HasSubstr("a.pdf: the output exists; choose to replace it"));
    EXPECT_THAT(text, testing::Not(HasSubstr("stay as they are")));
}

TEST(Remedies, NameNoOptionOfTheCommandLine)
{
    for (const std::string& name : reasonNames()) {
        EXPECT_THAT(remedyOf(*reasonNamed(name)).toStdString(),
                    testing::Not(testing::AnyOf(HasSubstr("--"), HasSubstr("-d"))))
            << name;
    }
}

} // namespace
