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
    : QDialog(parent, Qt::FramelessWindowHint), flag_(flag)
{
    const HostSetting setting = FindHostSetting(parent);
    previewHost_ = setting.previewHost;
    if (CUtils::CheckOpenGLSupport()) {
        setAttribute(Qt::WA_TranslucentBackground);
        extraHeight_ = 51;
        extraWidth_ = 16;
    }

    resize(730, 599);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    setMinimumSize(100, 100);
    setWindowIcon(QIcon(Resource("Icons/App_icon_256x256.png")));
    setProperty("iconSize", QSize(24, 24));

    gridLayout_ = new QGridLayout(this);
    gridLayout_->setObjectName("VDgridLayout");
    gridLayout_->setSpacing(0);
    gridLayout_->setContentsMargins(0, 0, 0, 0);

    CreateShadowsAbove();
    CreateMainFrame(setting.insideMainWindow);
    CreateHeader();
    if (setting.insideMainWindow || previewHost_ != nullptr)
        prefixLabel_->hide();
    else
        prefixLabel_->setText(ProductTitle() + " -");
    CreateContent();
    CreateShadowsBelow();

    framelessHandler_.activateOn(this);
    framelessHandler_.setWidgetResizable(true);
    framelessHandler_.setMoveBarHeight(headerHeight);
    framelessHandler_.setBorderWidth(borderWidth);
    new FocusRing(this);
}

QFrame* CVantoraDialog::CreateFrame(const char* name, const char* styleSheet, int row, int column)
{
    auto* frame = new QFrame(this);
    frame->setObjectName(name);
    frame->setStyleSheet(styleSheet);
    frame->setFrameShape(QFrame::StyledPanel);
    frame->setFrameShadow(QFrame::Raised);
    gridLayout_->addWidget(frame, row, column, 1, 1);
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
    shadowTopLeft_ = CreateShadow("VDshadowTopLeft", Style::shadowTopLeft, 0, 0);
    shadowTop_ = CreateShadow("VDshadowTop", Style::shadowTop, 0, 1);
    shadowTopRight_ = CreateShadow("VDshadowTopRight", Style::shadowTopRight, 0, 2);
    shadowLeft_ = CreateShadow("VDshadowLeft", Style::shadowLeft, 1, 0);
}

void CVantoraDialog::CreateShadowsBelow()
{
    namespace Style = VantoraDialogStyle;
    shadowRight_ = CreateShadow("VDshadowRight", Style::shadowRight, 1, 2);
    shadowBtmLeft_ = CreateShadow("VDshadowBtmLeft", Style::shadowBtmLeft, 2, 0);
    shadowBtm_ = CreateShadow("VDshadowBtm", Style::shadowBtm, 2, 1);
    shadowBtmRight_ = CreateShadow("VDshadowBtmRight", Style::shadowBtmRight, 2, 2);
}

void CVantoraDialog::CreateMainFrame(bool insideMainWindow)
{
    mainFrame_ = CreateFrame("VDmainFrame", VantoraDialogStyle::mainFrame, 1, 1);
    mainFrame_->setMinimumSize(40, 40);
    if (!insideMainWindow) {
        QString styleSheet = mainFrame_->styleSheet();
        for (const auto& [inside, outside] : VantoraDialogStyle::coloursOutsideMainWindow)
            styleSheet.replace(inside, outside);
        mainFrame_->setStyleSheet(styleSheet);
    }
    mainVerticalLayout_ = new QVBoxLayout(mainFrame_);
    mainVerticalLayout_->setObjectName("VDMainVerticalLayout");
    mainVerticalLayout_->setSpacing(2);
    mainVerticalLayout_->setContentsMargins(0, 0, 0, 0);
}

void CVantoraDialog::CreateHeader()
{
    headerWidget_ = new QWidget(mainFrame_);
    headerWidget_->setObjectName("VDheaderWidget");
    headerWidget_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    headerWidget_->setFixedHeight(headerHeight);
    headerWidget_->setStyleSheet(VantoraDialogStyle::header);
    headerHorizontalLayout_ = new QHBoxLayout(headerWidget_);
    headerHorizontalLayout_->setObjectName("VDHeaderHorizontalLayout");
    headerHorizontalLayout_->setSpacing(6);
    headerHorizontalLayout_->setContentsMargins(headerMargins);

    prefixLabel_ = new QLabel(headerWidget_);
    prefixLabel_->setObjectName("VDPrefixLabel");
    prefixLabel_->setStyleSheet("color:white;");
    headerHorizontalLayout_->addWidget(prefixLabel_);

    titleLabel_ = new QLabel(headerWidget_);
    titleLabel_->setObjectName("VDtitleLabel");
    titleLabel_->setStyleSheet("color: white;");
    headerHorizontalLayout_->addWidget(titleLabel_);
    headerHorizontalLayout_->setStretch(1, 1);

    mainVerticalLayout_->addWidget(headerWidget_);
    FitHeaderFont();
    AlignTitle();
}

