#include "VantoraApp/settings/CActionHistoryAPI.h"
#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/errors/ErrorLog.h"
#include "tests/support/ScratchHome.h"

#include <QtCore/QDateTime>
#include <QtCore/QSettings>
#include <QtGui/QIcon>
#include <QtGui/QIconEngine>
#include <QtGui/QImage>

#include <gtest/gtest.h>
#include <memory>

namespace {

std::vector<std::string> reports;

} // namespace

// Stands in for the log's sink, which writes nothing.
void StoreErrorToLog(const char* report)
{
    reports.push_back(report);
}

namespace {

class CActionHistoryAPITest : public testing::Test {
protected:
    CActionHistoryAPITest() { QDir().mkpath(folder()); }

    static QString folder() { return CActionUtils::GetCollectionsFolder(); }

    static QStringList files() { return ScratchHome::entriesOf(folder()); }

    static int save(const QVariantMap& options, const QIcon& icon = {})
    {
        QVariantMap prefs = options;
        QIcon copy = icon;
        const int result = CActionHistoryAPI("Delete").SaveSettingsToHistory(&prefs, &copy);
        EXPECT_EQ(prefs, options) << "the options stay as they are";
        return result;
    }

    static void put(const QString& name, const QByteArray& text)
    {
        ScratchHome::touch(folder() + "/" + name, text);
    }

    /// Saves a favourite that is then this many seconds older than the test.
    void saveOld(const QString& name, int age)
    {
        EXPECT_EQ(save({{"CollectionName", name}}), 0);
        QFile file(folder() + "/" + name + ".ini");
        file.open(QIODevice::ReadWrite);
        file.setFileTime(start.addSecs(-age), QFileDevice::FileModificationTime);
    }

    /// The name of the favourite at the next place, or "none".
    static QString load(CActionHistoryAPI& history, int step)
    {
        const std::unique_ptr<QVariantMap> prefs(history.LoadSettingsFromHistory(step));
        return prefs ? prefs->value("CollectionName").toString() : "none";
    }

