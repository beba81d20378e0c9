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
    form_.setupUi(this);
    TitleLabel()->setText(windowTitle());
    FitToTexts(form_.main_widget);
    VDaddMainWidget(form_.main_widget, true);
    if (height() <= leastHeight)
        setFixedHeight(leastHeight);
    form_.collectionNameLineEdit->setFocus();
    ReachBy(tr("Alt+I"), form_.icon_toolButton);
    ReachBy(tr("Alt+N"), form_.collectionNameLineEdit);
    ReachBy(tr("Alt+F"), form_.saveSettingsToFileButton);
    ReachBy(tr("Alt+S"), form_.saveButton);
    ReachBy(tr("Alt+C"), form_.cancelButton);
}

void CSaveAsCollectionDialog::LoadPrefsData(QMap<QString, QVariant>* prefs)
{
    prefs_ = prefs;
}

void CSaveAsCollectionDialog::on_UpdateUI()
{
    form_.saveButton->setEnabled(!form_.collectionNameLineEdit->text().trimmed().isEmpty());
}

void CSaveAsCollectionDialog::on_Save()
{
    if (!form_.saveButton->isEnabled() || prefs_ == nullptr)
        return;
    const QString name = form_.collectionNameLineEdit->text();
    if (!ReasonAgainstFavouriteName(name).isEmpty()) {
        RefuseName(ReasonAgainstFavouriteName(name), form_.collectionNameLineEdit);
        return;
    }
    prefs_->insert("CollectionName", name);
    QIcon icon = form_.icon_toolButton->icon();
    CActionHistoryAPI(parent() == nullptr ? QString() : parent()->objectName())
        .SaveSettingsToHistory(prefs_, &icon);
    accept();
}

void CSaveAsCollectionDialog::on_CollectionIcon()
{
    const QString file = AskForImage(this);
    if (file.isEmpty())
        return;
    const QPixmap image(file);
    form_.icon_toolButton->setIcon(
        image.isNull()
            ? QIcon()
            : QIcon(image.scaled(iconSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)));
}

void CSaveAsCollectionDialog::on_SaveToFile()
{
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Save Tool settings to file"), QDir::homePath(),
                                     tr("Tool Settings Files (*.tsf)"));
    if (!path.isEmpty() && prefs_ != nullptr)
        WriteNamedSettingsFile(path, {{"ToolSettings", *prefs_}});
    reject();
}
