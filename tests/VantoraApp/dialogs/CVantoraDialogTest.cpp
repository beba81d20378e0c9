#include "VantoraApp/dialogs/CVantoraDialog.h"
#include "VantoraApp/dialogs/CVantoraHeaderButton.h"
#include "tests/support/FakeOpenGL.h"
#include "tests/support/ModalDialogs.h"
#include "tests/support/Pointer.h"

#include <QtGui/QScreen>
#include <QtWidgets/QFrame>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace {

/// A dialog as a subclass makes it.
class Dialog : public CVantoraDialog {
    Q_OBJECT

public:
    explicit Dialog(QWidget* parent = nullptr) : CVantoraDialog(parent, true) {}

    using CVantoraDialog::FitToTexts;
    using CVantoraDialog::PreviewHost;
    using CVantoraDialog::TitleLabel;

    QWidget* addContent(QSize size, bool fixedSize)
    {
        auto* content = new QWidget;
        content->resize(size);
        VDaddMainWidget(content, fixedSize);
        return content;
    }

    template <class Widget = QWidget>
    Widget& child(const char* name)
    {
        return *findChild<Widget*>(name);
    }

    int listShown = 0;
    int collectionShown = 0;

public slots:
    void on_VDShowSaveDialog() { ++listShown; }
    void on_VDShowSaveCollectionDialog() { ++collectionShown; }
};

/// Widgets of the given names, each inside the one before it.
class Ancestors {
public:
    explicit Ancestors(const std::vector<const char*>& names)
    {
        for (const char* name : names) {
            auto* widget = new QWidget(innermost);
            widget->setObjectName(name);
            if (!outermost)
                outermost.reset(widget);
            innermost = widget;
        }
    }

    std::unique_ptr<QWidget> outermost;
    QWidget* innermost = nullptr;
};

class CVantoraDialogTest : public testing::Test {
protected:
    ~CVantoraDialogTest() override { hasOpenGL = false; }
};

struct SettingRow {
    const char* name;
    std::vector<const char*> ancestors; ///< from the outermost
    bool inMainWindow;
    const char* previewHost;
};

const char* const preview = "VantoraPreviewClass";

const SettingRow settings[] = {
    {"no parent", {}, false, nullptr},
    {"other parents", {"vantoraclass", "Other"}, false, nullptr},
    {"the main window", {"VantoraClass"}, true, nullptr},
    {"inside the main window", {"VantoraClass", "Other"}, true, nullptr},
    {"the preview", {preview}, false, preview},
    {"a preview inside it", {"VantoraClass", preview, "Other"}, false, preview},
    {"the main window inside the preview", {preview, "VantoraClass"}, true, nullptr},
};

TEST_F(CVantoraDialogTest, LooksAsItsSettingWants)
{
    for (const SettingRow& row : settings) {
        SCOPED_TRACE(row.name);
        const Ancestors ancestors(row.ancestors);
        Dialog dialog(ancestors.innermost);

        const QString style = dialog.child("VDmainFrame").styleSheet();
        EXPECT_EQ(style.contains("border: 1px solid rgb(50,50,170);"), row.inMainWindow);
        EXPECT_EQ(style.contains("border: 1px solid rgb(140,130,130);"), !row.inMainWindow);
        EXPECT_EQ(style.contains("stop:0 rgba(70,90,160), stop:1 rgba(40,60,90)"),
                  row.inMainWindow);
        EXPECT_EQ(style.contains("stop:0 rgba(140,130,130), stop:1 rgba(40,36,36)"),
                  !row.inMainWindow);
        EXPECT_TRUE(style.contains("background: rgb(147, 147 ,147);"));

        QWidget* const preview = dialog.PreviewHost();
        EXPECT_EQ(preview == nullptr ? QString() : preview->objectName(), row.previewHost);

        auto& prefix = dialog.child<QLabel>("VDPrefixLabel");
        const bool elsewhere = !row.inMainWindow && row.previewHost == nullptr;
        EXPECT_EQ(prefix.isHidden(), !elsewhere);
        EXPECT_EQ(prefix.text(), elsewhere ? "Sorrelin -" : "");
    }
}

const char* const frames[3][3] = {{"VDshadowTopLeft", "VDshadowTop", "VDshadowTopRight"},
                                  {"VDshadowLeft", "VDmainFrame", "VDshadowRight"},
                                  {"VDshadowBtmLeft", "VDshadowBtm", "VDshadowBtmRight"}};