    const QDateTime start = QDateTime::currentDateTime();
    ScratchHome home;
};

/// An icon that can't be drawn.
class ThrowingIcon : public QIconEngine {
public:
    void paint(QPainter*, const QRect&, QIcon::Mode, QIcon::State) override { throw 5; }
    QPixmap pixmap(const QSize&, QIcon::Mode, QIcon::State) override { throw 5; }
    QIconEngine* clone() const override { return new ThrowingIcon; }
};

TEST_F(CActionHistoryAPITest, ReportsAnExceptionToTheLogWithItsPlace)
{
    EXPECT_EQ(save({{"CollectionName", "a"}}, QIcon(new ThrowingIcon)), 1);
    EXPECT_EQ(reports, std::vector<std::string>{"==============================\n"
                                                "Exception handled: system\n"
                                                "File: VantoraApp/CActionHistoryAPI\n"
                                                "Function: SaveSettingsToHistory\n"
                                                "Line: 53\n"});
    EXPECT_EQ(files(), QStringList());
}

TEST_F(CActionHistoryAPITest, WritesAFavouriteWithItsOptionsAndItsIcon)
{
    QPixmap picture(100, 50);
    picture.fill(Qt::red);
    const QVariantMap options{{"CollectionName", "Odd pages "}, {"byPageRangeTextEdit", "1,3"}};
    EXPECT_EQ(save(options, picture), 0);
    EXPECT_EQ(files(), QStringList{"Odd pages .ini"});

    const QSettings settings(folder() + "/Odd pages .ini", QSettings::IniFormat);
    EXPECT_EQ(settings.allKeys(), (QStringList{"ActionIcon", "ActionPrefs"}));
    EXPECT_EQ(settings.value("ActionPrefs").toMap(), options);
    const auto icon = settings.value("ActionIcon").value<QImage>();
    EXPECT_EQ(icon.size(), QSize(42, 21));
    EXPECT_EQ(icon.pixelColor(10, 10), QColor(Qt::red));
}

TEST_F(CActionHistoryAPITest, ReplacesAFavouriteOfTheSameNameWhole)
{
    put("Name.ini", "[General]\nold=1\n");
    EXPECT_EQ(save({{"CollectionName", "Name"}}), 0);
    const QSettings settings(folder() + "/Name.ini", QSettings::IniFormat);
    EXPECT_FALSE(settings.contains("old"));
    EXPECT_EQ(files(), QStringList{"Name.ini"});
}

TEST_F(CActionHistoryAPITest, WritesAFavouriteWithoutANameOrAnIconIntoAFolderThatWasNotThere)
{
    QDir(folder()).removeRecursively();
    EXPECT_EQ(save({}), 0);
    EXPECT_EQ(files(), QStringList{".ini"});
    const QSettings settings(folder() + "/.ini", QSettings::IniFormat);
    EXPECT_TRUE(settings.value("ActionIcon").value<QImage>().isNull());
}

TEST_F(CActionHistoryAPITest, WritesNothingForANameThatLeadsElsewhere)
{
    QDir().mkdir(folder() + "/a");
    EXPECT_EQ(save({{"CollectionName", "a/b"}}), 1);
    EXPECT_TRUE(QDir(folder() + "/a").isEmpty());
}

TEST_F(CActionHistoryAPITest, DoesNotReportWhatTheDiskRefuses)
{
    QDir().mkpath(folder() + "/Name.ini/inside");
    EXPECT_EQ(save({{"CollectionName", "Name"}}), 0);
    EXPECT_EQ(files(), QStringList{"Name.ini"});
}

TEST_F(CActionHistoryAPITest, SaysSoWhenAFavouriteCanNotBeReadBackWhole)
{
    EXPECT_EQ(save({{"CollectionName", "Delete A"},
                    {"byPageRangeTextEdit", "1"},
                    {"address", QVariant::fromValue<void*>(nullptr)}}),
              1);
    const QSettings settings(folder() + "/Delete A.ini", QSettings::IniFormat);
    EXPECT_EQ(settings.value("ActionPrefs").toMap(),
              (QVariantMap{{"CollectionName", "Delete A"}, {"byPageRangeTextEdit", "1"}}));

    EXPECT_EQ(save({{"CollectionName", "Delete B"}, {"text", QString(5 * 1024 * 1024, 'x')}}), 1);
    EXPECT_EQ(files(), QStringList{"Delete A.ini"});
}

TEST_F(CActionHistoryAPITest, LoadsAnEmptyMapWhereTheOptionsAreNoMap)
{
    put("Delete.ini", "[General]\nActionPrefs=1\n");
    const std::unique_ptr<QVariantMap> prefs(
        CActionHistoryAPI("Delete").LoadSettingsFromHistory(1));
    ASSERT_NE(prefs, nullptr);
    EXPECT_TRUE(prefs->isEmpty());
}

struct StepRow {
    const char* name;
    QList<int> steps;
    QStringList loaded;
};

TEST_F(CActionHistoryAPITest, StepsThroughTheFavouritesFromTheNewest)
{
    saveOld("Delete A", 30);
    saveOld("Delete B", 20);
    saveOld("Delete C", 10);
    saveOld("Other", 5);
    const StepRow rows[] = {
        {"past the oldest and back",
         {1, 1, 1, 1, -1},
         {"Delete C", "Delete B", "Delete A", "none", "Delete A"}},
        {"before the newest", {-1, 1, 1}, {"none", "none", "Delete C"}},
        {"the same again", {1, 0, 0}, {"Delete C", "Delete C", "Delete C"}},
        {"not started", {0}, {"none"}},
        {"more than one at a time", {3, -2}, {"Delete A", "Delete C"}},
        {"as far as can be", {2147483647, 2147483647, -2147483647 - 1}, {"none", "none", "none"}},
    };
    for (const StepRow& row : rows) {
        SCOPED_TRACE(row.name);
        CActionHistoryAPI history("Delete");
        QStringList loaded;
        for (const int step : row.steps)
            loaded << load(history, step);
        EXPECT_EQ(loaded, row.loaded) << loaded.join(", ").toStdString();
    }
}

TEST_F(CActionHistoryAPITest, OrdersFavouritesOfTheSameTimeByName)
{
    for (const char* name : {"Delete B", "Delete A", "Delete C"})
        saveOld(name, 50);
    CActionHistoryAPI history("Delete");
    for (const char* name : {"Delete A", "Delete B", "Delete C"})
        EXPECT_EQ(load(history, 1), name);
}

TEST_F(CActionHistoryAPITest, KeepsTheListOfItsBeginning)
{
    saveOld("Delete A", 10);
    CActionHistoryAPI history("Delete");
    saveOld("Delete B", 0);
    EXPECT_EQ(load(history, 1), "Delete A");
    EXPECT_EQ(load(history, 1), "none");
}

TEST_F(CActionHistoryAPITest, StepsOverFilesThatAreNoFavourites)
{
    saveOld("Delete B", 20);
    put("Delete 1.ini", "[General]\nOther=1\n");
    put("Delete 2", "no settings at all");
    put("Delete 3.ini", "ActionPrefs=@Variant(\\0\\0\\0\\x7f\\0\\0\\0\\bUnknown\\0)");
    put("Delete 4.ini", "ActionPrefs=@Variant(\\0\\0\\0\\b\\x7f\\xff\\xff\\xff)");
    QDir().mkpath(folder() + "/Delete folder.ini");
    CActionHistoryAPI history("Delete");
    QFile::remove(folder() + "/Delete 2");
    QStringList loaded;
    for (int i = 0; i < 5; ++i)
        loaded << load(history, 1);
    EXPECT_EQ(loaded.takeLast(), "Delete B");
    loaded.sort();
    EXPECT_EQ(loaded, (QStringList{"", "", "none", "none"}))
        << "two have options, which are no map";
}

TEST_F(CActionHistoryAPITest, LoadsOptionsThatAreNoMapAsNone)
{
    put("Delete.ini", "[General]\nActionPrefs=text\n");
    CActionHistoryAPI history("Delete");
    const std::unique_ptr<QVariantMap> prefs(history.LoadSettingsFromHistory(1));
    ASSERT_NE(prefs, nullptr);
    EXPECT_TRUE(prefs->isEmpty());
}

TEST_F(CActionHistoryAPITest, HasNothingWithoutAFolder)
{
    QDir(folder()).removeRecursively();
    CActionHistoryAPI history("Delete");
    EXPECT_EQ(load(history, 1), "none");
}

} // namespace
