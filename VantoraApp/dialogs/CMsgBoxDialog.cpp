#include "VantoraApp/dialogs/CMsgBoxDialog.h"

#include "VantoraApp/CUtils.h"
#include "VantoraApp/dialogs/FocusRing.h"
#include "VantoraApp/dialogs/HostSetting.h"
#include "VantoraApp/environment/ProductTitle.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>

#include <iterator>

QWidget* CMsgBoxDialog::mGlobalParent = nullptr;

namespace {

const char* const icons[] = {
    ":/Vantora/Resources/msgBox_info.png",
    ":/Vantora/Resources/PaneHelp_selected.png",
    ":/Vantora/Resources/msgBox_warning.png",
    ":/Vantora/Resources/msgBox_error.png",
};

const char* const buttonStyle =
    "QToolButton {background-color: transparent;font-size:12pt;color: rgb(83,83,93);border: none;}"
    "QToolButton:disabled{background-color: transparent;color: silver;border: none;}"
    "QToolButton:checked{background-color: qlineargradient(spread:repeat, x1:0, y1:0, x2:1, y2:0, "
    "stop:0 rgba(246, 246, 246), stop:1 rgba(246, 246, 246));color: white;border: none;}"
    "QToolButton:hover{background-color: qlineargradient(spread:repeat, x1:0, y1:0, x2:1, y2:0, "
    "stop:0 rgba(246, 246, 246), stop:1 rgba(246, 246, 246));color: rgb(83,83,93);border: none;}"
    "QToolButton:pressed {background-color: qlineargradient(spread:repeat, x1:0, y1:0, x2:1, y2:0, "
    "stop:0 rgba(246, 246, 246), stop:1 rgba(246, 246, 246));color: rgb(83,83,93);border: none;}";

const char* const outsideMainWindowStyle =
    "padding: 3px;\n\nbackground-color: rgb(40,36,36);\ncolor: white;\n";

QRect BoxAround(QPoint centre)
{
    return {centre - QPoint(220, 90), centre + QPoint(219, 89)};
}

QRect AvailableArea()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

} // namespace

CMsgBoxDialog::CMsgBoxDialog(QWidget* parent) : QDialog(parent, Qt::FramelessWindowHint)
{
    const bool translucent = CUtils::CheckOpenGLSupport();
    if (translucent)
        setAttribute(Qt::WA_TranslucentBackground);
    form_.setupUi(this);

    // The message stands on white whatever the desktop's colours are.
    QPalette palette = form_.messageLabel->palette();
    palette.setColor(QPalette::WindowText, Qt::black);
    form_.messageLabel->setPalette(palette);

    if (mGlobalParent == nullptr) {
        const QSize screen = AvailableArea().size();
        setGeometry(BoxAround(QPoint(screen.width() / 2, screen.height() / 2)));
    } else if (translucent) {
        CoverGlobalParent();
    } else {
        const QRect covered = mGlobalParent->geometry();
        setGeometry(
            BoxAround(covered.topLeft() + QPoint(covered.width() / 2, covered.height() / 2)));
    }

    for (QToolButton* button : {form_.btn1, form_.btn2, form_.btn3})
        button->setStyleSheet(buttonStyle);
    new FocusRing(this);
}

void CMsgBoxDialog::CoverGlobalParent()
{
    if (!FindHostSetting(mGlobalParent).insideMainWindow) {
        form_.titleLabel->setStyleSheet(outsideMainWindowStyle);
        form_.btnBox_widget->setStyleSheet(outsideMainWindowStyle);
    }
    form_.titleLabel->setText(ProductTitle());
    setGeometry(mGlobalParent->geometry().adjusted(8, 8, -8, -8));
}

void CMsgBoxDialog::ShowIcon(int type)
{
    if (type < 0 || type >= static_cast<int>(std::size(icons))) {
        form_.iconLabel->hide();
        return;
    }
    // Through an icon, which knows the image of double density where the screen has it.
    const QIcon icon(icons[type]);
    const QList<QSize> sizes = icon.availableSizes();
    form_.iconLabel->setPixmap(sizes.isEmpty() ? QPixmap() : icon.pixmap(sizes.first()));
}