TEST_F(CVantoraDialogTest, HasAFrameOfHiddenShadowsAroundTheMainFrame)
{
    Dialog dialog;
    dialog.show();
    auto* grid = qobject_cast<QGridLayout*>(dialog.layout());
    ASSERT_NE(grid, nullptr);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const char* name = frames[row][column];
            SCOPED_TRACE(name);
            const bool isMain = row == 1 && column == 1;
            auto& frame = dialog.child<QFrame>(name);
            EXPECT_EQ(grid->itemAtPosition(row, column)->widget(), &frame);
            EXPECT_EQ(frame.isHidden(), !isMain);
            EXPECT_EQ(frame.minimumWidth(), isMain ? 40 : column == 1 ? 0 : 8);
            EXPECT_EQ(frame.maximumHeight(), row == 1 ? QWIDGETSIZE_MAX : 8);
            EXPECT_TRUE(frame.styleSheet().contains(QString("QFrame#") + name + " {"));
        }
    }
    EXPECT_EQ(dialog.child("VDmainFrame").size(), dialog.size());
}

TEST_F(CVantoraDialogTest, HasAHeaderOfThirtyPixelsAboveTheContent)
{
    Dialog dialog;
    QWidget* const content = dialog.addContent({400, 300}, false);
    dialog.show();
    QWidget& header = dialog.child("VDheaderWidget");
    EXPECT_EQ(header.height(), 30);
    EXPECT_EQ(header.mapTo(&dialog, QPoint(0, 0)), QPoint(1, 1)) << "inside the frame's border";
    EXPECT_EQ(content->parentWidget()->objectName(), "VDcontentWidget");
    EXPECT_GT(content->mapTo(&dialog, QPoint(0, 0)).y(), 30);
    EXPECT_EQ(dialog.windowFlags() & Qt::FramelessWindowHint, Qt::FramelessWindowHint);
}

struct SizeRow {
    const char* name;
    bool openGL;
    bool fixedSize;
    QSize size;
    QSize minimum;
    QSize maximum;
};

const SizeRow sizes[] = {
    {"plain", false, false, {400, 335}, {400, 335}, {16777215, 16777215}},
    {"plain and fixed", false, true, {400, 335}, {400, 335}, {400, 335}},
    {"translucent", true, false, {416, 351}, {416, 351}, {16777215, 16777215}},
    {"translucent and fixed", true, true, {400, 351}, {400, 351}, {400, 351}},
};

TEST_F(CVantoraDialogTest, IsSizedForItsContent)
{
    for (const SizeRow& row : sizes) {
        SCOPED_TRACE(row.name);
        hasOpenGL = row.openGL;
        Dialog dialog;
        EXPECT_EQ(dialog.testAttribute(Qt::WA_TranslucentBackground), row.openGL);
        dialog.addContent({400, 300}, row.fixedSize);
        dialog.show();
        EXPECT_EQ(dialog.size(), row.size);
        EXPECT_EQ(dialog.minimumSize(), row.minimum);
        EXPECT_EQ(dialog.maximumSize(), row.maximum);
    }
}

TEST_F(CVantoraDialogTest, IsCentredOnTheScreenOrOnThePreview)
{
    Dialog dialog;
    dialog.addContent({400, 300}, false);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_EQ(dialog.pos(), screen.center() - QPoint(199, 167));

    QWidget preview;
    preview.setObjectName("VantoraPreviewClass");
    preview.setGeometry(600, 400, 101, 51);
    Dialog inside(&preview);
    inside.addContent({401, 300}, false);
    EXPECT_EQ(inside.pos(), QPoint(650 - 200, 425 - 167));

    Dialog renamed(&preview);
    preview.setObjectName("Other");
    renamed.addContent({400, 300}, false);
    EXPECT_EQ(renamed.pos(), screen.center() - QPoint(199, 167));
    EXPECT_EQ(renamed.PreviewHost(), &preview);
}

