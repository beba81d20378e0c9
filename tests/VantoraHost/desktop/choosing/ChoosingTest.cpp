#include "VantoraHost/desktop/choosing/ChoiceRow.h"
#include "VantoraHost/desktop/choosing/ChoosePane.h"
#include "VantoraHost/desktop/pages/PagesPane.h"
#include "tests/VantoraHost/desktop/OpenWindow.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QUndoStack>

#include <gmock/gmock.h>

#include <map>
#include <set>

namespace {

using namespace vantora;
using namespace vantora::desktop;
using testing::HasSubstr;

TEST(Choices, HaveWordsForEveryKindThatCoreReads)
{
    const std::map<ChoiceField, QString> arguments = {
        {ChoiceField::Range, "1,4-6"}, {ChoiceField::Count, "2"}, {ChoiceField::Step, "3+1"},
        {ChoiceField::Label, "iv-x"},  {ChoiceField::Title, "A"}, {ChoiceField::Size, "A4"},
        {ChoiceField::Words, "Draft"}, {ChoiceField::None, {}},   {ChoiceField::Strictness, {}},
    };
    std::set<ChoiceKind> kinds;
    for (const ChoiceWords& words : allChoiceWords()) {
        const ChoiceDraft draft = {words.kind, arguments.at(words.field), false};
        const auto choice = Choice::of(draft.text().toStdString());
        ASSERT_TRUE(choice) << choice.error();
        EXPECT_EQ(choice->kind, words.kind) << draft.text().toStdString();
        EXPECT_TRUE(draft.isComplete());
        kinds.insert(words.kind);
    }
    EXPECT_EQ(static_cast<int>(kinds.size()),
              QString::fromStdString(choiceKindsText()).split(", ").size());
}

TEST(Choices, AreLookedForOnceAllOfThemAreCompleteAndRight)
{
    using Kind = ChoiceKind;
    const ChoiceDraft last = {Kind::Last, "2", false};
    const ChoiceDraft blank = {Kind::Blank, {}, false};
    const ChoiceDraft notFirst = {Kind::First, "1", true};
    const struct {
        const char* name;
        std::vector<ChoiceDraft> drafts;
        bool keepsOnly;
        std::string arguments;
    } rows[] = {
        {"one", {last}, false, "--choose last:2"},
        {"any of two", {last, blank}, false, "--choose last:2 --choose blank"},
        {"an exception", {last, notFirst}, false, "--choose last:2 --except first:1"},
        {"only some stay", {last, notFirst}, true, "--keep last:2 --except first:1"},
        {"an exception to nothing", {notFirst}, false, ""},
        {"a kind that isn't chosen", {last, {std::nullopt, {}, false}}, false, ""},
        {"words that aren't typed", {last, {Kind::Text, "", false}}, false, ""},
        {"a wrong range", {last, {Kind::Range, "6-4", false}}, false, ""},
        {"a wrong exception", {last, {Kind::Size, "A99", true}}, false, ""},
        {"words of two words",
         {{Kind::Text, "left blank", false}},
         false,
         "--choose text:left blank"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ChoiceTexts::of(row.drafts, row.keepsOnly).arguments().join(' ').toStdString(),
                  row.arguments)
            << row.name;
    }
}

/// A list of documents that are read, and what finds pages in them.
class ChooserTest : public testing::Test {
protected:
    ChooserTest() : chooser(list, marks, undo, BUILT_PROGRAM) {}

    DocumentId add(const std::string& name, int pages)
    {
        const std::string path =
            pages > 0 ? scratch.write(name, support::documentOfPages(pages)) : scratch.path(name);
        std::vector<Document> documents = list.newOnes({inputNamed(path)});
        const DocumentId id = documents.front().id;
        list.append(std::move(documents));
        list.update({id}, [&](Document& document) {
            document.state = DocumentState::Ready;
            document.pages = pages;
            document.version = 1;
            return true;
        });
        return id;
    }

    void choose(const QStringList& choices, const QStringList& except = {})
    {
        chooser.choose({choices, {}, except});
        waitUntilFound();
    }

    void waitUntilFound()
    {
        ASSERT_TRUE(QTest::qWaitFor([&] { return !chooser.isBusy(); }, longestWait));
    }

    std::string of(DocumentId id) const
    {
        return (marks.isOwn(id) ? "own " : "all ") + marks.of(id).text.toStdString();
    }

