#include "VantoraApp/dialogs/CSaveAsCollectionDialog.h"
#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/dialogs/CMsgBoxDialog.h"
#include "tests/support/FakeOpenGL.h"
#include "tests/support/ModalDialogs.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/ShownTexts.h"

#include <QtCore/QSettings>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QFileDialog>

#include <functional>
#include <gtest/gtest.h>

namespace {

class SaveAsCollection : public testing::Test {
protected:
    SaveAsCollection()
    {
        QDir().mkpath(folder());
        dialog.LoadPrefsData(&prefs);
    }

    ~SaveAsCollection() override { hasOpenGL = false; }

    static QString folder() { return CActionUtils::GetCollectionsFolder(); }

    static QStringList favourites() { return QDir(folder()).entryList(QDir::Files | QDir::Hidden); }

    template <class Widget = QWidget>
    Widget& child(const char* name)
    {
        return *dialog.findChild<Widget*>(name);
    }

    QLineEdit& name() { return child<QLineEdit>("collectionNameLineEdit"); }

    QIcon icon() { return child<QToolButton>("icon_toolButton").icon(); }

    void press(const char* button) { QTest::mouseClick(&child(button), Qt::LeftButton); }

    int run(const std::function<void()>& use)
    {
        OnModal<CSaveAsCollectionDialog> modal([&use](CSaveAsCollectionDialog&) { use(); });
        return dialog.exec();
    }

    /// Presses a button that opens a file dialog, and uses that.
    void pressForFile(const char* button, const std::function<void(QFileDialog&)>& use)
    {
        OnModal<QFileDialog> files(use);
        press(button);
    }

    static std::function<void(QFileDialog&)> choose(const QString& path)
    {
        return [path](QFileDialog& files) {
            auto* edit = files.findChild<QLineEdit*>("fileNameEdit");
            edit->setText(path);
            QTest::keyClick(edit, Qt::Key_Return);
        };
    }

    static void cancel(QFileDialog& files) { files.reject(); }

    QString picture(const char* name, QSize size, const char* format)
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::blue);
        const QString path = home.home() + "/" + name;
        EXPECT_TRUE(image.save(path, format));
        return path;
    }

    ScratchHome home;
    QVariantMap prefs{{"byPageRangeTextEdit", "1,3"}, {"ActionName", "Delete Pages"}};
    QWidget options;
    CSaveAsCollectionDialog dialog{&options, {}};
};

TEST_F(SaveAsCollection, EnablesSaveForAVisibleCharacter)
{
    run([this] {
        EXPECT_FALSE(child("saveButton").isEnabled());
        EXPECT_TRUE(child("saveSettingsToFileButton").isEnabled());
        QTest::keyClicks(&name(), "  ");
        EXPECT_FALSE(child("saveButton").isEnabled());
        QTest::keyClicks(&name(), "x");
        EXPECT_TRUE(child("saveButton").isEnabled());
        press("cancelButton");
    });
    EXPECT_EQ(favourites(), QStringList());
}

TEST_F(SaveAsCollection, SavesAFavouriteWithItsIcon)
{
    QPixmap picture(128, 128);
    picture.fill(Qt::red);
    child<QToolButton>("icon_toolButton").setIcon(picture);
    EXPECT_EQ(run([this] {
                  QTest::keyClicks(&name(), " Odd pages ");
                  QTest::keyClick(&name(), Qt::Key_Return);
              }),
              QDialog::Accepted);
    EXPECT_EQ(favourites(), QStringList{" Odd pages .ini"});
    const QSettings settings(folder() + "/ Odd pages .ini", QSettings::IniFormat);
    EXPECT_EQ(settings.value("ActionPrefs").toMap(), prefs);
    EXPECT_EQ(prefs.value("CollectionName"), " Odd pages ");
    const auto icon = settings.value("ActionIcon").value<QImage>();
    EXPECT_EQ(icon.size(), QSize(42, 42));
    EXPECT_EQ(icon.pixelColor(20, 20), QColor(Qt::red));
}

TEST_F(SaveAsCollection, RefusesANameThatLeadsElsewhereAndStaysOpen)
{
    const QVariantMap before = prefs;
    EXPECT_EQ(run([this] {
                  QTest::keyClicks(&name(), "a/b");
                  OnModal<CMsgBoxDialog> refusal([](CMsgBoxDialog& box) {
                      EXPECT_EQ(box.findChild<QLabel*>("titleLabel")->text(), "Sorrelin");
                      QTest::keyClick(&box, Qt::Key_Escape);
                  });
                  press("saveButton");
                  EXPECT_TRUE(dialog.isVisible());
                  EXPECT_EQ(name().selectedText(), "a/b");
                  EXPECT_EQ(dialog.focusWidget(), &name());
                  press("cancelButton");
              }),
              QDialog::Rejected);
    EXPECT_EQ(favourites(), QStringList());
    EXPECT_EQ(prefs, before);
}

