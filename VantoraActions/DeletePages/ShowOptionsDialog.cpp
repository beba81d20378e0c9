#include "VantoraActions/DeletePages/CPrefsDialog.h"
#include "VantoraActions/OptionsDialog.h"

#include <QtGui/QIcon>

namespace {

/// The icon of an action's icon string.
QIcon IconOf(const QString& names)
{
    const auto file = [&names](int section) {
        return ":/Vantora/Resources/Tools/" + names.section('#', section, section);
    };
    QIcon icon;
    icon.addFile(file(1), QSize(), QIcon::Selected, QIcon::Off);
    icon.addFile(file(1), QSize(), QIcon::Active, QIcon::Off);
    icon.addFile(file(2), QSize(), QIcon::Disabled, QIcon::Off);
    icon.addFile(file(0), QSize(), QIcon::Normal, QIcon::Off);
    return icon;
}

} // namespace

int ShowOptionsDialog(QWidget* parent, DialogLoadStruct* load, const QString& icons)
{
    PreferencesMap* const prefs = load->pPrefs;
    CPrefsDialog dialog(parent, {});
    dialog.setWindowFlags(dialog.windowFlags() & ~Qt::WindowContextHelpButtonHint);
    dialog.setWindowIcon(IconOf(icons));
    if (load->bHideAddToActionListButton != 0)
        dialog.VDhideAddToActionListButton();
    if (!prefs->isEmpty())
        dialog.SetPrefs(prefs);
    if (dialog.exec() != QDialog::Accepted)
        return 0;
    dialog.GetPrefs(prefs);
    return 1;
}
