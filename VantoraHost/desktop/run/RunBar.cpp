#include "VantoraHost/desktop/run/RunBar.h"

#include "VantoraHost/core/Figures.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include "ui_RunBar.h"

#include <QtCore/QDir>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QAction>
#include <QtWidgets/QFileDialog>

namespace vantora::desktop {

RunBar::RunBar(QAction& runAction, QWidget* parent)
    : QWidget(parent), form_(std::make_unique<Ui::RunBar>())
{
    form_->setupUi(this);
    QFont strong = form_->runButton->font();
    strong.setBold(true);
    form_->runButton->setFont(strong);
    connect(form_->runButton, &QPushButton::clicked, &runAction, &QAction::trigger);
    const auto follow = [this, &runAction] {
        form_->runButton->setText(runAction.text());
        form_->runButton->setIcon(runAction.icon());
        form_->runButton->setEnabled(runAction.isEnabled());
        form_->runButton->setToolTip(runAction.toolTip());
    };
    connect(&runAction, &QAction::changed, this, follow);
    follow();
    setSettings(RunSettings());
    connect(form_->placeCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this] {
        keepName();
        updateFields();
        emit settingsChanged();
    });
    connect(form_->browseButton, &QPushButton::clicked, this, &RunBar::browse);
    connect(form_->folderEdit, &QLineEdit::textChanged, this, &RunBar::settingsChanged);
    connect(form_->nameEdit, &QLineEdit::textChanged, this, &RunBar::settingsChanged);
    connect(form_->backupCheck, &QCheckBox::toggled, this, &RunBar::settingsChanged);
    connect(form_->signedCheck, &QCheckBox::toggled, this, &RunBar::settingsChanged);
    connect(form_->verifyCheck, &QCheckBox::toggled, this, &RunBar::settingsChanged);
    connect(form_->takenCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &RunBar::settingsChanged);
}

RunBar::~RunBar() = default;

void RunBar::keepName()
{
    if (shown_ == OutputPlace::Folder) {
        names_.folderName = form_->nameEdit->text();
    } else if (shown_ == OutputPlace::Beside) {
        names_.besideName = form_->nameEdit->text();
    }
}

RunSettings RunBar::settings() const
{
    RunSettings settings = names_;
    settings.place = shown_;
    if (shown_ == OutputPlace::Folder) {
        settings.folderName = form_->nameEdit->text();
    } else if (shown_ == OutputPlace::Beside) {
        settings.besideName = form_->nameEdit->text();
    }
    const QString folder = form_->folderEdit->text().trimmed();
    settings.folder = folder.isEmpty() ? folder : QDir(folder).absolutePath();
    settings.keepsBackup = form_->backupCheck->isChecked();
    settings.keepsSigned = form_->signedCheck->isChecked();
    settings.verifies = form_->verifyCheck->isChecked();
    settings.taken = static_cast<TakenName>(form_->takenCombo->currentIndex());
    return settings;
}

void RunBar::setSettings(const RunSettings& settings)
{
    const QSignalBlocker quiet(form_->placeCombo); // which would keep the name of the other place
    names_ = settings;
    shown_ = settings.place;
    form_->placeCombo->setCurrentIndex(static_cast<int>(settings.place));
    form_->folderEdit->setText(settings.folder);
    form_->backupCheck->setChecked(settings.keepsBackup);
    form_->signedCheck->setChecked(settings.keepsSigned);
    form_->verifyCheck->setChecked(settings.verifies);
    form_->takenCombo->setCurrentIndex(static_cast<int>(settings.taken));
    updateFields();
}

void RunBar::updateFields()
{
    shown_ = static_cast<OutputPlace>(form_->placeCombo->currentIndex());
    const bool toFolder = shown_ == OutputPlace::Folder;
    const bool inPlace = shown_ == OutputPlace::InPlace;
    form_->folderEdit->setVisible(toFolder);
    form_->browseButton->setVisible(toFolder);
    form_->nameLabel->setVisible(!inPlace);
    form_->nameEdit->setVisible(!inPlace);
    form_->takenCombo->setVisible(!inPlace);
    form_->backupCheck->setVisible(inPlace);
    form_->nameEdit->setText(toFolder ? names_.folderName : names_.besideName);
}

void RunBar::browse()
{
    auto* dialog = new QFileDialog(this, tr("Folder for the Results"), form_->folderEdit->text());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    connect(dialog, &QFileDialog::fileSelected, form_->folderEdit, &QLineEdit::setText);
    dialog->show();
}

void RunBar::showOutlook(const RunOutlook& outlook)
{
    form_->planLabel->setText(outlookText(outlook));
}

void RunBar::setRunning(bool running)
{
    form_->stack->setCurrentWidget(running ? form_->progressPage : form_->planPage);
    for (QWidget* field :
         {static_cast<QWidget*>(form_->placeCombo), static_cast<QWidget*>(form_->folderEdit),
          static_cast<QWidget*>(form_->browseButton), static_cast<QWidget*>(form_->nameEdit),
          static_cast<QWidget*>(form_->backupCheck), static_cast<QWidget*>(form_->takenCombo),
          static_cast<QWidget*>(form_->signedCheck), static_cast<QWidget*>(form_->verifyCheck)}) {
        field->setEnabled(!running);
    }
}

void RunBar::showProgress(const RunProgress& progress)
{
    form_->progressBar->setMaximum(std::max(1, static_cast<int>(progress.total)));
    form_->progressBar->setValue(static_cast<int>(progress.finished));
    QStringList parts = {tr("%1 of %2", "documents done")
                             .arg(numberText(progress.finished),
                                  RunBar::tr("%n document(s)", nullptr, asCount(progress.total)))};
    if (progress.failed > 0) {
        parts << RunBar::tr("%n failed", nullptr, asCount(progress.failed));
    }
    if (progress.rate > 0) {
        parts << tr("%1 a second")
                     .arg(figureText(
                         rateText(progress.finished,
                                  static_cast<double>(progress.finished) / progress.rate)))
              << tr("%1 left").arg(figureText(durationText(progress.left)));
    }
    form_->progressLabel->setText(parts.join(QStringLiteral(" · ")));
}

} // namespace vantora::desktop
