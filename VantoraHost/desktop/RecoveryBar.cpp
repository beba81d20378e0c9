#include "VantoraHost/desktop/RecoveryBar.h"

#include "VantoraHost/desktop/Workbench.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QLocale>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

namespace vantora::desktop {

RecoveryBar::RecoveryBar(Workbench& workbench, QWidget* parent)
    : QFrame(parent), workbench_(workbench), text_(new QLabel), yes_(new QPushButton),
      no_(new QPushButton)
{
    setFrameShape(QFrame::StyledPanel);
    text_->setObjectName("recoveryLabel");
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    yes_->setObjectName("recoverButton");
    no_->setObjectName("dontRecoverButton");
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(text_, 1);
    layout->addWidget(yes_);
    layout->addWidget(no_);
    connect(yes_, &QPushButton::clicked, this, &RecoveryBar::accept);
    connect(no_, &QPushButton::clicked, this, &RecoveryBar::decline);
    connect(&workbench_.leftBehind, &LeftBehind::found, this, &RecoveryBar::askToBringBack);
    connect(&workbench_, &Workbench::runCutOff, this, [this](const PastRun& run, std::size_t done) {
        run_ = run;
        done_ = done;
        asks_ = Asks::WhetherToGoOn;
        askToGoOn();
    });
    connect(&workbench_, &Workbench::outlookChanged, this, [this] {
        if (asks_ == Asks::WhetherToGoOn) {
            askToGoOn();
        }
    });
    connect(&workbench_.leftBehind, &LeftBehind::taken, this, [this] {
        if (asks_ == Asks::WhetherToBringBack) {
            end(); // nothing was cut off
        }
    });
    connect(&workbench_.runs, &RunController::started, this, [this] {
        if (asks_ == Asks::WhetherToGoOn) {
            end();
        }
    });
    hide();
}

void RecoveryBar::ask(Asks what, const QString& text)
{
    asks_ = what;
    text_->setText(text);
    setAccessibleName(text);
    const bool isNew = isHidden();
    show();
    if (isNew && workbench_.list.rowCount() == 0) {
        yes_->setFocus(Qt::OtherFocusReason);
    }
}

void RecoveryBar::askToBringBack()
{
    const KeptWork& work = workbench_.leftBehind.work();
    QString text =
        RecoveryBar::tr("A window was cut off with %n document(s) in its list. They can be brought "
                        "back, with the pages that go and the steps.",
                        nullptr, asCount(work.documents.size()));
    if (work.isRunning) {
        text += ' ' + tr("A run was going on; whether to go on with it is asked afterwards.");
    }
    yes_->setText(tr("Br&ing Back"));
    yes_->setToolTip(tr("Add them to the list; nothing is run"));
    yes_->setEnabled(true);
    no_->setText(tr("&Discard"));
    no_->setToolTip(tr("Forget that list; no document is touched"));
    ask(Asks::WhetherToBringBack, text);
}

void RecoveryBar::askToGoOn()
{
    const RunOutlook& outlook = workbench_.outlook();
    const QString time = QLocale().toString(run_.begun.toLocalTime(), QLocale::ShortFormat);
    yes_->setText(tr("Go On w&ith It"));
    yes_->setToolTip(tr("Run what is left, with the settings below"));
    yes_->setEnabled(outlook.obstacle.isEmpty() && outlook.plan.documents > 0);
    no_->setText(tr("Not No&w"));
    no_->setToolTip(tr("Leave everything as it is"));
    ask(Asks::WhetherToGoOn,
        tr("The run of %1 was cut off after %2 of %3. %4",
           "a time, documents done, documents of the run, what running the rest would do")
            .arg(time, numberText(done_),
                 RecoveryBar::tr("%n document(s)", nullptr, asCount(run_.documents)),
                 outlookText(outlook)));
}

void RecoveryBar::accept()
{
    if (asks_ == Asks::WhetherToBringBack) {
        yes_->setEnabled(false);
        workbench_.leftBehind.take();
    } else {
        end();
        workbench_.goOn();
    }
}

void RecoveryBar::decline()
{
    const bool wasOffer = asks_ == Asks::WhetherToBringBack;
    if (wasOffer) {
        asks_ = Asks::Nothing;
        hide();
        workbench_.leftBehind.discard();
    } else {
        end();
    }
}

void RecoveryBar::end()
{
    asks_ = Asks::Nothing;
    hide();
    workbench_.leftBehind.next();
}

} // namespace vantora::desktop
