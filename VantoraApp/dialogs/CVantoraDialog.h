#pragma once

#include "VantoraApp/binding/Shared.h"
#include "VantoraApp/dialogs/CFramelessHandler.h"

#include <QtWidgets/QDialog>

class CVantoraHeaderButton;
class QFrame;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QVBoxLayout;

/// The frame of every options and save dialog: a window that draws its own border and header, with
/// a place for the widget of the subclass's form. How it looks depends on whether its parent
/// belongs to the host's main window, to the host's preview, or to neither.
///
/// A subclass sets up its form on the dialog, copies its window title into the title label, and
/// calls VDaddMainWidget and then the operations for the buttons that it wants.
class VANTORA_SHARED CVantoraDialog : public QDialog {
    Q_OBJECT

public:
    /// The parent decides the look, and owns the dialog as usual. The flag is only kept.
    CVantoraDialog(QWidget* parent, bool flag);

    /// Sizes the dialog for `widget` at its current size, centres it on the screen or on the
    /// preview it is shown in, and takes the widget over. With `fixedSize` it can't be resized.
    void VDaddMainWidget(QWidget* widget, bool fixedSize);

    /// Adds the button that rejects the dialog at the end of the header.
    void VDaddCloseButton();

    /// Adds the buttons "add to an action list" and "add to favourites" at the end of the header.
    /// They call the subclass's slots on_VDShowSaveDialog() and on_VDShowSaveCollectionDialog().
    void VDaddTopButtons();

    /// Hides the button "add to an action list", if it was added.
    void VDhideAddToActionListButton();

public slots:
    int exec() override;

protected:
    void changeEvent(QEvent* event) override;

    /// The Tab key leads through the content and then through the header's buttons, which take no
    /// focus from the mouse.
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;

    /// The host's preview widget that the dialog is shown in, or null.
    QWidget* PreviewHost() const { return previewHost_; }
    QLabel* TitleLabel() const { return titleLabel_; }

    /// Takes the widget of a form over and fits it to its texts: makes it larger where they need
    /// more room than the form gives them, as with large fonts, and writes them in black, since the
    /// form is white. To be called before VDaddMainWidget.
    void FitToTexts(QWidget* widget);

    /// Lets keys such as Alt+S press a button or, if it is none, lead to the widget.
    void ReachBy(const QString& keys, QWidget* widget);

private:
    QFrame* CreateFrame(const char* name, const char* styleSheet, int row, int column);
    QFrame* CreateShadow(const char* name, const char* styleSheet, int row, int column);
    void CreateShadowsAbove();
    void CreateShadowsBelow();
    void CreateMainFrame(bool insideMainWindow);
    void CreateHeader();
    void CreateContent();
    CVantoraHeaderButton* CreateHeaderButton(const char* name, const char* image,
                                             const char* disabledImage, int iconSize);
    void FitHeaderFont();
    void AlignTitle();
    QRect ReferenceArea() const;
    QList<QWidget*> HeaderStops() const;
    QList<QWidget*> ContentStops() const;

    CFramelessHandler framelessHandler_;
    bool flag_;
    CVantoraHeaderButton* closeButton_ = nullptr;
    CVantoraHeaderButton* addToActionListButton_ = nullptr;
    CVantoraHeaderButton* addToCollectionsButton_ = nullptr;
    QGridLayout* gridLayout_ = nullptr;
    QFrame* shadowTopLeft_ = nullptr;
    QFrame* shadowTop_ = nullptr;
    QFrame* shadowTopRight_ = nullptr;
    QFrame* shadowLeft_ = nullptr;
    QFrame* shadowRight_ = nullptr;
    QFrame* shadowBtmLeft_ = nullptr;
    QFrame* shadowBtm_ = nullptr;
    QFrame* shadowBtmRight_ = nullptr;
    QFrame* mainFrame_ = nullptr;
    QVBoxLayout* mainVerticalLayout_ = nullptr;
    QWidget* headerWidget_ = nullptr;
    QHBoxLayout* headerHorizontalLayout_ = nullptr;
    QLabel* prefixLabel_ = nullptr;
    QLabel* titleLabel_ = nullptr;
    QWidget* contentWidget_ = nullptr;
    QVBoxLayout* contentLayout_ = nullptr;
    QWidget* previewHost_ = nullptr;
    int fixedHeight_ = 0;
    int extraHeight_ = 35;
    int extraWidth_ = 0;
};
