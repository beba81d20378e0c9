#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/page_ranges/PlainNumber.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace {

QList<int> PagesOf(const QString& text, int pageCount, bool leaveOutOdd = false,
                   bool leaveOutEven = false, QList<int> pages = {})
{
    EXPECT_TRUE(CActionUtils::GetPageList(text, pageCount, leaveOutOdd, leaveOutEven, &pages));
    return pages;
}

QList<int> RunsOf(QList<int> pages, QList<int> runs = {})
{
    CActionUtils::CollectPageList(&pages, &runs);
    return runs;
}

QList<int> Ascending(int first, int last)
{
    QList<int> pages;
    for (int page = first; page <= last; ++page)
        pages.append(page);
    return pages;
}

struct Verdict {
    const char* name;
    QString text;
    bool ascendingOnly;
    bool anyOrder;
};

const Verdict verdicts[] = {
    {"numbers and ranges", "1,4-6,9-15,21", true, true},
    {"one digit", "7", true, true},
    {"spaces anywhere", " 1, 4 - 6 ", true, true},
    {"a trailing comma", "1,2,", true, true},
    {"two trailing commas", "1,,", false, false},
    {"nothing", "", false, false},
    {"only a comma", ",", false, false},
    {"page 0", "0", false, false},
    {"a leading zero", "01", false, false},
    {"a leading zero right of the dash", "3-07", false, false},
    {"no number left of the dash", "-1", false, false},
    {"an empty item", "1,,2", false, false},
    {"no number right of the dash", "1-", false, false},
    {"two dashes", "1-2-3", false, false},
    {"equal pages", "4-4", false, true},
    {"descending pages", "6-4", false, true},
    {"a semicolon", "1;2", false, false},
    {"a letter", "a", false, false},
    {"a full-width digit", QString(QChar(0xff11)), true, true},
    {"a Roman numeral", QString(QChar(0x2163)), true, true},
    {"Arabic digits, which read as 0", QString("1-") + QChar(0x0665), false, true},
    {"beyond 32 bits on the left, which reads as 0", "99999999999-5", true, true},
    {"beyond 32 bits on the right, which reads as 0", "5-99999999999", false, true},
};

TEST(ValidatePageRange, AcceptsExactlyTheSyntax)
{
    for (const Verdict& row : verdicts) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(CActionUtils::ValidatePageRange(row.text, false), row.ascendingOnly);
        EXPECT_EQ(CActionUtils::ValidatePageRange(row.text, true), row.anyOrder);
    }
}

TEST(ValidateSplitPageRange, AcceptsWhenEveryPartIsValid)
{
    const std::pair<const char*, bool> rows[] = {
        {"1-3;4-10", true}, {"5-1;7", true}, {"7", true},       {"1,;2,", true},
        {"1-3;", false},    {";1", false},   {"1;;2", false},   {"", false},
        {";", false},       {"1;0", false},  {"1; 4 - 2", true}};
    for (const auto& [text, valid] : rows)
        EXPECT_EQ(CActionUtils::ValidateSplitPageRange(text), valid) << text;
}

struct PageRow {
    const char* name;
    const char* text;
    int pageCount;
    bool leaveOutOdd;
    bool leaveOutEven;
    QList<int> pages;
};

const PageRow pageRows[] = {
    {"cut at the page count", "1,4-6,9-15,21", 12, false, false, {1, 4, 5, 6, 9, 10, 11, 12}},
    {"sorted without repeats", "6,2,6,3-4", 10, false, false, {2, 3, 4, 6}},
    {"overlapping ranges", "3-5,4-7,1-3", 10, false, false, {1, 2, 3, 4, 5, 6, 7}},
    {"a descending range", "5-3", 10, false, false, {}},
    {"equal pages", "5-5", 10, false, false, {5}},
    {"an empty item", "1,,3", 10, false, false, {0, 1, 3}},
    {"a trailing comma", "1,", 10, false, false, {0, 1}},
    {"spaces around numbers", " 2 , 4 - 5 ", 10, false, false, {2, 4, 5}},
    {"a space inside a number", "1 0", 10, false, false, {0}},
    {"without odd pages", "1-10", 10, true, false, {2, 4, 6, 8, 10}},
    {"without even pages", "1-10", 10, false, true, {1, 3, 5, 7, 9}},
    {"without odd pages, one left", "3,4", 10, true, false, {4}},
    {"without any pages", "1-10", 10, true, true, {}},
    {"page 0 is even", "-1", 10, false, true, {1}},
    {"no number left of the dash", "-3", 10, false, false, {0, 1, 2, 3}},
    {"no number right of the dash", "0-,1-", 10, false, false, {0}},
    {"a second dash spoils the right number", "--5,1--5,0-5-6", 10, false, false, {0}},
    {"all pages from far below 32 bits", "-2147483647", 2, false, false, {0, 1, 2}},
    {"the last page number of 32 bits", "1-2147483647", 3, false, false, {1, 2, 3}},
    {"beyond 32 bits", "2147483648,1-2147483648,99999999999", 3, false, false, {0}},
    {"above the page count", "11,11-20", 10, false, false, {}},
    {"a document without pages", "-5,1", 0, false, false, {0}},
    {"a negative page count", "-5,0,1", -1, false, false, {}},
    {"words", "all", 10, false, false, {0}},
};