TEST_F(CVantoraDialogTest, IsMovedByItsHeaderAndResizedByItsBorderUnlessFixed)
{
    for (const bool fixedSize : {false, true}) {
        SCOPED_TRACE(fixedSize ? "fixed" : "not fixed");
        Dialog dialog;
        dialog.addContent({400, 300}, fixedSize);
        dialog.TitleLabel()->setText("Title");
        dialog.show();
        Pointer pointer(dialog);

        dialog.move(100, 100);
        pointer.drag({200, 120}, {210, 125});
        EXPECT_EQ(dialog.pos(), QPoint(110, 105)) << "by the header";
        dialog.move(100, 100);
        pointer.drag({200, 135}, {210, 140});
        EXPECT_EQ(dialog.pos(), QPoint(100, 100)) << "below the header";
        pointer.drag({491, 250}, {549, 250});
        EXPECT_EQ(dialog.width(), fixedSize ? 400 : 450) << "by the border";
        pointer.drag({540, 250}, {400, 250});
        EXPECT_EQ(dialog.width(), fixedSize ? 400 : 450) << "below the minimum";
    }
}

TEST_F(CVantoraDialogTest, HasTheHeaderButtonsInTheOrderInWhichTheyWereAdded)
{
    Dialog dialog;
    dialog.VDaddTopButtons();
    dialog.VDaddCloseButton();
    QLayout* header = dialog.child("VDheaderWidget").layout();
    QStringList names;
    for (int i = 0; i < header->count(); ++i)
        names << header->itemAt(i)->widget()->objectName();
    EXPECT_EQ(names, (QStringList{"VDPrefixLabel", "VDtitleLabel", "VDtoolbarAddToActionListButton",
                                  "VDtoolbarAddToCollectionsButton", "vantoraHeaderCloseBtn"}))
        << names.join(' ').toStdString();
    for (auto* button : dialog.findChildren<CVantoraHeaderButton*>()) {
        EXPECT_EQ(button->focusPolicy(), Qt::NoFocus);
        EXPECT_FALSE(button->accessibleName().isEmpty());
    }
}

TEST_F(CVantoraDialogTest, CallsTheSubclassByMouseAndByKeyboard)
{
    Dialog dialog;
    dialog.addContent({400, 300}, false);
    dialog.VDaddTopButtons();
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog, longestWait));
    QTest::mouseClick(&dialog.child("VDtoolbarAddToActionListButton"), Qt::LeftButton);
    EXPECT_EQ(dialog.listShown, 1);
    QTest::mouseClick(&dialog.child("VDtoolbarAddToCollectionsButton"), Qt::LeftButton);
    EXPECT_EQ(dialog.collectionShown, 1);
    QTest::keyClick(&dialog, Qt::Key_A, Qt::AltModifier);
    QTest::keyClick(&dialog, Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor(
        [&dialog] { return dialog.listShown == 2 && dialog.collectionShown == 2; }, longestWait));
}

