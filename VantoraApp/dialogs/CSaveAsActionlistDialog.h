#pragma once

#include "VantoraApp/binding/Shared.h"
#include "VantoraApp/dialogs/CVantoraDialog.h"

#include "ui_saveAsActionlistDialog.h"

#include <QtCore/QMap>
#include <QtCore/QVariant>

/// "Add To Action": stores an action's options as a step of an action list.
class VANTORA_SHARED CSaveAsActionlistDialog : public CVantoraDialog {
    Q_OBJECT

public:
    CSaveAsActionlistDialog(QWidget* parent, Qt::WindowFlags flags);

    /// The options to store, before the dialog is shown. They stay the caller's, and are changed:
    /// see CActionUtils::SaveAsCustomActionList.
    void LoadPrefsData(QMap<QString, QVariant>* prefs);

signals:
    /// A step was added to an existing list of this name.
    void actionListChanged(QString name);

public slots:
    void on_Save();
    void on_UpdateUI();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void PressSave();

    Ui_saveAsActionlistDialog form_;
    QMap<QString, QVariant>* prefs_ = nullptr;
    bool keyIsHandled_ = false; ///< the key that is being handled has saved already
};
