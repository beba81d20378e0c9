#include "VantoraHost/desktop/choosing/RangesFiles.h"
#include "VantoraHost/desktop/pages/Marks.h"
#include "tests/support/Inspect.h"
#include "tests/support/ModalDialogs.h"

#include <QtTest/QTest>
#include <QtWidgets/QUndoStack>

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using namespace vantora;
using namespace vantora::desktop;
using testing::HasSubstr;

class RangesFilesTest : public testing::Test {
protected:
    RangesFilesTest() : files(list, marks, undo)
    {
        QObject::connect(&files, &RangesFiles::noted,
                         [this](const QString& sentence) { said = sentence.toStdString(); });
        for (const char* name : {"a.pdf", "b.pdf", "c.pdf"}) {
            scratch.write(name, "%PDF");
        }
        list.append(
            list.newOnes({inputNamed(scratch.path("a.pdf")), inputNamed(scratch.path("b.pdf"))}));
    }

    void load(const std::string& text)
    {
        files.load(QString::fromStdString(scratch.write("pages.tsv", text)));
        waitUntilSaid();
    }

    void waitUntilSaid()
    {
        ASSERT_TRUE(QTest::qWaitFor([&] { return !files.isBusy(); }, longestWait));
    }

    /// "own 2" or "all " of a row.
    std::string at(int row) const
    {
        const DocumentId id = list.documents()[static_cast<std::size_t>(row)].id;
        return (marks.isOwn(id) ? "own " : "all ") + marks.of(id).text.toStdString();
    }

    support::ScratchFolder scratch;
    QUndoStack undo;
    DocumentList list;
    Marks marks;
    RangesFiles files;
    std::string said;
};

TEST_F(RangesFilesTest, GiveDocumentsTheirPagesAndAddThoseThatAreNotListedInOneStep)
{
    std::filesystem::create_symlink(scratch.path(""), scratch.path("link"));
    load("link/b.pdf\t2-3\nc.pdf\t7\n");
    ASSERT_EQ(list.rowCount(), 3) << "b.pdf is listed already, however it is spelled";
    EXPECT_EQ(at(0), "all ");
    EXPECT_EQ(at(1), "own 2-3");
    EXPECT_EQ(at(2), "own 7");
    EXPECT_THAT(said, HasSubstr("that it doesn't name"));
    EXPECT_EQ(undo.count(), 1);
    undo.undo();
    EXPECT_EQ(list.rowCount(), 2);
    EXPECT_EQ(at(1), "all ");
}

TEST_F(RangesFilesTest, AreRefusedWithTheLineThatIsWrongAndChangeNothing)
{
    const struct {
        const char* name;
        const char* text;
        const char* sentence;
    } rows[] = {
        {"a document that isn't there", "a.pdf\t1\nd.pdf\t2\n", "line 2"},
        {"a document twice", "a.pdf\t1\nb.pdf\t1\na.pdf\t2\n", "line 3"},
        {"a wrong range", "a.pdf\t6-4\n", "line 1"},
    };
    for (const auto& row : rows) {
        said.clear();
        load(row.text);
        EXPECT_THAT(said, HasSubstr("pages.tsv: ")) << row.name;
        EXPECT_THAT(said, HasSubstr(row.sentence)) << row.name;
        EXPECT_EQ(at(0), "all ") << row.name;
        EXPECT_EQ(undo.count(), 0) << row.name;
    }
}

TEST_F(RangesFilesTest, AreSavedAsTheyAreLoaded)
{
    marks.put(std::nullopt, Marks::ofText("1,4", {}));
    marks.put(list.documents()[1].id, Marks::ofText("2", {}));
    const std::string path = scratch.path("saved.tsv");
    files.save(QString::fromStdString(path));
    waitUntilSaid();
    EXPECT_EQ(support::readFile(path),
              scratch.path("a.pdf") + "\t1,4\n" + scratch.path("b.pdf") + "\t2\n");
    marks.put(std::nullopt, std::nullopt);
    marks.put(list.documents()[1].id, std::nullopt);
    files.load(QString::fromStdString(path));
    waitUntilSaid();
    EXPECT_EQ(at(0), "own 1,4");
    EXPECT_EQ(at(1), "own 2");
}

} // namespace
