#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/CUtils.h"

#include "tests/support/ScratchHome.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDirIterator>
#include <gtest/gtest.h>

namespace {

class FolderTree : public testing::Test {
protected:
    FolderTree()
        : program_("program"), arguments_{program_.data(), nullptr},
          application_(count_, arguments_)
    {
        QCoreApplication::setApplicationName("Host");
    }

    /// All folders and files below one, sorted, relative to it.
    static QStringList below(const QString& folder)
    {
        QStringList found;
        QDirIterator each(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                          QDirIterator::Subdirectories);
        while (each.hasNext()) {
            found << QDir(folder).relativeFilePath(each.next());
        }
        found.sort();
        return found;
    }

    ScratchHome scratch;

private:
    QByteArray program_;
    int count_ = 1;
    char* arguments_[2];
    QCoreApplication application_;
};

struct NameRow {
    const char* sentence;
    QString (*operation)();
    QString belowData;
};

class FolderName : public testing::TestWithParam<NameRow> {};

TEST_P(FolderName, IsBelowTheGenericDataFolder)
{
    const ScratchHome scratch;
    EXPECT_EQ(GetParam().operation(), scratch.data() + GetParam().belowData);
}

INSTANTIATE_TEST_SUITE_P(
    , FolderName,
    testing::Values(
        NameRow{"data", CUtils::GetAppDataFolder, ""},
        NameRow{"tools", CUtils::GetAppDataToolsFolder, "/orvex software/Tollera/"},
        NameRow{"action_lists", CUtils::GetSequenceFolder, "/orvex software/Tollera/Actions"},
        NameRow{"WF", CUtils::GetWFFolder, "/orvex software/Tollera/WF"},
        NameRow{"reports", CUtils::GetReportsFolder,
                "/orvex software/Tollera//Reports/Action Reports"},
        NameRow{"log", CUtils::GetAppLogFolder, "/orvex software/Tollera//Reports/App Log"},
        NameRow{"settings", CUtils::GetSettingsFolder, "/orvex software/Tollera//Settings"},
        NameRow{"favourites", CUtils::GetCollectionsFolder,
                "/orvex software/Tollera//Settings/Favorites"},
        NameRow{"split_templates", CUtils::GetAdvSplitTemplatesFolder,
                "/orvex software/Tollera//Settings/AdvSplitTemplates"},
        NameRow{"settings_for_actions", CActionUtils::GetSettingsFolder,
                "/orvex software/Tollera//Settings"},
        NameRow{"favourites_for_actions", CActionUtils::GetCollectionsFolder,
                "/orvex software/Tollera//Settings/Favorites"},
        NameRow{"action_lists_for_actions", CActionUtils::GetSequenceFolder,
                "/orvex software/Tollera/Actions"},
        NameRow{"tools_for_actions", CActionUtils::GetVantoraAppDataFolder,
                "/orvex software/Tollera/"}),
    [](const auto& info) { return std::string(info.param.sentence); });

TEST_F(FolderTree, DoesNotFollowTheApplicationName)
{
    CUtils::SetAppName("Another");
    EXPECT_EQ(CUtils::GetSequenceFolder(), scratch.data() + "/orvex software/Tollera/Actions");
    CUtils::SetAppName({});
}

TEST_F(FolderTree, HasTheActionsBesideTheWorkingDirectory)
{
    EXPECT_EQ(CUtils::GetActionFolder(), "./Tools");
}

TEST_F(FolderTree, IsCreatedWholeAndNothingBesideIt)
{
    CUtils::SetupFolders();
    const QStringList data = {
        "orvex software",
        "orvex software/Tollera",
        "orvex software/Tollera/Actions",
        "orvex software/Tollera/Reports",
        "orvex software/Tollera/Reports/Action Reports",
        "orvex software/Tollera/Reports/App Log",
        "orvex software/Tollera/Scripts",
        "orvex software/Tollera/Settings",
        "orvex software/Tollera/Settings/AdvSplitTemplates",
        "orvex software/Tollera/Settings/Favorites",
        "orvex software/Tollera/WF",
    };
    EXPECT_EQ(below(scratch.data()), data);
    EXPECT_EQ(below(scratch.documents()), QStringList({"Host", "Host/Input", "Host/Output"}));
}

TEST_F(FolderTree, IsLeftAsItIsWhenItExists)
{
    CUtils::SetupFolders();
    const QString file = CUtils::GetSettingsFolder() + "/kept.ini";
    ScratchHome::touch(file);
    const QStringList before = below(scratch.data());
    CUtils::SetupFolders();
    EXPECT_EQ(below(scratch.data()), before);
    EXPECT_TRUE(QFile::exists(file));
}

TEST_F(FolderTree, IsCompletedAroundAFolderThatCannotBeCreated)
{
    CUtils::SetupFolders();
    QDir(CUtils::GetAppDataToolsFolder() + "/Reports").removeRecursively();
    QDir(CUtils::GetWFFolder()).removeRecursively();
    ScratchHome::touch(CUtils::GetAppDataToolsFolder() + "/Reports");
    CUtils::SetupFolders();
    EXPECT_FALSE(QDir(CUtils::GetReportsFolder()).exists());
    EXPECT_TRUE(QDir(CUtils::GetWFFolder()).exists());
}

} // namespace