TEST(GetPageList, ListsThePagesThatTheTextNames)
{
    for (const PageRow& row : pageRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(PagesOf(row.text, row.pageCount, row.leaveOutOdd, row.leaveOutEven), row.pages);
    }
}

TEST(GetPageList, LeavesTheListUntouchedForTheEmptyText)
{
    QList<int> pages{3, 1};
    EXPECT_FALSE(CActionUtils::GetPageList("", 10, false, false, &pages));
    EXPECT_EQ(pages, (QList<int>{3, 1}));
}

TEST(GetPageList, KeepsWhatWasInTheListAndSortsAllOfIt)
{
    EXPECT_EQ(PagesOf("2-4,8", 10, false, false, {20, 3, 3, -1}),
              (QList<int>{-1, 2, 3, 3, 4, 8, 20}));
    EXPECT_EQ(PagesOf("1-4", 10, true, false, {3}), (QList<int>{2, 3, 4}));
    EXPECT_EQ(PagesOf("11", 10, false, false, {2, 1}), (QList<int>{1, 2}));
}

TEST(GetPageList, ReadsTheMinusSignOfQtAsASign)
{
    const QString minus(QChar(0x2212));
    EXPECT_EQ(PagesOf(minus + "5", 10), QList<int>{-5});
    EXPECT_EQ(PagesOf(minus + "3-1", 10), Ascending(-3, 1));
    EXPECT_EQ(PagesOf(minus + "3-" + minus + "2", 10), Ascending(-3, -2));
    EXPECT_EQ(PagesOf(minus + "2147483648-2147483647", 10), Ascending(-10, 10));
    EXPECT_EQ(PagesOf(minus + "9-5", -4), Ascending(-4, -4));
}

struct HostileText {
    const char* name;
    QString text;
    int pageCount;
    int firstPage;
    int lastPage;
};

QString Repeated(const char* text, int times)
{
    return QString(text).repeated(times);
}

// These take milliseconds. Work that grows with the square, or with the range asked for, would take
// hours, which no test is given.
TEST(PageRanges, TakeHostileTextsInTheirStride)
{
    const HostileText rows[] = {
        {"a million pages", "1-1000000", 1000000, 1, 1000000},
        {"a thousand million pages of ten", Repeated("1-1000000000,", 100000) + "1", 10, 1, 10},
        {"the largest number of pages", "1-2147483647", 10, 1, 10},
        {"a million pages a hundred thousand times", Repeated("1-1000000,", 100000) + "2", 1000000,
         1, 1000000},
        {"megabytes of commas", Repeated(",", 4000000), 10, 0, 0},
        {"megabytes of dashes", Repeated("-", 4000000), 10, 0, 0},
        {"a number of megabytes", Repeated("9", 4000000), 10, 0, 0},
        {"megabytes of spaces", Repeated(" ", 4000000), 10, 0, 0},
        {"every other page from both ends", Repeated("1,1000000,500000,", 100000), 3, 0, 1},
    };
    for (const HostileText& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(PagesOf(row.text, row.pageCount) == Ascending(row.firstPage, row.lastPage));
        CActionUtils::ValidatePageRange(row.text, false);
    }
}

TEST(ValidatePageRange, IsLinearInTheText)
{
    EXPECT_TRUE(CActionUtils::ValidatePageRange(Repeated("1-22,3,", 500000), false));
    EXPECT_TRUE(CActionUtils::ValidatePageRange(Repeated("1", 4000000), false));
    EXPECT_FALSE(CActionUtils::ValidatePageRange("1" + Repeated("-", 4000000), true));
    EXPECT_TRUE(CActionUtils::ValidateSplitPageRange(Repeated("1-22;", 500000) + "1"));
}

TEST(NumberOf, ReadsWhatQtReads)
{
    for (const char* text : {"", "0", "7", "007", " 12", "12 ", "+5", "-5", "1a", "a", "1-2", "٣",
                             "−3", "999999999", "2147483647", "2147483648", "00000000001",
                             "99999999999"}) {
        const QString number = QString::fromUtf8(text);
        EXPECT_EQ(NumberOf(QStringRef(&number)), number.toInt()) << text;
    }
}

struct RunRow {
    const char* name;
    QList<int> pages;
    QList<int> runs;
};

TEST(CollectPageList, ListsMaximalRunsFromTheLastPageToTheFirst)
{
    const RunRow rows[] = {
        {"no page", {}, {}},
        {"one page", {7}, {7, 1}},
        {"one run", {1, 2, 3}, {1, 3}},
        {"single pages", {2, 5}, {5, 1, 2, 1}},
        {"runs and single pages", {1, 4, 5, 6, 9, 21}, {21, 1, 9, 1, 4, 3, 1, 1}},
        {"from page 0", {0, 1, 3}, {3, 1, 0, 2}},
        {"the limits of 32 bits",
         {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()},
         {std::numeric_limits<int>::max(), 1, std::numeric_limits<int>::min(), 1}},
    };
    for (const RunRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(RunsOf(row.pages), row.runs);
    }
    EXPECT_EQ(RunsOf({2}, {9, 1}), (QList<int>{9, 1, 2, 1}));
}

} // namespace
