#include "VantoraApp/dialogs/CSaveAsCollectionDialog.h"

#include "VantoraApp/dialogs/NameRefusal.h"
#include "VantoraApp/environment/ProductTitle.h"
#include "VantoraApp/settings/CActionHistoryAPI.h"
#include "VantoraApp/settings/SettingsFile.h"
#include "VantoraApp/settings/StoredName.h"

#include <QtCore/QDir>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFileSystemModel>

namespace {

constexpr int leastHeight = 236;
const QSize iconSize(128, 128);

/// The image file that the user chooses, empty when none.
QString AskForImage(QWidget* parent)
{
    QFileDialog dialog(parent, ProductTitle(), QString(),
                       "Image files (*.bmp;*.jpg;*.gif;*.png;*.tif;*.wmf;*.emf)");
    dialog.setFileMode(QFileDialog::ExistingFile);
    // Qt takes what stands between the semicolons for one pattern, which no file matches, and a
    // dialog of the desktop would do so for good; in Qt's own one the patterns can be put right.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    for (QFileSystemModel* files : dialog.findChildren<QFileSystemModel*>())
        files->setNameFilters({"*.bmp", "*.jpg", "*.gif", "*.png", "*.tif", "*.wmf", "*.emf"});
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace

CSaveAsCollectionDialog::CSaveAsCollectionDialog(QWidget* parent, Qt::WindowFlags /*flags*/)
    : CVantoraDialog(parent, false)
{
    mForm.setupUi(this);
    TitleLabel()->setText(windowTitle());
    FitToTexts(mForm.main_widget);
    VDaddMainWidget(mForm.main_widget, true);
    if (height() <= leastHeight)
        setFixedHeight(leastHeight);
    mForm.collectionNameLineEdit->setFocus();
    ReachBy(tr("Alt+I"), mForm.icon_toolButton);
    ReachBy(tr("Alt+N"), mForm.collectionNameLineEdit);
    ReachBy(tr("Alt+F"), mForm.saveSettingsToFileButton);
    ReachBy(tr("Alt+S"), mForm.saveButton);
    ReachBy(tr("Alt+C"), mForm.cancelButton);
}

void CSaveAsCollectionDialog::LoadPrefsData(QMap<QString, QVariant>* prefs)
{
    mPrefs = prefs;
}

void CSaveAsCollectionDialog::on_UpdateUI()
{
    mForm.saveButton->setEnabled(!mForm.collectionNameLineEdit->text().trimmed().isEmpty());
}

void CSaveAsCollectionDialog::on_Save()
{
    if (!mForm.saveButton->isEnabled() || mPrefs == nullptr)
        return;
    const QString name = mForm.collectionNameLineEdit->text();
    if (!ReasonAgainstFavouriteName(name).isEmpty()) {
        RefuseName(ReasonAgainstFavouriteName(name), mForm.collectionNameLineEdit);
        return;
    }
    mPrefs->insert("CollectionName", name);
    QIcon icon = mForm.icon_toolButton->icon();
    CActionHistoryAPI(parent() == nullptr ? QString() : parent()->objectName())
        .SaveSettingsToHistory(mPrefs, &icon);
    accept();
}

void CSaveAsCollectionDialog::on_CollectionIcon()
{
    const QString file = AskForImage(this);
    if (file.isEmpty())
        return;
    const QPixmap image(file);
    mForm.icon_toolButton->setIcon(
        image.isNull()
            ? QIcon()
            : QIcon(image.scaled(iconSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)));
}

void CSaveAsCollectionDialog::on_SaveToFile()
{
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Save Tool settings to file"), QDir::homePath(),
                                     tr("Tool Settings Files (*.tsf)"));
    if (!path.isEmpty() && mPrefs != nullptr)
        WriteNamedSettingsFile(path, {{"ToolSettings", *mPrefs}});
    reject();
}