    support::ScratchFolder scratch;
    QUndoStack undo;
    DocumentList list;
    Marks marks;
    Chooser chooser;
};

TEST_F(ChooserTest, MarksWhatItFindsInEachDocumentOnlyThereAsOneStep)
{
    const DocumentId a = add("a.pdf", 3);
    const DocumentId b = add("b.pdf", 5);
    marks.put(std::nullopt, Marks::ofText("1", {}));
    choose({"last:2", "text:Page 1"}, {"even"});
    EXPECT_EQ(of(a), "own 1,3");
    EXPECT_EQ(of(b), "own 1,5");
    EXPECT_EQ(chooser.progress().pages, 4U);
    EXPECT_EQ(chooser.progress().found, 2U);
    EXPECT_EQ(chooser.reasonOf(b, 5).toStdString(), "The last: 2");
    choose({"text:Page 5"});
    EXPECT_EQ(of(a), "own ") << "no page of it";
    EXPECT_EQ(of(b), "own 5");
    EXPECT_EQ(undo.count(), 1) << "one choosing is one step, however often choices changed";
    undo.undo();
    EXPECT_EQ(of(a), "all 1");
    EXPECT_EQ(of(b), "all 1");
    undo.redo();
    EXPECT_EQ(of(b), "own 5");
}

TEST_F(ChooserTest, TakesItsMarksBackWhenNothingIsChosenAnyMore)
{
    const DocumentId a = add("a.pdf", 3);
    choose({"last"});
    EXPECT_EQ(of(a), "own 3");
    choose({});
    EXPECT_EQ(of(a), "all ");
    EXPECT_EQ(undo.count(), 0) << "nothing is left to be undone";
}

TEST_F(ChooserTest, KeepsWhatWasRescuedInBetweenAsAStepOfItsOwn)
{
    const DocumentId a = add("a.pdf", 4);
    choose({"last:2"});
    undo.push(new MarkCommand(marks, a, Marks::ofText("4", {}), "rescue"));
    choose({"first"});
    EXPECT_EQ(of(a), "own 1");
    undo.undo();
    EXPECT_EQ(of(a), "own 4");
    undo.undo();
    EXPECT_EQ(of(a), "own 3-4");
}

TEST_F(ChooserTest, SaysWhyADocumentCannotBeJudgedWhichGetsItsMarksBack)
{
    const DocumentId a = add("a.pdf", 3);
    const DocumentId gone = add("gone.pdf", 3);
    choose({"last"});
    EXPECT_EQ(of(gone), "own 3");
    std::filesystem::remove(scratch.path("gone.pdf"));
    choose({"first"});
    EXPECT_EQ(of(a), "own 1");
    EXPECT_EQ(of(gone), "all ") << "page 3 was of the choice before";
    ASSERT_EQ(chooser.remarks().size(), 1U);
    EXPECT_EQ(chooser.remarks()[0].id, gone);
    EXPECT_TRUE(chooser.remarks()[0].isFailure);
    EXPECT_THAT(chooser.remarks()[0].sentence.toStdString(), HasSubstr("no such file"));
    EXPECT_EQ(chooser.progress().judged, 2U);
}

TEST_F(ChooserTest, LooksAtDocumentsThatComeLaterAndAtThoseThatAreReadAnew)
{
    const DocumentId a = add("a.pdf", 3);
    choose({"last"});
    const DocumentId b = add("b.pdf", 2);
    waitUntilFound();
    EXPECT_EQ(of(b), "own 2");
    scratch.write("a.pdf", support::documentOfPages(7));
    list.update({a}, [](Document& document) {
        document.version = 2;
        return true;
    });
    waitUntilFound();
    EXPECT_EQ(of(a), "own 7");
}

TEST_F(ChooserTest, StopsAndGoesOn)
{
    const DocumentId a = add("a.pdf", 3);
    choose({"last"});
    chooser.choose({{"first"}, {}, {}});
    chooser.stop();
    EXPECT_FALSE(chooser.isBusy());
    EXPECT_EQ(of(a), "all ") << "nothing is found by these choices";
    add("b.pdf", 2);
    EXPECT_FALSE(chooser.isBusy()) << "until somebody wants it";
    chooser.goOn();
    waitUntilFound();
    EXPECT_EQ(of(a), "own 1");
}

TEST_F(ChooserTest, LooksNoFurtherOnceItsMarksAreUndone)
{
    const DocumentId a = add("a.pdf", 3);
    choose({"last"});
    undo.undo();
    add("b.pdf", 2);
    EXPECT_FALSE(chooser.isBusy());
    EXPECT_TRUE(chooser.isStopped());
    EXPECT_EQ(of(a), "all ");
    EXPECT_TRUE(undo.canRedo());
}

class ChoosingInWindow : public OpenWindow {
protected:
    /// The row of a choice, from 0.
    template <class Part>
    Part& inRow(int row, const char* name)
    {
        return *part<ChoosePane>("ChoosePane")
                    .findChildren<ChoiceRow*>()
                    .at(row)
                    ->findChild<Part*>(name);
    }

