#include "VantoraApp/dialogs/CVantoraDialog.h"

#include "VantoraApp/CUtils.h"
#include "VantoraApp/dialogs/CVantoraDialogStyle.h"
#include "VantoraApp/dialogs/CVantoraHeaderButton.h"
#include "VantoraApp/dialogs/FocusRing.h"
#include "VantoraApp/dialogs/FormFitting.h"
#include "VantoraApp/dialogs/HostSetting.h"
#include "VantoraApp/environment/ProductTitle.h"

#include <QtCore/QEvent>
#include <QtGui/QFontInfo>
#include <QtGui/QFontMetrics>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QFrame>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QShortcut>
#include <QtWidgets/QVBoxLayout>

namespace {

constexpr int headerHeight = 30;
constexpr QMargins headerMargins(10, 3, 5, 2);
constexpr int shadowWidth = 8;
constexpr int borderWidth = 9;

QString Resource(const char* name)
{
    return QLatin1String(":/Vantora/Resources/") + QLatin1String(name);
}

} // namespace

CVantoraDialog::CVantoraDialog(QWidget* parent, bool flag)
    : QDialog(parent, Qt::FramelessWindowHint), mFlag(flag)
{
    const HostSetting setting = FindHostSetting(parent);
    mPreviewHost = setting.previewHost;
    if (CUtils::CheckOpenGLSupport()) {
        setAttribute(Qt::WA_TranslucentBackground);
        mExtraHeight = 51;
        mExtraWidth = 16;
    }

    resize(730, 599);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    setMinimumSize(100, 100);
    setWindowIcon(QIcon(Resource("Icons/App_icon_256x256.png")));
    setProperty("iconSize", QSize(24, 24));

    mGridLayout = new QGridLayout(this);
    mGridLayout->setObjectName("VDgridLayout");
    mGridLayout->setSpacing(0);
    mGridLayout->setContentsMargins(0, 0, 0, 0);

    CreateShadowsAbove();
    CreateMainFrame(setting.insideMainWindow);
    CreateHeader();
    if (setting.insideMainWindow || mPreviewHost != nullptr)
        mPrefixLabel->hide();
    else
        mPrefixLabel->setText(ProductTitle() + " -");
    CreateContent();
    CreateShadowsBelow();

    mFramelessHandler.activateOn(this);
    mFramelessHandler.setWidgetResizable(true);
    mFramelessHandler.setMoveBarHeight(headerHeight);
    mFramelessHandler.setBorderWidth(borderWidth);
    new FocusRing(this);
}

QFrame* CVantoraDialog::CreateFrame(const char* name, const char* styleSheet, int row, int column)
{
    auto* frame = new QFrame(this);
    frame->setObjectName(name);
    frame->setStyleSheet(styleSheet);
    frame->setFrameShape(QFrame::StyledPanel);
    frame->setFrameShadow(QFrame::Raised);
    mGridLayout->addWidget(frame, row, column, 1, 1);
    return frame;
}

QFrame* CVantoraDialog::CreateShadow(const char* name, const char* styleSheet, int row, int column)
{
    QFrame* shadow = CreateFrame(name, styleSheet, row, column);
    if (column != 1)
        shadow->setFixedWidth(shadowWidth);
    if (row != 1)
        shadow->setFixedHeight(shadowWidth);
    // Only the window system's own shadow is shown; the frames stay for the hosts' style sheets.
    shadow->hide();
    return shadow;
}

void CVantoraDialog::CreateShadowsAbove()
{
    namespace Style = VantoraDialogStyle;
    mShadowTopLeft = CreateShadow("VDshadowTopLeft", Style::shadowTopLeft, 0, 0);
    mShadowTop = CreateShadow("VDshadowTop", Style::shadowTop, 0, 1);
    mShadowTopRight = CreateShadow("VDshadowTopRight", Style::shadowTopRight, 0, 2);
    mShadowLeft = CreateShadow("VDshadowLeft", Style::shadowLeft, 1, 0);
}

void CVantoraDialog::CreateShadowsBelow()
{
    namespace Style = VantoraDialogStyle;
    mShadowRight = CreateShadow("VDshadowRight", Style::shadowRight, 1, 2);
    mShadowBtmLeft = CreateShadow("VDshadowBtmLeft", Style::shadowBtmLeft, 2, 0);
    mShadowBtm = CreateShadow("VDshadowBtm", Style::shadowBtm, 2, 1);
    mShadowBtmRight = CreateShadow("VDshadowBtmRight", Style::shadowBtmRight, 2, 2);
}

