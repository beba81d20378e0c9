#include "VantoraHost/desktop/choosing/ChoosePane.h"

#include "VantoraHost/desktop/choosing/ChoiceRow.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include "ui_ChoosePane.h"

#include <QtWidgets/QStyle>

#include <algorithm>

namespace vantora::desktop {

namespace {

// More remarks are counted, and not listed: thousands are read by nobody.
constexpr std::size_t mostRemarks = 200;

constexpr int rowsOfRemarks = 3;

// The pages below need room, too.
constexpr std::size_t mostRows = 12;

} // namespace

ChoosePane::ChoosePane(Chooser& chooser, const DocumentList& list, QWidget* parent)
    : QWidget(parent), chooser_(chooser), list_(list), form_(std::make_unique<Ui::ChoosePane>())
{
    form_->setupUi(this);
    form_->closeButton->setIcon(style()->standardIcon(QStyle::SP_DockWidgetCloseButton));
    form_->closeButton->setToolTip(form_->closeButton->text());
    form_->remarkView->setMaximumHeight(rowsOfRemarks * (fontMetrics().height() + 6));
    connect(form_->modeCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ChoosePane::followRows);
    connect(form_->addButton, &QPushButton::clicked, this, [this] { addRow(false)->focusKind(); });
    connect(form_->exceptButton, &QPushButton::clicked, this,
            [this] { addRow(true)->focusKind(); });
    connect(form_->stopButton, &QPushButton::clicked, this,
            [this] { chooser_.isBusy() ? chooser_.stop() : chooser_.goOn(); });
    connect(form_->reviewButton, &QPushButton::clicked, this, &ChoosePane::reviewAsked);
    connect(form_->closeButton, &QToolButton::clicked, this, &ChoosePane::closeAsked);
    connect(form_->remarkView, &QListWidget::currentItemChanged, this,
            [this](QListWidgetItem* item) {
                if (item != nullptr) {
                    emit documentAsked(item->data(Qt::UserRole).toULongLong());
                }
            });
    connect(&chooser_, &Chooser::progressed, this, &ChoosePane::showProgress);
    addRow(false);
    showProgress();
}

ChoosePane::~ChoosePane() = default;

void ChoosePane::focusLastRow()
{
    rows_.back()->focusKind();
}

ChoiceRow* ChoosePane::addRow(bool isException)
{
    auto* const row = new ChoiceRow(isException);
    const auto place = isException
                           ? rows_.end()
                           : std::find_if(rows_.begin(), rows_.end(), [](const ChoiceRow* other) {
                                 return other->draft().isException;
                             });
    form_->rowsLayout->insertWidget(static_cast<int>(place - rows_.begin()), row);
    rows_.insert(place, row);
    connect(row, &ChoiceRow::changed, this, &ChoosePane::followRows);
    connect(row, &ChoiceRow::removeAsked, this, [this, row] { removeRow(row); });
    QWidget* before = form_->closeButton;
    for (const ChoiceRow* one : rows_) {
        for (QWidget* stop : one->tabStops()) {
            setTabOrder(before, stop);
            before = stop;
        }
    }
    setTabOrder(before, form_->stopButton);
    followRows();
    return row;
}

void ChoosePane::removeRow(ChoiceRow* row)
{
    rows_.erase(std::find(rows_.begin(), rows_.end(), row));
    row->hide();
    row->deleteLater(); // it is the one that asks
    const bool choosesNothing = std::all_of(
        rows_.begin(), rows_.end(), [](const ChoiceRow* one) { return one->draft().isException; });
    if (choosesNothing) {
        addRow(false);
    } else {
        followRows();
    }
    focusLastRow();
}

void ChoosePane::followRows()
{
    std::vector<ChoiceDraft> drafts;
    for (ChoiceRow* row : rows_) {
        drafts.push_back(row->draft());
        row->setJoint(drafts.back().isException ? tr("but not")
                      : drafts.size() > 1       ? tr("or")
                      : rows_.size() > 1        ? QStringLiteral("")
                                                : QString());
    }
    form_->addButton->setEnabled(rows_.size() < mostRows);
    form_->exceptButton->setEnabled(rows_.size() < mostRows);
    chooser_.choose(ChoiceTexts::of(drafts, form_->modeCombo->currentIndex() == 1));
    showProgress();
}

QString ChoosePane::statusText() const
{
    const bool isWrong = std::any_of(rows_.begin(), rows_.end(), [](const ChoiceRow* row) {
        return !row->draft().fault().isEmpty();
    });
    if (isWrong) {
        return tr("Nothing is looked for until that is right.");
    }
    if (!chooser_.isOn()) {
        return tr("What is found is marked at once, in each document only there.");
    }
    const ChoosingProgress progress = chooser_.progress();
    const QString found =
        tr("%1 in %2", "pages and documents")
            .arg(ChoosePane::tr("%n page(s)", nullptr, asCount(progress.pages)),
                 ChoosePane::tr("%n document(s)", nullptr, asCount(progress.found)));
    if (progress.judged == progress.total && progress.pages == 0) {
        return tr("Nothing is found.");
    }
    if (progress.judged == progress.total) {
        return tr("Found: %1.").arg(found);
    }
    const QString text = chooser_.isStopped() ? tr("Stopped: %1; looked at %2 of %3.")
                                              : tr("Looking: %1; looked at %2 of %3.");
    return text.arg(found, numberText(progress.judged), numberText(progress.total));
}

void ChoosePane::showProgress()
{
    const bool isBusy = chooser_.isBusy();
    const ChoosingProgress progress = chooser_.progress();
    form_->statusLabel->setText(statusText());
    form_->progressBar->setVisible(isBusy);
    form_->progressBar->setMaximum(std::max(1, asCount(progress.total)));
    form_->progressBar->setValue(asCount(progress.judged));
    form_->stopButton->setVisible(isBusy || (chooser_.isOn() && progress.judged < progress.total));
    form_->stopButton->setText(isBusy ? tr("S&top Looking") : tr("Con&tinue"));
    form_->reviewButton->setEnabled(progress.pages > 0);
    showRemarks();
}

void ChoosePane::showRemarks()
{
    const std::vector<ChoosingRemark> remarks = chooser_.remarks();
    const auto failed = static_cast<std::size_t>(
        std::count_if(remarks.begin(), remarks.end(),
                      [](const ChoosingRemark& remark) { return remark.isFailure; }));
    form_->remarkView->setVisible(!remarks.empty());
    form_->remarkLabel->setVisible(failed > 0);
    form_->remarkLabel->setText(
        ChoosePane::tr("%n document(s) can't be judged and keep the marks that they had:", nullptr,
                       asCount(failed)));
    if (static_cast<std::size_t>(form_->remarkView->count()) ==
        std::min(remarks.size(), mostRemarks)) {
        return; // they come one after the other, and none changes
    }
    form_->remarkView->clear();
    for (std::size_t i = 0; i < remarks.size() && i < mostRemarks; ++i) {
        const Document* const document = list_.find(remarks[i].id);
        auto* const item = new QListWidgetItem(
            tr("%1: %2", "a document and a sentence").arg(nameOf(*document), remarks[i].sentence),
            form_->remarkView);
        item->setData(Qt::UserRole, document->id);
        item->setToolTip(item->text());
    }
}

} // namespace vantora::desktop
