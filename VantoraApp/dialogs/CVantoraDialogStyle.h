#pragma once

// The style sheets of CVantoraDialog.
namespace VantoraDialogStyle {

inline constexpr char shadowTopLeft[] =
    "QFrame#VDshadowTopLeft {\nbackground-image: "
    "url(:/Vantora/Resources/DialogShadow-TopLeft.png);\nbackground-repeat: "
    "no-repeat;\nbackground-position: bottom right;\nborder: 0px transparent;\n}";

inline constexpr char shadowTop[] =
    "QFrame#VDshadowTop {\nbackground-image: "
    "url(:/Vantora/Resources/DialogShadow-Top.png);\nbackground-repeat: repeat-x;\nborder: 0px "
    "transparent;\n\n}";

inline constexpr char shadowTopRight[] =
    "QFrame#VDshadowTopRight {\nbackground-image: "
    "url(:/Vantora/Resources/DialogShadow-TopRight.png);\nbackground-repeat: "
    "no-repeat;\nbackground-position: bottom left;\nborder: 0px transparent;\n}";

inline constexpr char shadowLeft[] =
    "QFrame#VDshadowLeft {\nbackground-image: "
    "url(:/Vantora/Resources/DialogShadow-Left.png);\nbackground-repeat: repeat-y;\nborder: 0px "
    "transparent;\n\n}";

inline constexpr char shadowRight[] =
    "QFrame#VDshadowRight {\nbackground-image: "
    "url(:/Vantora/Resources/DialogShadow-Right.png);\nbackground-repeat: repeat-y;\nborder: 0px "
    "transparent;\n\n}";

inline constexpr char shadowBtmLeft[] =
    "QFrame#VDshadowBtmLeft {\nbackground-image: "
    "url(:/Vantora/Resources/DialogShadow-BtmLeft.png);\nbackground-repeat: "
    "no-repeat;\nbackground-position: top right;\nborder: 0px transparent;\n}";

inline constexpr char shadowBtm[] =
    "QFrame#VDshadowBtm {\nbackground-image: "
    "url(:/Vantora/Resources/DialogShadow-Btm.png);\nbackground-repeat: repeat-x;\nborder: 0px "
    "transparent;\n\n}";

inline constexpr char shadowBtmRight[] =
    "QFrame#VDshadowBtmRight {\nbackground-image: "
    "url(:/Vantora/Resources/DialogShadow-BtmRight.png);\nbackground-repeat: "
    "no-repeat;\nbackground-position: top left;\nborder: 0px transparent;\n}";

inline constexpr char mainFrame[] =
    "QWidget#main_widget {background-color: rgb(255,255,255);color: rgb(0, 0, 0);}"
    "QFrame#VDmainFrame {background: rgb(147, 147 ,147);border: 1px solid rgb(50,50,170);}"
    "QGroupBox {border: 1px solid rgb(190,190,190);margin: 4px;margin-top: 6px;padding-top: 5px;}"
    "QGroupBox::title {padding-left: 2px;padding-right: 2px;left: 10px;top: -5 px;}"
    "QLineEdit::disabled {background-color: rgb(235,235,235);}"
    "QWidget#button_widget {color: white;background-color:qlineargradient(spread:repeat, x1:0, "
    "y1:0, x2:0, y2:1, stop:0 rgba(70,90,160), stop:1 rgba(40,60,90));border-top-left-radius: "
    "6px;border-bottom-left-radius: 6px;border-top-right-radius: 6px;border-bottom-right-radius: "
    "6px;}";

inline constexpr char header[] =
    "QFrame#VDheaderFrame {\nbackground-image: "
    "url(:/Vantora/Resources/VantoraHeader.png);\nbackground-repeat: no-repeat;\n}";

inline constexpr char headerButton[] =
    "QToolButton {background-color: transparent;color: white;background-image: "
    "url(none.png);border: none;}"
    "QToolButton QWidget {background-color: black;}"
    "QToolButton:disabled{background-color: transparent;color: silver;background-image: "
    "url(none.png);border: none;}"
    "QToolButton:checked{background-color: qlineargradient(spread:repeat, x1:0, y1:0, x2:1, y2:0, "
    "stop:0 rgba(210, 210, 210), stop:1 rgba(210, 210, 210));color: white;background-image: "
    "url(none.png);border: none;}"
    "QToolButton:hover{background-color: qlineargradient(spread:repeat, x1:0, y1:0, x2:1, y2:0, "
    "stop:0 rgba(210, 210, 210), stop:1 rgba(210, 210, 210));color: white;background-image: "
    "url(none.png);border: none;}"
    "QToolButton:pressed {background-color: qlineargradient(spread:repeat, x1:0, y1:0, x2:1, "
    "y2:0, stop:0 rgba(210, 210, 210), stop:1 rgba(210, 210, 210));color: white;background-image: "
    "url(none.png);border: none;}"
    "QToolTip {background-color: white;color: black;background-image: url(none.png);border: "
    "none;}";

/// The colours outside the main window: each left text becomes the right one, in this order.
inline constexpr const char* coloursOutsideMainWindow[][2] = {
    {"background: rgb(0,0,31);", "background: rgb(40,36,36);"},
    {"rgb(50,50,170);", "rgb(140,130,130);"},
    {"rgba(70,90,160)", "rgba(140,130,130)"},
    {"rgba(40,60,90)", "rgba(40,36,36)"},
};

} // namespace VantoraDialogStyle
