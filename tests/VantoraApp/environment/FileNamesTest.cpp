#include "VantoraApp/CActionUtils.h"

#include "tests/support/ScratchHome.h"

#include <gtest/gtest.h>

namespace {

struct NumberRow {
    const char* sentence;
    int number;
    int width;
    const char* text;
};

TEST(LeadingZeroes, FillUpToTheWidth)
{
    const NumberRow rows[] = {
        {"shorter", 7, 3, "007"},       {"longer", 1234, 3, "1234"},
        {"as long", 123, 3, "123"},     {"negative", -5, 4, "00-5"},
        {"zero", 0, 2, "00"},           {"no width", 7, 0, "7"},
        {"negative width", 7, -3, "7"}, {"lowest number", -2147483647 - 1, 13, "00-2147483648"}};
    for (const NumberRow& row : rows)
        EXPECT_EQ(CActionUtils::GetStringWithLeadingZeroesFromNumber(row.number, row.width),
                  row.text)
            << row.sentence;
}

TEST(LeadingZeroesOfTexts, CountCharactersNotBytes)
{
    EXPECT_EQ(CActionUtils::GetStringWithLeadingZeroesFromString(QString::fromUtf8("\u00E9"), 3),
              QString::fromUtf8("00\u00E9"));
}

struct CopyRow {
    const char* sentence;
    QStringList existing;
    const char* path;
    const char* result;
};

TEST(CopyNumber, GivesTheFirstFreeName)
{
    const CopyRow rows[] = {
        {"the path itself when free", {"other.pdf"}, "report.pdf", "report.pdf"},
        {"one when taken", {"report.pdf"}, "report.pdf", "report (1).pdf"},
        {"two when one is taken too",
         {"report.pdf", "report (1).pdf"},
         "report.pdf",
         "report (2).pdf"},
        {"before the last dot", {"a.tar.gz"}, "a.tar.gz", "a.tar (1).gz"},
        {"before a dot at the end", {"report."}, "report.", "report (1)."},
        {"in the name of the folder when the file has no dot",
         {"v1.0/report"},
         "v1.0/report",
         "v1 (1).0/report"}};
    for (const CopyRow& row : rows) {
        SCOPED_TRACE(row.sentence);
        const ScratchHome scratch;
        const QString folder = scratch.home() + "/";
        for (const QString& file : row.existing) {
            QDir().mkpath(QFileInfo(folder + file).path());
            ScratchHome::touch(folder + file);
        }
        const QString result = CActionUtils::AppendCopyNumberToFilename(folder + row.path);
        EXPECT_EQ(result, folder + row.result);
        EXPECT_FALSE(QFile::exists(result));
    }
}

TEST(CopyNumberWithoutDot, StandsAtTheEnd)
{
    const ScratchHome scratch;
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(scratch.home()));
    ScratchHome::touch("report");
    ScratchHome::touch("report (1)");
    EXPECT_EQ(CActionUtils::AppendCopyNumberToFilename("report"), "report (2)");
    QDir::setCurrent(before);
}

struct NameRow {
    const char* sentence;
    const char* text;
    const char* fixed;
};

TEST(FixedName, HasNoCharacterThatFileNamesRefuse)
{
    const NameRow rows[] = {{"trimmed and cleaned", "  a:b?.pdf \n", "ab.pdf"},
                            {"every refused character", "<a>b:c\"d/e\\f|g?h*i", "abcdefghi"},
                            {"line ends and tabs inside", "a\tb\nc\rd", "abcd"},
                            {"a blank before a removed end stays", "name ?", "name "},
                            {"other languages stay", "\u00FCber \u4E2D", "\u00FCber \u4E2D"},
                            {"nothing may be left", " ?* ", ""}};
    for (const NameRow& row : rows) {
        SCOPED_TRACE(row.sentence);
        QString text = QString::fromUtf8(row.text);
        CActionUtils::FixStringForFilename(&text);
        EXPECT_EQ(text, QString::fromUtf8(row.fixed));
    }
}

struct EnvironmentRow {
    const char* sentence;
    const char* home;
    const char* path;
    const char* result;
};

TEST(EnvironmentPath, HasItsPlaceholderExpanded)
{
    const EnvironmentRow rows[] = {
        {"at the start", "/Users/ann", "%ALLUSERSPROFILE%/Data", "/Users/All Users//Data"},
        {"everywhere", "/Users/ann", "%ALLUSERSPROFILE%|%ALLUSERSPROFILE%",
         "/Users/All Users/|/Users/All Users/"},
        {"in an old profile tree", "/C/Documents and Settings/ann", "%ALLUSERSPROFILE%x",
         "/C/Documents and Settings/All Users/Application Data/x"},
        {"with a home at the top", "/root", "%ALLUSERSPROFILE%", "/All Users/"},
        {"not in another case", "/Users/ann", "%AllUsersProfile%/Data", "%AllUsersProfile%/Data"}};
    for (const EnvironmentRow& row : rows) {
        SCOPED_TRACE(row.sentence);
        ScratchHome scratch;
        scratch.set("HOME", row.home);
        EXPECT_EQ(CActionUtils::ReplaceEnvironmentPaths(row.path), row.result);
    }
}

} // namespace
