#pragma once

#include <QtWidgets/QWidget>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QVBoxLayout;

/// Shows the pickers with their lists laid open, and what the other operations for options dialogs
/// make of what is chosen.
class GalleryWindow : public QWidget {
public:
    GalleryWindow();
    ~GalleryWindow() override;

private:
    QGroupBox* CreateColors();
    QGroupBox* CreateLines();
    QGroupBox* CreateFonts();
    QGroupBox* CreateTextIcon();
    QGroupBox* CreateHelp();

    void ShowColor();
    void ShowDash();
    void ShowText();

    QComboBox* color_;
    QComboBox* colorWithoutNone_;
    QLabel* colorText_;
    QComboBox* lineStyle_;
    QComboBox* underlineStyle_;
    QComboBox* lineWeight_;
    QLabel* dashText_;
    QLineEdit* text_;
    QLabel* textIcon_;
    QLabel* textHeight_;
};