void CMsgBoxDialog::ShowButtons(const QString& button1, const QString& button2,
                                const QString& button3)
{
    form_.btn1->setText(button1);
    form_.btn2->setText(button2);
    form_.btn2->setHidden(button2.isEmpty());
    form_.separator1->setHidden(button2.isEmpty());
    form_.btn3->setText(button3);
    form_.btn3->setHidden(button3.isEmpty());
    form_.separator2->setHidden(button3.isEmpty());
}

// A text that has no room makes the panel higher, and the box with it, around the same centre. The
// screen is the limit. The title's height is meant for 96 dots per inch.
void CMsgBoxDialog::GrowToContent()
{
    form_.titleLabel->ensurePolished();
    if (form_.titleLabel->fontMetrics().height() > form_.titleLabel->maximumHeight())
        form_.titleLabel->setMaximumHeight(form_.titleLabel->sizeHint().height());
    QLayout* panel = form_.mainDlg_frame->layout();
    const QSize least = form_.mainDlg_frame->minimumSize();
    const QSize most = AvailableArea().size() - QSize(2, 2);
    const int buttonsWidth = form_.btnBox_widget->layout()->totalSizeHint().width() +
                             2 * form_.mainDlg_frame->frameWidth();
    const int width = qBound(least.width(), buttonsWidth, most.width());
    const int height = qMin(panel->totalHeightForWidth(width), most.height());
    if (width == least.width() && height <= least.height())
        return;
    form_.mainDlg_frame->setMinimumSize(width, qMax(height, least.height()));
    const QSize grown = size().expandedTo(layout()->totalMinimumSize());
    QRect box(QPoint(0, 0), grown);
    box.moveCenter(geometry().center());
    setGeometry(box);
}

// A box without a parent would go behind the dialog that it keeps from being used.
void CMsgBoxDialog::StayInFrontOf(const QWidget* window)
{
    if (parentWidget() != nullptr || window == nullptr)
        return;
    winId(); // makes the window
    windowHandle()->setTransientParent(window->windowHandle());
}

void CMsgBoxDialog::Finish(int result)
{
    result_ = result;
    accept();
}

void CMsgBoxDialog::on_btn1()
{
    Finish(0);
}

void CMsgBoxDialog::on_btn2()
{
    Finish(1);
}

void CMsgBoxDialog::on_btn3()
{
    Finish(2);
}

// Tool buttons take only the space bar; Return presses the one with the focus, or else the first.
void CMsgBoxDialog::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QDialog::keyPressEvent(event);
        return;
    }
    auto* focused = qobject_cast<QToolButton*>(focusWidget());
    (focused != nullptr ? focused : form_.btn1)->click();
}

int CMsgBoxDialog::information(QString title, QString message, QString button1, QString button2,
                               QString button3)
{
    return execDialog(0, title, message, button1, button2, button3);
}

int CMsgBoxDialog::question(QString title, QString message, QString button1, QString button2,
                            QString button3)
{
    return execDialog(1, title, message, button1, button2, button3);
}

int CMsgBoxDialog::warning(QString title, QString message, QString button1, QString button2,
                           QString button3)
{
    return execDialog(2, title, message, button1, button2, button3);
}

int CMsgBoxDialog::error(QString title, QString message, QString button1, QString button2,
                         QString button3)
{
    return execDialog(3, title, message, button1, button2, button3);
}

int CMsgBoxDialog::execDialog(int type, QString title, QString message, QString button1,
                              QString button2, QString button3)
{
    CMsgBoxDialog box(mGlobalParent);
    box.ShowIcon(type);
    box.ShowButtons(button1, button2, button3);
    if (title != QLatin1String("MessageBox Title"))
        box.form_.titleLabel->setText(title);
    box.form_.messageLabel->setText(message);
    box.setAccessibleName(box.form_.titleLabel->text());
    box.setAccessibleDescription(message);
    box.GrowToContent();
    box.StayInFrontOf(QApplication::activeModalWidget());
    box.setFocus(Qt::OtherFocusReason);
    box.exec();
    return box.result_;
}