TEST_F(CVantoraDialogTest, LeadsTheTabKeyThroughTheContentAndThenTheHeader)
{
    Dialog dialog;
    auto* layout = new QHBoxLayout(dialog.addContent({400, 300}, false));
    for (const char* name : {"first", "second"}) {
        auto* button = new QPushButton(name);
        button->setObjectName(name);
        layout->addWidget(button);
    }
    dialog.VDaddTopButtons();
    dialog.VDaddCloseButton();
    dialog.VDhideAddToActionListButton();
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    dialog.child("first").setFocus();
    QWidget& ring = dialog.child("VDfocusRing");
    EXPECT_FALSE(ring.isVisible());
    EXPECT_EQ(tabOrder(dialog, 5),
              (QStringList{"first", "second", "VDtoolbarAddToCollectionsButton",
                           "vantoraHeaderCloseBtn", "first"}));

    dialog.child("first").setFocus();
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    QWidget& button = dialog.child("VDtoolbarAddToCollectionsButton");
    EXPECT_EQ(dialog.focusWidget(), &button);
    EXPECT_TRUE(ring.isVisible());
    EXPECT_TRUE(ring.geometry().contains(QRect(button.mapTo(&dialog, QPoint()), button.size())));
    QTest::keyClick(&button, Qt::Key_Space);
    QTest::keyClick(&button, Qt::Key_Return);
    EXPECT_EQ(dialog.collectionShown, 2);
    QTest::keyClick(&button, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(dialog.focusWidget(), &dialog.child("second"));
    EXPECT_FALSE(ring.isVisible());
}

TEST_F(CVantoraDialogTest, TakesADoubleClickOnAHeaderButtonForOneClick)
{
    Dialog dialog;
    dialog.addContent({400, 300}, false);
    dialog.VDaddTopButtons();
    dialog.show();
    QWidget& button = dialog.child("VDtoolbarAddToActionListButton");
    QTest::mousePress(&button, Qt::LeftButton);
    QTest::mouseRelease(&button, Qt::LeftButton);
    QMouseEvent second(QEvent::MouseButtonDblClick, QPointF(5, 5), Qt::LeftButton, Qt::LeftButton,
                       {});
    QCoreApplication::sendEvent(&button, &second);
    EXPECT_TRUE(second.isAccepted());
    QTest::mouseRelease(&button, Qt::LeftButton);
    EXPECT_EQ(dialog.listShown, 1);
}

TEST_F(CVantoraDialogTest, HidesTheActionListButtonWhenItIsThere)
{
    Dialog dialog;
    dialog.VDhideAddToActionListButton();
    dialog.VDaddTopButtons();
    EXPECT_FALSE(dialog.child("VDtoolbarAddToActionListButton").isHidden());
    dialog.VDhideAddToActionListButton();
    EXPECT_TRUE(dialog.child("VDtoolbarAddToActionListButton").isHidden());
    EXPECT_FALSE(dialog.child("VDtoolbarAddToCollectionsButton").isHidden());
}

TEST_F(CVantoraDialogTest, IsRejectedByItsCloseButton)
{
    Dialog dialog;
    dialog.addContent({400, 300}, false);
    dialog.VDaddCloseButton();
    OnModal<Dialog> run([](Dialog& shown) {
        QTest::mouseClick(&shown.child("vantoraHeaderCloseBtn"), Qt::LeftButton);
    });
    EXPECT_EQ(dialog.exec(), QDialog::Rejected);
}

TEST_F(CVantoraDialogTest, WritesInBlackOnTheWhiteOfAForm)
{
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(dark);
    Dialog dialog;
    auto* form = new QWidget;
    form->setObjectName("main_widget");
    auto* layout = new QHBoxLayout(form);
    auto* label = new QLabel("text");
    layout->addWidget(label);
    dialog.FitToTexts(form);
    dialog.VDaddMainWidget(form, false);
    dialog.show();
    EXPECT_EQ(label->palette().color(QPalette::WindowText), QColor(Qt::black));
    QApplication::setPalette(before);
}

TEST_F(CVantoraDialogTest, HasLightFieldsAndButtonsOnTheWhiteOfAForm)
{
    const QPalette before = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(49, 54, 59), QColor(35, 38, 41)));
    Dialog dialog;
    auto* form = new QWidget;
    form->setObjectName("main_widget");
    auto* layout = new QHBoxLayout(form);
    QWidget* const parts[] = {new QLineEdit, new QPushButton};
    for (QWidget* part : parts)
        layout->addWidget(part);
    dialog.FitToTexts(form);
    dialog.VDaddMainWidget(form, false);
    dialog.show();
    for (QWidget* part : parts) {
        const QImage image = part->grab().toImage();
        EXPECT_GT(qGray(image.pixel(image.rect().center())), 200);
    }
    QApplication::setPalette(before);
}

TEST_F(CVantoraDialogTest, HasItsTitleBesideThePrefixInBothDirections)
{
    Dialog dialog;
    dialog.addContent({400, 300}, false);
    dialog.TitleLabel()->setText("Title");
    EXPECT_TRUE(dialog.TitleLabel()->alignment() & Qt::AlignLeft);
    dialog.setLayoutDirection(Qt::RightToLeft);
    EXPECT_TRUE(dialog.TitleLabel()->alignment() & Qt::AlignRight);
    EXPECT_TRUE(dialog.TitleLabel()->alignment() & Qt::AlignAbsolute);
    dialog.show();
    EXPECT_LT(dialog.TitleLabel()->geometry().right(),
              dialog.child("VDPrefixLabel").geometry().left());
}

TEST_F(CVantoraDialogTest, ShowsLargeFontsWholeInItsHeader)
{
    const QFont before = QApplication::font();
    Dialog dialog;
    dialog.TitleLabel()->setText("Title");
    QLabel* const label = dialog.TitleLabel();
    dialog.show();
    const int usual = label->fontInfo().pixelSize();
    for (const int points : {20, 40}) {
        QFont large = before;
        large.setPointSize(points);
        QApplication::setFont(large);
        QCoreApplication::processEvents();
        EXPECT_LE(label->fontMetrics().height(), label->height()) << points;
        EXPECT_GE(label->fontInfo().pixelSize(), usual) << points;
    }
    QApplication::setFont(before);
    QCoreApplication::processEvents();
    EXPECT_EQ(label->fontInfo().pixelSize(), usual);
}

} // namespace

#include "CVantoraDialogTest.moc"
