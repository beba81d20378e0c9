#pragma once

#include "VantoraApp/binding/Shared.h"
#include "VantoraApp/dialogs/CVantoraDialog.h"

#include "ui_saveAsCollectionDialog.h"

#include <QtCore/QMap>
#include <QtCore/QVariant>

/// "Add To Favorites": stores an action's options as a favourite with an icon, or in a
/// tool-settings file anywhere. Favourites are those of the parent, an options dialog, by its
/// object name. The caller sets the icon of "icon_toolButton".
class VANTORA_SHARED CSaveAsCollectionDialog : public CVantoraDialog {
    Q_OBJECT

public:
    CSaveAsCollectionDialog(QWidget* parent, Qt::WindowFlags flags);

    /// The options to store, before the dialog is shown. They stay the caller's; a favourite's name
    /// is added to them as "CollectionName".
    void LoadPrefsData(QMap<QString, QVariant>* prefs);

public slots:
    void on_Save();
    void on_CollectionIcon();
    void on_UpdateUI();
    void on_SaveToFile();

private:
    Ui_saveAsCollectionDialog form_;
    QMap<QString, QVariant>* prefs_ = nullptr;
};
