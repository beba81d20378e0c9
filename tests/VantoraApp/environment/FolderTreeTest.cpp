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

TEST_F(FolderTree, LiesBelowTheGenericDataFolderWhateverTheApplicationIsCalled)
{
    const NameRow rows[] = {
        {"data", CUtils::GetAppDataFolder, ""},
        {"tools", CUtils::GetAppDataToolsFolder, "/orvex software/Tollera/"},
        {"action lists", CUtils::GetSequenceFolder, "/orvex software/Tollera/Actions"},
        {"WF", CUtils::GetWFFolder, "/orvex software/Tollera/WF"},
        {"reports", CUtils::GetReportsFolder, "/orvex software/Tollera//Reports/Action Reports"},
        {"log", CUtils::GetAppLogFolder, "/orvex software/Tollera//Reports/App Log"},
        {"settings", CUtils::GetSettingsFolder, "/orvex software/Tollera//Settings"},
        {"favourites", CUtils::GetCollectionsFolder, "/orvex software/Tollera//Settings/Favorites"},
        {"split templates", CUtils::GetAdvSplitTemplatesFolder,
         "/orvex software/Tollera//Settings/AdvSplitTemplates"},
    };
    CUtils::SetAppName("Another");
    for (const NameRow& row : rows)
        EXPECT_EQ(row.operation(), scratch.data() + row.belowData) << row.sentence;
    CUtils::SetAppName({});
    EXPECT_EQ(CUtils::GetActionFolder(), "./Tools");
    EXPECT_EQ(CActionUtils::GetSettingsFolder(), CUtils::GetSettingsFolder());
    EXPECT_EQ(CActionUtils::GetCollectionsFolder(), CUtils::GetCollectionsFolder());
    EXPECT_EQ(CActionUtils::GetSequenceFolder(), CUtils::GetSequenceFolder());
    EXPECT_EQ(CActionUtils::GetVantoraAppDataFolder(), CUtils::GetAppDataToolsFolder());
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

TEST_F(FolderTree, IsCompletedAroundWhatIsThereAndWhatCannotBeCreated)
{
    CUtils::SetupFolders();
    const QString kept = CUtils::GetSettingsFolder() + "/kept.ini";
    ScratchHome::touch(kept);
    QDir(CUtils::GetAppDataToolsFolder() + "/Reports").removeRecursively();
    QDir(CUtils::GetWFFolder()).removeRecursively();
    ScratchHome::touch(CUtils::GetAppDataToolsFolder() + "/Reports");
    CUtils::SetupFolders();
    EXPECT_FALSE(QDir(CUtils::GetReportsFolder()).exists());
    EXPECT_TRUE(QDir(CUtils::GetWFFolder()).exists());
    EXPECT_TRUE(QFile::exists(kept));
}

} // namespace
