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

class LeadingZeroes : public testing::TestWithParam<NumberRow> {};

TEST_P(LeadingZeroes, FillUpToTheWidth)
{
    const NumberRow& row = GetParam();
    EXPECT_EQ(CActionUtils::GetStringWithLeadingZeroesFromNumber(row.number, row.width), row.text);
}

TEST(LeadingZeroesOfTexts, CountCharactersNotBytes)
{
    EXPECT_EQ(CActionUtils::GetStringWithLeadingZeroesFromString(QString::fromUtf8("\u00E9"), 3),
              QString::fromUtf8("00\u00E9"));
}

INSTANTIATE_TEST_SUITE_P(
    , LeadingZeroes,
    testing::Values(NumberRow{"shorter", 7, 3, "007"}, NumberRow{"longer", 1234, 3, "1234"},
                    NumberRow{"as_long", 123, 3, "123"}, NumberRow{"negative", -5, 4, "00-5"},
                    NumberRow{"zero", 0, 2, "00"}, NumberRow{"no_width", 7, 0, "7"},
                    NumberRow{"negative_width", 7, -3, "7"},
                    NumberRow{"lowest_number", -2147483647 - 1, 13, "00-2147483648"}),
    [](const auto& info) { return std::string(info.param.sentence); });

struct CopyRow {
    const char* sentence;
    QStringList existing;
    const char* path;
    const char* result;
};

class CopyNumber : public testing::TestWithParam<CopyRow> {};

TEST_P(CopyNumber, GivesTheFirstFreeName)
{
    const ScratchHome scratch;
    const QString folder = scratch.home() + "/";
    for (const QString& file : GetParam().existing) {
        QDir().mkpath(QFileInfo(folder + file).path());
        ScratchHome::touch(folder + file);
    }
    const QString result = CActionUtils::AppendCopyNumberToFilename(folder + GetParam().path);
    EXPECT_EQ(result, folder + GetParam().result);
    EXPECT_FALSE(QFile::exists(result));
}

INSTANTIATE_TEST_SUITE_P(
    , CopyNumber,
    testing::Values(CopyRow{"the_path_itself_when_free", {"other.pdf"}, "report.pdf", "report.pdf"},
                    CopyRow{"one_when_taken", {"report.pdf"}, "report.pdf", "report (1).pdf"},
                    CopyRow{"two_when_one_is_taken_too",
                            {"report.pdf", "report (1).pdf"},
                            "report.pdf",
                            "report (2).pdf"},
                    CopyRow{"before_the_last_dot", {"a.tar.gz"}, "a.tar.gz", "a.tar (1).gz"},
                    CopyRow{"before_a_dot_at_the_end", {"report."}, "report.", "report (1)."},
                    CopyRow{"in_the_name_of_the_folder_when_the_file_has_no_dot",
                            {"v1.0/report"},
                            "v1.0/report",
                            "v1 (1).0/report"}),
    [](const auto& info) { return std::string(info.param.sentence); });

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

class FixedName : public testing::TestWithParam<NameRow> {};

TEST_P(FixedName, HasNoCharacterThatFileNamesRefuse)
{
    QString text = QString::fromUtf8(GetParam().text);
    CActionUtils::FixStringForFilename(&text);
    EXPECT_EQ(text, QString::fromUtf8(GetParam().fixed));
}

INSTANTIATE_TEST_SUITE_P(
    , FixedName,
    testing::Values(NameRow{"trimmed_and_cleaned", "  a:b?.pdf \n", "ab.pdf"},
                    NameRow{"every_refused_character", "<a>b:c\"d/e\\f|g?h*i", "abcdefghi"},
                    NameRow{"line_ends_and_tabs_inside", "a\tb\nc\rd", "abcd"},
                    NameRow{"a_blank_before_a_removed_end_stays", "name ?", "name "},
                    NameRow{"other_languages_stay", "\u00FCber \u4E2D", "\u00FCber \u4E2D"},
                    NameRow{"nothing_may_be_left", " ?* ", ""}),
    [](const auto& info) { return std::string(info.param.sentence); });

struct EnvironmentRow {
    const char* sentence;
    const char* home;
    const char* path;
    const char* result;
};

class EnvironmentPath : public testing::TestWithParam<EnvironmentRow> {};

TEST_P(EnvironmentPath, HasItsPlaceholderExpanded)
{
    ScratchHome scratch;
    scratch.set("HOME", GetParam().home);
    EXPECT_EQ(CActionUtils::ReplaceEnvironmentPaths(GetParam().path), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    , EnvironmentPath,
    testing::Values(
        EnvironmentRow{"at_the_start", "/Users/ann", "%ALLUSERSPROFILE%/Data",
                       "/Users/All Users//Data"},
        EnvironmentRow{"everywhere", "/Users/ann", "%ALLUSERSPROFILE%|%ALLUSERSPROFILE%",
                       "/Users/All Users/|/Users/All Users/"},
        EnvironmentRow{"in_an_old_profile_tree", "/C/Documents and Settings/ann",
                       "%ALLUSERSPROFILE%x",
                       "/C/Documents and Settings/All Users/Application Data/x"},
        EnvironmentRow{"with_a_home_at_the_top", "/root", "%ALLUSERSPROFILE%", "/All Users/"},
        EnvironmentRow{"not_in_another_case", "/Users/ann", "%AllUsersProfile%/Data",
                       "%AllUsersProfile%/Data"}),
    [](const auto& info) { return std::string(info.param.sentence); });

} // namespace
