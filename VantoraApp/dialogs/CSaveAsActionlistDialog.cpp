#include "VantoraApp/dialogs/CSaveAsActionlistDialog.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/dialogs/NameRefusal.h"
#include "VantoraApp/settings/StoredName.h"

#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>

CSaveAsActionlistDialog::CSaveAsActionlistDialog(QWidget* parent, Qt::WindowFlags /*flags*/)
    : CVantoraDialog(parent, false)
{
    form_.setupUi(this);
    TitleLabel()->setText(windowTitle());
    FitToTexts(form_.main_widget);
    // The button ends where the border of the group does, which a style sheet sets in.
    form_.gridLayout_2->setColumnMinimumWidth(2, form_.cancelButton->minimumWidth() + 4);
    VDaddMainWidget(form_.main_widget, true);

    while (form_.categoryComboBox->count() > 0)
        form_.categoryComboBox->removeItem(0);
    form_.categoryComboBox->addItems(CActionUtils::GetActionListCategories());
    form_.actionListNameLineEdit->setFocus();
    ReachBy(tr("Alt+W"), form_.newActionListRadioButton);
    ReachBy(tr("Alt+E"), form_.addToActionListRadioButton);
    ReachBy(tr("Alt+N"), form_.actionListNameLineEdit);
    ReachBy(tr("Alt+T"), form_.categoryComboBox);
    ReachBy(tr("Alt+S"), form_.saveButton);
    ReachBy(tr("Alt+C"), form_.cancelButton);
    connect(form_.actionListNameLineEdit, &QLineEdit::returnPressed, this,
            &CSaveAsActionlistDialog::PressSave);
}

void CSaveAsActionlistDialog::LoadPrefsData(QMap<QString, QVariant>* prefs)
{
    prefs_ = prefs;
}

void CSaveAsActionlistDialog::on_UpdateUI()
{
    form_.saveButton->setEnabled(!form_.actionListNameLineEdit->text().trimmed().isEmpty());
}

void CSaveAsActionlistDialog::on_Save()
{
    if (!form_.saveButton->isEnabled() || keyIsHandled_ || prefs_ == nullptr)
        return;
    const QString name = form_.actionListNameLineEdit->text();
    if (!ReasonAgainstActionListName(name).isEmpty()) {
        RefuseName(ReasonAgainstActionListName(name), form_.actionListNameLineEdit);
        return;
    }
    prefs_->insert("ActionListName", name);
    prefs_->insert("ActionListCategory", form_.categoryComboBox->currentText());
    prefs_->insert("ActionListOverwrite", form_.newActionListRadioButton->isChecked());
    CActionUtils::SaveAsCustomActionList(prefs_);
    if (form_.addToActionListRadioButton->isChecked())
        emit actionListChanged(name);
    accept();
}

// Return in the name field. The key then goes on to the dialog, or not: by then, or when it has
// been dealt with, the next one counts again.
void CSaveAsActionlistDialog::PressSave()
{
    emit form_.saveButton->clicked();
    keyIsHandled_ = true;
    QTimer::singleShot(0, this, [this] { keyIsHandled_ = false; });
}

void CSaveAsActionlistDialog::keyPressEvent(QKeyEvent* event)
{
    const bool saves = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (saves) {
        on_Save();
        keyIsHandled_ = true;
    }
    CVantoraDialog::keyPressEvent(event);
    keyIsHandled_ = false;
}
