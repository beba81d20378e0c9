#include "VantoraHost/desktop/pages/Marks.h"
#include "VantoraHost/desktop/pages/MarkCommand.h"
#include "VantoraHost/desktop/pages/MarkOperation.h"

#include <QtWidgets/QUndoStack>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace vantora::desktop;

PageSet pages(const char* text)
{
    return PageSet::ofText(text).value();
}

TEST(PageSet, IsWhatATextNames)
{
    struct Row {
        const char* name;
        const char* text;
        const char* shortest; ///< null for a text with a fault
    };
    const Row rows[] = {
        {"nothing", "", ""},
        {"spaces alone", "  ", ""},
        {"one page", "7", "7"},
        {"neighbours become a run", "3,1,2", "1-3"},
        {"runs over each other become one", "4-9,1-5,7", "1-9"},
        {"runs with a page between stay two", "1-2,4-5", "1-2,4-5"},
        {"spaces around numbers are allowed", " 2 , 4 - 6 ", "2,4-6"},
        {"a comma that is about to be followed by something", "2,", "2"},
        {"the highest page", "2147483647", "2147483647"},
        {"every page that there can be", "1-2147483647", "1-2147483647"},
        {"a run that goes down", "6-4", nullptr},
        {"a dash that is about to be followed by something", "2-", nullptr},
        {"a word", "all", nullptr},
        {"page 0", "0", nullptr},
        {"a number that is too high", "2147483648", nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        QString fault;
        const auto read = PageSet::ofText(row.text, &fault);
        EXPECT_EQ(read ? read->text().toStdString() : fault.toStdString(),
                  row.shortest ? row.shortest : fault.toStdString());
        EXPECT_EQ(read.has_value(), row.shortest != nullptr);
        EXPECT_EQ(fault.isEmpty(), row.shortest != nullptr);
    }
}

TEST(PageSet, CountsWhatADocumentHas)
{
    struct Row {
        const char* text;
        int pages, count;
        const char* within;
    };
    const Row rows[] = {{"", 5, 0, ""},           {"1-3,7", 5, 3, "1-3"},
                        {"1-3,7", 7, 4, "1-3,7"}, {"4-2147483647", 6, 3, "4-6"},
                        {"9", 5, 0, ""},          {"1-3", 0, 0, ""}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(pages(row.text).countIn(row.pages), row.count);
        EXPECT_EQ(pages(row.text).upTo(row.pages).text().toStdString(), row.within);
    }
}

TEST(MarkOperation, DoesWhatItsNameSays)
{
    using Operation = MarkOperation;
    struct Row {
        const char* name;
        Operation operation;
        const char* before;
        const char* chosen;
        int current;
        const char* after; ///< in a document of ten pages
    };
    const Row rows[] = {
        {"toggling marks what isn't", Operation::Toggle, "", "2,4", 2, "2,4"},
        {"toggling pages of which some go lets all go", Operation::Toggle, "2", "2-4", 2, "2-4"},
        {"toggling pages that all go keeps them", Operation::Toggle, "1-5", "2-4", 2, "1,5"},
        {"adding", Operation::Add, "1", "2-3", 2, "1-3"},
        {"removing from within", Operation::Remove, "1-5,8", "3,8-9", 3, "1-2,4-5"},
        {"removing what isn't there", Operation::Remove, "1-2", "5", 5, "1-2"},
        {"removing the ends", Operation::Remove, "2-5", "1-2,5-6", 1, "3-4"},
        {"odd", Operation::Odd, "", "", 1, "1,3,5,7,9"},
        {"even beside others", Operation::Even, "1", "", 1, "1-2,4,6,8,10"},
        {"from here", Operation::FromHere, "1", "", 8, "1,8-10"},
        {"to here", Operation::ToHere, "9", "", 3, "1-3,9"},
        {"to here from nowhere", Operation::ToHere, "9", "", 0, "9"},
        {"from here from nowhere", Operation::FromHere, "9", "", 0, "9"},
        {"all", Operation::All, "3", "", 1, "1-10"},
        {"all keeps those of longer documents", Operation::All, "12", "", 1, "1-10,12"},
        {"inverting", Operation::Invert, "2-9", "", 1, "1,10"},
        {"inverting keeps those of longer documents", Operation::Invert, "9-12", "", 1,
         "1-8,11-12"},
        {"inverting all", Operation::Invert, "1-10", "", 1, ""},
        {"none, wherever", Operation::None, "1-3,12", "", 1, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const PageSet after =
            marksAfter(row.operation, pages(row.before), {10, pages(row.chosen), row.current});
        EXPECT_EQ(after.text().toStdString(), row.after);
    }
}

TEST(MarkOperation, IsTheSameAsPageByPage)
{
    // Every set of six pages with every other one.
    const auto ofBits = [](unsigned bits) {
        PageSet set;
        for (int page = 1; page <= 6; ++page) {
            set = (bits >> (page - 1)) & 1U ? set.united(PageSet(PageRun{page, page})) : set;
        }
        return set;
    };
    const auto bitsOf = [](const PageSet& set) {
        unsigned bits = 0;
        for (int page = 1; page <= 6; ++page) {
            bits |= set.contains(page) ? 1U << (page - 1) : 0;
        }
        return bits;
    };
    for (unsigned a = 0; a < 64; ++a) {
        for (unsigned b = 0; b < 64; ++b) {
            ASSERT_EQ(bitsOf(ofBits(a).united(ofBits(b))), a | b);
            ASSERT_EQ(ofBits(a).without(ofBits(b)), ofBits(a & ~b));
        }
        ASSERT_EQ(ofBits(a).inverted(6), ofBits(~a & 63U));
    }
}

class MarksTest : public testing::Test {
protected:
    void type(const MarksPlace& place, const char* text, int series = 0)
    {
        undo.push(
            new MarkCommand(marks, place, Marks::ofText(text, *marks.at(place)), "Type", series));
    }

    std::string of(DocumentId document) const
    {
        return marks.of(document).pages.text().toStdString();
    }

    Marks marks;
    QUndoStack undo;
};

TEST_F(MarksTest, HoldForAllDocumentsButThoseWithTheirOwn)
{
    type(std::nullopt, "1-2");
    undo.push(new MarkCommand(marks, 7, Marks::ofPages(pages("9")), "Only Here"));
    EXPECT_EQ(of(1), "1-2");
    EXPECT_EQ(of(7), "9");
    EXPECT_EQ(marks.placeOf(7), MarksPlace(7));
    EXPECT_EQ(marks.placeOf(1), std::nullopt);
    undo.push(new MarkCommand(marks, 7, std::nullopt, "As in All"));
    EXPECT_EQ(of(7), "1-2");
    undo.undo();
    EXPECT_EQ(of(7), "9");
    undo.undo();
    EXPECT_FALSE(marks.isOwn(7));
    undo.undo();
    EXPECT_EQ(of(1), "");
}

TEST_F(MarksTest, StayWhileATextHasAFault)
{
    for (const char* typed : {"2", "2,", "2,4", "2,4-"}) {
        type(std::nullopt, typed);
    }
    EXPECT_EQ(of(1), "2,4");
    EXPECT_EQ(marks.forAll().text, "2,4-");
    EXPECT_TRUE(marks.forAll().fault.has_value());
    type(std::nullopt, "2,4-6");
    EXPECT_EQ(of(1), "2,4-6");
    EXPECT_FALSE(marks.forAll().fault.has_value());
}

TEST_F(MarksTest, OfOneTypingAreUndoneTogetherAndOthersAreNot)
{
    for (const char* typed : {"1", "12", "12,3"}) {
        type(std::nullopt, typed, 1);
    }
    type(std::nullopt, "12,34", 2);
    undo.push(new MarkCommand(marks, 7, Marks::ofText("5", {}), "Type", 2));
    EXPECT_EQ(undo.count(), 3);
    undo.undo();
    undo.undo();
    EXPECT_EQ(marks.forAll().text, "12,3");
    undo.undo();
    EXPECT_EQ(marks.forAll().text, "");
    undo.redo();
    EXPECT_EQ(marks.forAll().text, "12,3");
}

} // namespace
