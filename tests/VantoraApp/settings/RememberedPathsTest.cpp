#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/CUtils.h"

#include "tests/support/ScratchHome.h"

#include <QtCore/QSettings>
#include <gtest/gtest.h>

namespace {

class RememberedPaths : public testing::Test {
protected:
    RememberedPaths() { QDir().mkpath(CUtils::GetSettingsFolder()); }

    static QString file() { return CUtils::GetSettingsFolder() + "/LastVisitedLocations.vsf"; }

    ScratchHome scratch;
};

struct LinksRow {
    const char* sentence;
    QStringList entered;
    QStringList remembered;
};

class RememberedLinks : public RememberedPaths, public testing::WithParamInterface<LinksRow> {};

TEST_P(RememberedLinks, StandLastOneFirst)
{
    for (const QString& link : GetParam().entered) {
        CActionUtils::SaveLastEnteredLink("key", link);
    }
    EXPECT_EQ(CActionUtils::GetLastEnteredLinks("key"), GetParam().remembered);
}

INSTANTIATE_TEST_SUITE_P(
    , RememberedLinks,
    testing::Values(
        LinksRow{"none", {}, {}},
        LinksRow{"up_to_five", {"A", "B", "C", "D", "E", "F"}, {"F", "E", "D", "C", "B"}},
        LinksRow{"one_entered_again_moves_to_the_front", {"A", "B", "A"}, {"A", "B"}},
        LinksRow{"one_entered_again_pushes_none_out",
                 {"A", "B", "C", "D", "E", "A"},
                 {"A", "E", "D", "C", "B"}},
        LinksRow{"case_tells_links_apart", {"http://a", "HTTP://a"}, {"HTTP://a", "http://a"}},
        LinksRow{"a_single_empty_one", {""}, {""}}, LinksRow{"a_null_one", {QString()}, {""}},
        LinksRow{"characters_that_the_file_format_uses",
                 {"a, b", "\"c\" = d; [e]", "@Invalid()", "\\\\server\\share %41",
                  QString::fromUtf8("/\u00FC/\u4E2D\U0001F4C4")},
                 {QString::fromUtf8("/\u00FC/\u4E2D\U0001F4C4"), "\\\\server\\share %41",
                  "@Invalid()", "\"c\" = d; [e]", "a, b"}}),
    [](const auto& info) { return std::string(info.param.sentence); });

TEST_F(RememberedPaths, FallBackToTheDesktopOnlyWhenNothingWasStored)
{
    EXPECT_EQ(CActionUtils::GetLastVisitedLocation("key"), scratch.home() + "/Desktop");
    CActionUtils::SaveLastVisitedLocation("key", "/somewhere else, far");
    EXPECT_EQ(CActionUtils::GetLastVisitedLocation("key"), "/somewhere else, far");
    CActionUtils::SaveLastVisitedLocation("key", "");
    EXPECT_EQ(CActionUtils::GetLastVisitedLocation("key"), "");
}

TEST_F(RememberedPaths, LieInOneIniFileOutsideAnyGroup)
{
    CActionUtils::SaveLastVisitedLocation("FolderOfInputs", "/in");
    for (const char* link : {"B", "A"}) {
        CActionUtils::SaveLastEnteredLink("Links", link);
    }
    EXPECT_EQ(ScratchHome::bytesOf(file()), "[General]\nFolderOfInputs=/in\nLinks=A, B\n");
}

TEST_F(RememberedPaths, AreReadFromALongerListAndCutWhenOneIsAdded)
{
    QSettings(file(), QSettings::IniFormat)
        .setValue("key", QStringList({"1", "2", "2", "3", "4", "5", "6", "7"}));
    EXPECT_EQ(CActionUtils::GetLastEnteredLinks("key").size(), 8);
    CActionUtils::SaveLastEnteredLink("key", "0");
    EXPECT_EQ(CActionUtils::GetLastEnteredLinks("key"), QStringList({"0", "1", "2", "3", "4"}));
}

TEST_F(RememberedPaths, AreLostWithoutNoticeWhenTheFileCannotBeWritten)
{
    ASSERT_TRUE(QDir().mkdir(file()));
    CActionUtils::SaveLastVisitedLocation("key", "/a");
    CActionUtils::SaveLastEnteredLink("links", "A");
    EXPECT_EQ(CActionUtils::GetLastVisitedLocation("key"), scratch.home() + "/Desktop");
    EXPECT_EQ(CActionUtils::GetLastEnteredLinks("links"), QStringList());
}

TEST_F(RememberedPaths, AreNoneWhenTheFileIsNoSettingsFile)
{
    ScratchHome::touch(file(), QByteArray("\x00\xFF[[[\n=\n@Variant(\x7F", 16).repeated(1000));
    EXPECT_EQ(CActionUtils::GetLastVisitedLocation("key"), scratch.home() + "/Desktop");
    EXPECT_EQ(CActionUtils::GetLastEnteredLinks("links"), QStringList());
}

} // namespace
