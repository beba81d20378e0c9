#include "VantoraActions/DeletePages/CPrefsDialog.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/CUtils.h"
#include "VantoraApp/dialogs/CMsgBoxDialog.h"
#include "VantoraApp/dialogs/CSaveAsActionlistDialog.h"
#include "VantoraApp/dialogs/CSaveAsCollectionDialog.h"
#include "VantoraApp/environment/ProductTitle.h"
#include "VantoraApp/settings/SettingsFile.h"

#include <QtWidgets/QShortcut>

namespace {

constexpr char pageRangeKey[] = "byPageRangeTextEdit";

/// The host's file for the places of dialogs.
QString GeometryFile()
{
    return CUtils::GetSettingsFolder() + "/VantoraViewerSettings.vsf";
}

void LeaveOutContextHelp(QWidget& dialog)
{
    dialog.setWindowFlags(dialog.windowFlags() & ~Qt::WindowContextHelpButtonHint);
}

} // namespace

CPrefsDialog::CPrefsDialog(QWidget* parent, Qt::WindowFlags /*flags*/)
    : CVantoraDialog(parent, true)
{
    form_.setupUi(this);
    TitleLabel()->setText(windowTitle());
    FitToTexts(form_.main_widget);
    VDaddMainWidget(form_.main_widget, false);
    VDaddTopButtons();
    VDaddCloseButton();
    form_.byPageRangeTextEdit->setFocus();
    ReachBy(tr("Alt+P"), form_.byPageRangeTextEdit);
    ReachBy(tr("Alt+O"), form_.okButton);
    ReachBy(tr("Alt+C"), form_.cancelButton);
    // Return alone begins a line in the range.
    for (const int key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(QKeySequence(Qt::CTRL + key), this), &QShortcut::activated,
                form_.okButton, &QPushButton::click);
    if (!KeepsGeometry())
        return;
    if (const auto settings = SettingsFile::Read(GeometryFile()))
        restoreGeometry(settings->Value(GeometryKey()).value_or(QVariant()).toByteArray());
}

CPrefsDialog::~CPrefsDialog()
{
    if (KeepsGeometry())
        UpdateSettingsFile(GeometryFile(), {{GeometryKey(), saveGeometry()}});
}

bool CPrefsDialog::KeepsGeometry() const
{
    return PreviewHost() != nullptr && PreviewHost()->objectName() == "VantoraPreviewClass";
}

QString CPrefsDialog::GeometryKey() const
{
    return objectName() + "geometry";
}

void CPrefsDialog::SetPrefs(QMap<QString, QVariant>* prefs)
{
    form_.byPageRangeTextEdit->setPlainText(prefs->value(pageRangeKey).toString());
}

bool CPrefsDialog::GetPrefs(QMap<QString, QVariant>* prefs)
{
    if (prefs == nullptr)
        return false;
    prefs->insert(pageRangeKey, form_.byPageRangeTextEdit->toPlainText());
    prefs->insert("ActionName", "Delete Pages");
    return true;
}

void CPrefsDialog::doValidate()
{
    const auto refuse = [this](const QString& message) {
        CMsgBoxDialog::information(ProductTitle(), message, tr("OK"), QString(), QString());
        activateWindow();
        form_.byPageRangeTextEdit->setFocus();
    };
    QString text = form_.byPageRangeTextEdit->toPlainText();
    if (text.isEmpty()) {
        refuse(tr("No page range found. Please enter a page range and try again."));
        return;
    }
    while (!text.isEmpty() && !text.back().isNumber())
        text.chop(1);
    if (text != form_.byPageRangeTextEdit->toPlainText()) {
        form_.byPageRangeTextEdit->setPlainText(text);
        form_.byPageRangeTextEdit->moveCursor(QTextCursor::End);
    }
    if (CActionUtils::ValidatePageRange(text, false))
        accept();
    else
        refuse(tr("The page range is invalid. Please enter a valid page range and try again."));
}

void CPrefsDialog::on_VDShowSaveDialog()
{
    CSaveAsActionlistDialog dialog(this, {});
    LeaveOutContextHelp(dialog);
    QMap<QString, QVariant> prefs;
    GetPrefs(&prefs);
    dialog.LoadPrefsData(&prefs);
    dialog.exec();
    activateWindow(); // or its keys would do nothing until it is clicked
}

void CPrefsDialog::on_VDShowSaveCollectionDialog()
{
    CSaveAsCollectionDialog dialog(this, {});
    LeaveOutContextHelp(dialog);
    QMap<QString, QVariant> prefs;
    GetPrefs(&prefs);
    dialog.LoadPrefsData(&prefs);
    QIcon icon;
    icon.addPixmap(windowIcon().pixmap(QSize(128, 128), QIcon::Selected, QIcon::Off), QIcon::Normal,
                   QIcon::Off);
    dialog.findChild<QToolButton*>("icon_toolButton")->setIcon(icon);
    dialog.exec();
    // A favourite does not change the step, and neither does a settings file.
    reject();
}
