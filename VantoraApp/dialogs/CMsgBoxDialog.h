#pragma once

#include "VantoraApp/binding/Shared.h"

#include "ui_vantoraMsgBoxDlg.h"

#include <QtWidgets/QDialog>

/// The message box of the shared dialogs, used through its static calls only. Each runs a box
/// until a button is pressed and returns its index: 0, 1 or 2; leaving the box otherwise, by
/// Escape for example, counts as the first button. An empty text leaves the second or third
/// button out. The title "MessageBox Title" stands for the title that the box has anyway.
class VANTORA_SHARED CMsgBoxDialog : public QDialog {
    Q_OBJECT

public:
    static int information(QString title, QString message, QString button1, QString button2,
                           QString button3);
    static int question(QString title, QString message, QString button1, QString button2,
                        QString button3);
    static int warning(QString title, QString message, QString button1, QString button2,
                       QString button3);
    static int error(QString title, QString message, QString button1, QString button2,
                     QString button3);

    /// The same for a type from 0 (information) to 3 (error); any other shows no icon.
    static int execDialog(int type, QString title, QString message, QString button1,
                          QString button2, QString button3);

    /// The parent of every box and the window that it covers or is centred on: the host's, or null
    /// for the screen.
    static QWidget* mGlobalParent;

public slots:
    void on_btn1();
    void on_btn2();
    void on_btn3();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    explicit CMsgBoxDialog(QWidget* parent);

    void CoverGlobalParent();
    void ShowIcon(int type);
    void ShowButtons(const QString& button1, const QString& button2, const QString& button3);
    void GrowToContent();
    void StayInFrontOf(const QWidget* window);
    void Finish(int result);

    Ui_vantoraMsgBoxDlg form_;
    int result_ = 0;
};