TEST_F(SaveAsCollection, StretchesAChosenPictureToAnIcon)
{
    const QString wide = picture("wide.png", QSize(300, 100), "PNG");
    run([&] {
        pressForFile("icon_toolButton", [&wide](QFileDialog& files) {
            EXPECT_EQ(files.windowTitle(), "Sorrelin");
            EXPECT_EQ(files.nameFilters(),
                      QStringList{"Image files (*.bmp;*.jpg;*.gif;*.png;*.tif;*.wmf;*.emf)"});
            choose(wide)(files);
        });
        EXPECT_EQ(icon().availableSizes(), QList<QSize>{QSize(128, 128)});
        EXPECT_EQ(icon().pixmap(128).toImage().pixelColor(64, 2), QColor(Qt::blue));
        press("cancelButton");
    });
}

TEST_F(SaveAsCollection, OffersPicturesToChooseFrom)
{
    picture("a.png", QSize(1, 1), "PNG");
    picture("b.BMP", QSize(1, 1), "BMP");
    ScratchHome::touch(home.home() + "/c.txt");
    run([&] {
        pressForFile("icon_toolButton", [this](QFileDialog& files) {
            files.setDirectory(home.home());
            auto* view = files.findChild<QAbstractItemView*>("listView");
            const auto shown = [view] {
                QStringList names;
                for (int row = 0; row < view->model()->rowCount(view->rootIndex()); ++row)
                    names << view->model()->index(row, 0, view->rootIndex()).data().toString();
                return names;
            };
            EXPECT_TRUE(
                QTest::qWaitFor([&shown] { return shown().contains("b.BMP"); }, longestWait));
            EXPECT_TRUE(shown().contains("a.png"));
            EXPECT_FALSE(shown().contains("c.txt")) << shown().join(' ').toStdString();
            files.reject();
        });
        press("cancelButton");
    });
}

TEST_F(SaveAsCollection, HasNoIconAfterAFileThatIsNoPictureButKeepsItWhenNoneIsChosen)
{
    const QString path = home.home() + "/no.png";
    ScratchHome::touch(path);
    const qint64 before = icon().cacheKey();
    run([&] {
        pressForFile("icon_toolButton", cancel);
        EXPECT_EQ(icon().cacheKey(), before);
        pressForFile("icon_toolButton", choose(path));
        EXPECT_TRUE(icon().isNull());
        QTest::keyClicks(&name(), "x");
        press("saveButton");
    });
    const QSettings settings(folder() + "/x.ini", QSettings::IniFormat);
    EXPECT_TRUE(settings.contains("ActionIcon"));
    EXPECT_TRUE(settings.value("ActionIcon").value<QImage>().isNull());
}

TEST_F(SaveAsCollection, WritesAToolSettingsFile)
{
    const QString path = home.home() + "/my settings.tsf";
    const QVariantMap before = prefs;
    EXPECT_EQ(run([&] {
                  QTest::keyClicks(&name(), "typed");
                  pressForFile("saveSettingsToFileButton", [&path, this](QFileDialog& files) {
                      EXPECT_EQ(files.windowTitle(), "Save Tool settings to file");
                      EXPECT_EQ(files.directory().path(), home.home());
                      EXPECT_EQ(files.nameFilters(), QStringList{"Tool Settings Files (*.tsf)"});
                      choose(path)(files);
                  });
              }),
              QDialog::Rejected);
    const QSettings settings(path, QSettings::IniFormat);
    EXPECT_EQ(settings.allKeys(), QStringList{"ToolSettings"});
    EXPECT_EQ(settings.value("ToolSettings").toMap(), before);
    EXPECT_EQ(prefs, before);
    EXPECT_EQ(favourites(), QStringList());
}

TEST_F(SaveAsCollection, ClosesWhenNoFileIsChosen)
{
    EXPECT_EQ(run([this] { pressForFile("saveSettingsToFileButton", cancel); }), QDialog::Rejected);
    EXPECT_EQ(QDir(home.home()).entryList(QDir::Files), QStringList());
}

TEST_F(SaveAsCollection, ShowsAllOfItsTextsInItsFixedSize)
{
    inShownFonts([] {
        for (const bool openGL : {false, true}) {
            hasOpenGL = openGL;
            CSaveAsCollectionDialog shown(nullptr, {});
            shown.show();
            EXPECT_EQ(shown.findChild<QLabel*>("VDtitleLabel")->text(), "Add To Favorites");
            EXPECT_EQ(shown.minimumSize(), shown.maximumSize());
            EXPECT_GE(shown.height(), 236);
            EXPECT_EQ(cutTexts(shown), QStringList()) << cutTexts(shown).join(' ').toStdString();
        }
    });
}

TEST_F(SaveAsCollection, IsWalkedThroughByTabInTheOrderOfTheForm)
{
    run([this] {
        QTest::keyClicks(&name(), "x");
        EXPECT_EQ(tabOrder(dialog, 5),
                  (QStringList{"collectionNameLineEdit", "icon_toolButton",
                               "saveSettingsToFileButton", "saveButton", "cancelButton"}));
        press("cancelButton");
    });
}

} // namespace