void CVantoraDialog::CreateMainFrame(bool insideMainWindow)
{
    mMainFrame = CreateFrame("VDmainFrame", VantoraDialogStyle::mainFrame, 1, 1);
    mMainFrame->setMinimumSize(40, 40);
    if (!insideMainWindow) {
        QString styleSheet = mMainFrame->styleSheet();
        for (const auto& [inside, outside] : VantoraDialogStyle::coloursOutsideMainWindow)
            styleSheet.replace(inside, outside);
        mMainFrame->setStyleSheet(styleSheet);
    }
    mMainVerticalLayout = new QVBoxLayout(mMainFrame);
    mMainVerticalLayout->setObjectName("VDMainVerticalLayout");
    mMainVerticalLayout->setSpacing(2);
    mMainVerticalLayout->setContentsMargins(0, 0, 0, 0);
}

void CVantoraDialog::CreateHeader()
{
    mHeaderWidget = new QWidget(mMainFrame);
    mHeaderWidget->setObjectName("VDheaderWidget");
    mHeaderWidget->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    mHeaderWidget->setFixedHeight(headerHeight);
    mHeaderWidget->setStyleSheet(VantoraDialogStyle::header);
    mHeaderHorizontalLayout = new QHBoxLayout(mHeaderWidget);
    mHeaderHorizontalLayout->setObjectName("VDHeaderHorizontalLayout");
    mHeaderHorizontalLayout->setSpacing(6);
    mHeaderHorizontalLayout->setContentsMargins(headerMargins);

    mPrefixLabel = new QLabel(mHeaderWidget);
    mPrefixLabel->setObjectName("VDPrefixLabel");
    mPrefixLabel->setStyleSheet("color:white;");
    mHeaderHorizontalLayout->addWidget(mPrefixLabel);

    mTitleLabel = new QLabel(mHeaderWidget);
    mTitleLabel->setObjectName("VDtitleLabel");
    mTitleLabel->setStyleSheet("color: white;");
    mHeaderHorizontalLayout->addWidget(mTitleLabel);
    mHeaderHorizontalLayout->setStretch(1, 1);

    mMainVerticalLayout->addWidget(mHeaderWidget);
    FitHeaderFont();
    AlignTitle();
}

void CVantoraDialog::CreateContent()
{
    mContentWidget = new QWidget(mMainFrame);
    mContentWidget->setObjectName("VDcontentWidget");
    mContentLayout = new QVBoxLayout(mContentWidget);
    mContentLayout->setContentsMargins(1, 1, 1, 1);
    mMainVerticalLayout->addWidget(mContentWidget);
    mMainVerticalLayout->setStretch(1, 1);
}

// The header keeps its height whatever the font is, so large fonts are shown smaller in it.
void CVantoraDialog::FitHeaderFont()
{
    const int room = headerHeight - headerMargins.top() - headerMargins.bottom();
    QFont fitting;
    const int height = fontMetrics().height();
    if (height > room) {
        fitting = font();
        fitting.setPixelSize(fontInfo().pixelSize() * room / height);
    }
    mPrefixLabel->setFont(fitting);
    mTitleLabel->setFont(fitting);
}

// The title stands beside the prefix, whatever direction its own text has.
void CVantoraDialog::AlignTitle()
{
    const bool fromRight = layoutDirection() == Qt::RightToLeft;
    mTitleLabel->setAlignment((fromRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                              Qt::AlignVCenter);
}

void CVantoraDialog::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (mTitleLabel == nullptr)
        return;
    if (event->type() == QEvent::FontChange)
        FitHeaderFont();
    else if (event->type() == QEvent::LayoutDirectionChange)
        AlignTitle();
}

QRect CVantoraDialog::ReferenceArea() const
{
    if (mPreviewHost != nullptr && mPreviewHost->objectName() == "VantoraPreviewClass")
        return mPreviewHost->geometry();
    return QGuiApplication::primaryScreen()->availableGeometry();
}

void CVantoraDialog::VDaddMainWidget(QWidget* widget, bool fixedSize)
{
    const QSize content = widget->size();
    setGeometry(QRect(frameGeometry().topLeft(),
                      QSize(content.width() + mExtraWidth, content.height() + mExtraHeight)));
    move(ReferenceArea().center() - QRect(QPoint(0, 0), size()).center());

    mFixedHeight = content.height() + mExtraHeight;
    setMinimumHeight(mFixedHeight);
    if (fixedSize) {
        setFixedWidth(content.width());
        setFixedHeight(mFixedHeight);
    } else {
        setMinimumWidth(content.width() + mExtraWidth);
    }
    updateGeometry();
    mContentLayout->addWidget(widget);
    mContentLayout->setContentsMargins(0, 0, 0, 0);
    mFramelessHandler.setWidgetResizable(!fixedSize);
}

void CVantoraDialog::FitToTexts(QWidget* widget)
{
    widget->setParent(mContentWidget); // where the style sheets reach it
    const QMargins frame = mMainFrame->contentsMargins();
    FitFormToTexts(widget, frame.left() + frame.right());
}

