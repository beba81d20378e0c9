#pragma once

#include "VantoraApp/dialogs/CVantoraDialog.h"

#include "ui_DeletePagesPrefsDialog.h"

#include <QtCore/QMap>
#include <QtCore/QVariant>

/// The options of "Delete Pages": a page range, which is checked before the dialog is accepted.
/// Inside the host's preview the dialog comes back where and as large as it was.
class CPrefsDialog : public CVantoraDialog {
    Q_OBJECT

public:
    CPrefsDialog(QWidget* parent, Qt::WindowFlags flags);
    ~CPrefsDialog() override;

    /// Shows the options of the map.
    void SetPrefs(QMap<QString, QVariant>* prefs);

    /// Puts the options, as they are typed, into the map. Returns false for a null map.
    bool GetPrefs(QMap<QString, QVariant>* prefs);

public slots:
    /// Accepts the dialog if the page range is valid, once what follows its last digit is taken
    /// off; says what is wrong otherwise.
    void doValidate();
    void on_VDShowSaveDialog();
    void on_VDShowSaveCollectionDialog();

private:
    bool KeepsGeometry() const;
    QString GeometryKey() const;

    Ui_DeletePagesPrefsDialog form_;
};