    void chooseKind(int row, const QString& words)
    {
        auto& combo = inRow<QComboBox>(row, "kindCombo");
        combo.setCurrentIndex(combo.findText(words));
    }

    void waitForStatus(const std::string& text)
    {
        wait([&] { return choosingStatus().find(text) != std::string::npos; });
    }

    std::string choosingStatus()
    {
        return part<ChoosePane>("ChoosePane")
            .findChild<QLabel*>("statusLabel")
            ->text()
            .toStdString();
    }

    std::string marksOf(int row)
    {
        return bench()
            .marks.of(bench().list.documents()[static_cast<std::size_t>(row)].id)
            .text.toStdString();
    }
};

TEST_F(ChoosingInWindow, MarksLiveLeadsIntoReviewAndRuns)
{
    add({write("a.pdf", support::documentOfPages(4)), write("b.pdf", support::documentOfPages(3))});
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(part<ChoosePane>("ChoosePane").isVisible());
    chooseKind(0, "The last");
    waitForStatus("Found: ");
    EXPECT_EQ(marksOf(0), "4");
    inRow<QSlider>(0, "countSlider").setValue(2);
    EXPECT_EQ(inRow<QSpinBox>(0, "countSpin").value(), 2);
    wait([&] { return marksOf(0) == "3-4" && marksOf(1) == "2-3"; });
    press("exceptButton");
    chooseKind(1, "With the words");
    inRow<QLineEdit>(1, "textEdit").setText("page 2");
    wait([&] { return marksOf(1) == "3"; });
    waitForStatus("Found: ");
    auto& review = *part<ChoosePane>("ChoosePane").findChild<QPushButton*>("reviewButton");
    QTest::mouseClick(&review, Qt::LeftButton);
    EXPECT_TRUE(part<PagesPane>("VantoraPreviewClass").isReview());
    waitForPlan("3 ");
    waitForRun();
    EXPECT_EQ(pagesOf("out/a.pdf"), 2);
    EXPECT_EQ(pagesOf("out/b.pdf"), 2);
    EXPECT_FALSE(bench().chooser.isBusy());
    while (bench().undo.canUndo()) {
        bench().undo.undo();
    }
    EXPECT_EQ(bench().list.rowCount(), 0) << "adding and choosing were all";
}

TEST_F(ChoosingInWindow, SaysBesideTheFieldWhatIsWrongAndLooksForNothingMeanwhile)
{
    add({write("a.pdf", support::documentOfPages(4))});
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    chooseKind(0, "With the numbers");
    auto& fault = inRow<QLabel>(0, "faultLabel");
    EXPECT_FALSE(fault.isVisible()) << "nothing is typed yet";
    inRow<QLineEdit>(0, "textEdit").setText("6-4");
    EXPECT_TRUE(fault.isVisible());
    EXPECT_THAT(fault.text().toStdString(), HasSubstr("goes down"));
    EXPECT_FALSE(bench().chooser.isOn());
    inRow<QLineEdit>(0, "textEdit").setText("4-6");
    EXPECT_FALSE(fault.isVisible());
    wait([&] { return marksOf(0) == "4"; });
}

TEST_F(ChoosingInWindow, HasTheFieldsThatAKindNeedsAndNoOthers)
{
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    add({write("a.pdf", support::documentOfPages(1))});
    part<ChoosePane>("ChoosePane").show();
    const struct {
        const char* kind;
        const char* fields;
    } rows[] = {
        {"Blank", "strictCheck "},
        {"With the words", "textEdit "},
        {"The first", "countSpin countSlider "},
        {"One of every", "countSpin countSlider startSpin startSlider "},
        {"With odd numbers", ""},
        {"With the labels", "textEdit "},
        {"Of the size", "sizeCombo "},
    };
    for (const auto& row : rows) {
        chooseKind(0, row.kind);
        std::string shown;
        for (const char* field : {"textEdit", "sizeCombo", "countSpin", "countSlider", "startSpin",
                                  "startSlider", "strictCheck"}) {
            shown += inRow<QWidget>(0, field).isHidden() ? "" : std::string(field) + ' ';
        }
        EXPECT_EQ(shown, row.fields) << row.kind;
        EXPECT_TRUE(inRow<QLabel>(0, "faultLabel").isHidden()) << row.kind;
    }
}

} // namespace