CVantoraHeaderButton* CVantoraDialog::CreateHeaderButton(const char* name, const char* image,
                                                         const char* disabledImage, int iconSize)
{
    auto* button = new CVantoraHeaderButton(mHeaderWidget);
    button->setObjectName(name);
    button->setFixedSize(24, 24);
    button->setFocusPolicy(Qt::NoFocus);
    QIcon icon;
    icon.addFile(Resource(image), QSize(), QIcon::Normal, QIcon::Off);
    icon.addFile(Resource(disabledImage), QSize(), QIcon::Disabled, QIcon::On);
    button->setIcon(icon);
    button->setIconSize(QSize(iconSize, iconSize));
    button->setAutoRaise(true);
    button->setStyleSheet(VantoraDialogStyle::headerButton);
    mHeaderHorizontalLayout->addWidget(button);
    return button;
}

void CVantoraDialog::VDaddCloseButton()
{
    mCloseButton =
        CreateHeaderButton("vantoraHeaderCloseBtn", "WinClose.png", "WinClose_disabled.png", 14);
    mCloseButton->setAccessibleName(tr("Close"));
    connect(mCloseButton, &QToolButton::clicked, this, &QDialog::reject);
}

void CVantoraDialog::VDaddTopButtons()
{
    mAddToActionListButton =
        CreateHeaderButton("VDtoolbarAddToActionListButton", "PaneActionList_extra.png",
                           "PaneActionList_disabled.png", 20);
    mAddToActionListButton->setToolTip(tr("Add to/Create new Action"));
    mAddToActionListButton->setAccessibleName(mAddToActionListButton->toolTip());
    mAddToActionListButton->setShortcut(tr("Alt+A"));
    connect(mAddToActionListButton, SIGNAL(clicked()), this, SLOT(on_VDShowSaveDialog()));

    mAddToCollectionsButton = CreateHeaderButton("VDtoolbarAddToCollectionsButton",
                                                 "Collection.png", "Collection_disabled.png", 20);
    mAddToCollectionsButton->setToolTip(tr("Add to Favorites/Save settings"));
    mAddToCollectionsButton->setAccessibleName(mAddToCollectionsButton->toolTip());
    mAddToCollectionsButton->setShortcut(tr("Alt+F"));
    connect(mAddToCollectionsButton, SIGNAL(clicked()), this,
            SLOT(on_VDShowSaveCollectionDialog()));
}

void CVantoraDialog::VDhideAddToActionListButton()
{
    if (mAddToActionListButton != nullptr)
        mAddToActionListButton->hide();
}

void CVantoraDialog::ReachBy(const QString& keys, QWidget* widget)
{
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        button->setShortcut(QKeySequence(keys));
        return;
    }
    const auto* shortcut = new QShortcut(QKeySequence(keys), this);
    connect(shortcut, &QShortcut::activated, widget,
            [widget] { widget->setFocus(Qt::ShortcutFocusReason); });
}

QList<QWidget*> CVantoraDialog::HeaderStops() const
{
    QList<QWidget*> stops;
    for (QWidget* button : mHeaderWidget->findChildren<CVantoraHeaderButton*>()) {
        if (button->isVisible() && button->isEnabled())
            stops << button;
    }
    return stops;
}

QList<QWidget*> CVantoraDialog::ContentStops() const
{
    QList<QWidget*> stops;
    for (QWidget* next = nextInFocusChain(); next != this; next = next->nextInFocusChain()) {
        if ((next->focusPolicy() & Qt::TabFocus) != 0 && next->focusProxy() == nullptr &&
            next->isVisible() && next->isEnabled() && next->window() == this)
            stops << next;
    }
    return stops;
}

bool CVantoraDialog::focusNextPrevChild(bool next)
{
    const QList<QWidget*> header = HeaderStops();
    const QList<QWidget*> stops = ContentStops() + header;
    const int from = stops.indexOf(focusWidget());
    if (header.isEmpty() || from < 0)
        return QDialog::focusNextPrevChild(next);
    const int to = (from + (next ? 1 : -1) + stops.size()) % stops.size();
    if (!header.contains(stops.at(from)) && !header.contains(stops.at(to)))
        return QDialog::focusNextPrevChild(next);
    stops.at(to)->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

// Tool buttons take only the space bar.
void CVantoraDialog::keyPressEvent(QKeyEvent* event)
{
    auto* button = qobject_cast<CVantoraHeaderButton*>(focusWidget());
    if (button != nullptr && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        button->click();
    else
        QDialog::keyPressEvent(event);
}

int CVantoraDialog::exec()
{
    return QDialog::exec();
}
