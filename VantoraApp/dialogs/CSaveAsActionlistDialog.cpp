#include "VantoraApp/dialogs/CSaveAsActionlistDialog.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/dialogs/NameRefusal.h"
#include "VantoraApp/settings/StoredName.h"

#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>

CSaveAsActionlistDialog::CSaveAsActionlistDialog(QWidget* parent, Qt::WindowFlags /*flags*/)
    : CVantoraDialog(parent, false)
{
    mForm.setupUi(this);
    TitleLabel()->setText(windowTitle());
    FitToTexts(mForm.main_widget);
    // The button ends where the border of the group does, which a style sheet sets in.
    mForm.gridLayout_2->setColumnMinimumWidth(2, mForm.cancelButton->minimumWidth() + 4);
    VDaddMainWidget(mForm.main_widget, true);

    while (mForm.categoryComboBox->count() > 0)
        mForm.categoryComboBox->removeItem(0);
    mForm.categoryComboBox->addItems(CActionUtils::GetActionListCategories());
    mForm.actionListNameLineEdit->setFocus();
    ReachBy(tr("Alt+W"), mForm.newActionListRadioButton);
    ReachBy(tr("Alt+E"), mForm.addToActionListRadioButton);
    ReachBy(tr("Alt+N"), mForm.actionListNameLineEdit);
    ReachBy(tr("Alt+T"), mForm.categoryComboBox);
    ReachBy(tr("Alt+S"), mForm.saveButton);
    ReachBy(tr("Alt+C"), mForm.cancelButton);
    connect(mForm.actionListNameLineEdit, &QLineEdit::returnPressed, this,
            &CSaveAsActionlistDialog::PressSave);
}

void CSaveAsActionlistDialog::LoadPrefsData(QMap<QString, QVariant>* prefs)
{
    mPrefs = prefs;
}

void CSaveAsActionlistDialog::on_UpdateUI()
{
    mForm.saveButton->setEnabled(!mForm.actionListNameLineEdit->text().trimmed().isEmpty());
}

void CSaveAsActionlistDialog::on_Save()
{
    if (!mForm.saveButton->isEnabled() || mKeyIsHandled || mPrefs == nullptr)
        return;
    const QString name = mForm.actionListNameLineEdit->text();
    if (!ReasonAgainstActionListName(name).isEmpty()) {
        RefuseName(ReasonAgainstActionListName(name), mForm.actionListNameLineEdit);
        return;
    }
    mPrefs->insert("ActionListName", name);
    mPrefs->insert("ActionListCategory", mForm.categoryComboBox->currentText());
    mPrefs->insert("ActionListOverwrite", mForm.newActionListRadioButton->isChecked());
    CActionUtils::SaveAsCustomActionList(mPrefs);
    if (mForm.addToActionListRadioButton->isChecked())
        emit actionListChanged(name);
    accept();
}

// Return in the name field. The key then goes on to the dialog, or not: by then, or when it has
// been dealt with, the next one counts again.
void CSaveAsActionlistDialog::PressSave()
{
    emit mForm.saveButton->clicked();
    mKeyIsHandled = true;
    QTimer::singleShot(0, this, [this] { mKeyIsHandled = false; });
}

void CSaveAsActionlistDialog::keyPressEvent(QKeyEvent* event)
{
    const bool saves = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (saves) {
        on_Save();
        mKeyIsHandled = true;
    }
    CVantoraDialog::keyPressEvent(event);
    mKeyIsHandled = false;
}