void CVantoraDialog::CreateContent()
{
    contentWidget_ = new QWidget(mainFrame_);
    contentWidget_->setObjectName("VDcontentWidget");
    contentLayout_ = new QVBoxLayout(contentWidget_);
    contentLayout_->setContentsMargins(1, 1, 1, 1);
    mainVerticalLayout_->addWidget(contentWidget_);
    mainVerticalLayout_->setStretch(1, 1);
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
    prefixLabel_->setFont(fitting);
    titleLabel_->setFont(fitting);
}

// The title stands beside the prefix, whatever direction its own text has.
void CVantoraDialog::AlignTitle()
{
    const bool fromRight = layoutDirection() == Qt::RightToLeft;
    titleLabel_->setAlignment((fromRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                              Qt::AlignVCenter);
}

void CVantoraDialog::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (titleLabel_ == nullptr)
        return;
    if (event->type() == QEvent::FontChange)
        FitHeaderFont();
    else if (event->type() == QEvent::LayoutDirectionChange)
        AlignTitle();
}

QRect CVantoraDialog::ReferenceArea() const
{
    if (previewHost_ != nullptr && previewHost_->objectName() == "VantoraPreviewClass")
        return previewHost_->geometry();
    return QGuiApplication::primaryScreen()->availableGeometry();
}

void CVantoraDialog::VDaddMainWidget(QWidget* widget, bool fixedSize)
{
    const QSize content = widget->size();
    setGeometry(QRect(frameGeometry().topLeft(),
                      QSize(content.width() + extraWidth_, content.height() + extraHeight_)));
    move(ReferenceArea().center() - QRect(QPoint(0, 0), size()).center());

    fixedHeight_ = content.height() + extraHeight_;
    setMinimumHeight(fixedHeight_);
    if (fixedSize) {
        setFixedWidth(content.width());
        setFixedHeight(fixedHeight_);
    } else {
        setMinimumWidth(content.width() + extraWidth_);
    }
    updateGeometry();
    contentLayout_->addWidget(widget);
    contentLayout_->setContentsMargins(0, 0, 0, 0);
    framelessHandler_.setWidgetResizable(!fixedSize);
}

void CVantoraDialog::FitToTexts(QWidget* widget)
{
    widget->setParent(contentWidget_); // where the style sheets reach it
    const QMargins frame = mainFrame_->contentsMargins();
    FitFormToTexts(widget, frame.left() + frame.right());
}

CVantoraHeaderButton* CVantoraDialog::CreateHeaderButton(const char* name, const char* image,
                                                         const char* disabledImage, int iconSize)
{
    auto* button = new CVantoraHeaderButton(headerWidget_);
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
    headerHorizontalLayout_->addWidget(button);
    return button;
}

void CVantoraDialog::VDaddCloseButton()
{
    closeButton_ =
        CreateHeaderButton("vantoraHeaderCloseBtn", "WinClose.png", "WinClose_disabled.png", 14);
    closeButton_->setAccessibleName(tr("Close"));
    connect(closeButton_, &QToolButton::clicked, this, &QDialog::reject);
}

void CVantoraDialog::VDaddTopButtons()
{
    addToActionListButton_ =
        CreateHeaderButton("VDtoolbarAddToActionListButton", "PaneActionList_extra.png",
                           "PaneActionList_disabled.png", 20);
    addToActionListButton_->setToolTip(tr("Add to/Create new Action"));
    addToActionListButton_->setAccessibleName(addToActionListButton_->toolTip());
    addToActionListButton_->setShortcut(tr("Alt+A"));
    connect(addToActionListButton_, SIGNAL(clicked()), this, SLOT(on_VDShowSaveDialog()));

    addToCollectionsButton_ = CreateHeaderButton("VDtoolbarAddToCollectionsButton",
                                                 "Collection.png", "Collection_disabled.png", 20);
    addToCollectionsButton_->setToolTip(tr("Add to Favorites/Save settings"));
    addToCollectionsButton_->setAccessibleName(addToCollectionsButton_->toolTip());
    addToCollectionsButton_->setShortcut(tr("Alt+F"));
    connect(addToCollectionsButton_, SIGNAL(clicked()), this,
            SLOT(on_VDShowSaveCollectionDialog()));
}

void CVantoraDialog::VDhideAddToActionListButton()
{
    if (addToActionListButton_ != nullptr)
        addToActionListButton_->hide();
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
    for (QWidget* button : headerWidget_->findChildren<CVantoraHeaderButton*>()) {
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
