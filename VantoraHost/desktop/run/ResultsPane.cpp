#include "VantoraHost/desktop/run/ResultsPane.h"

#include "VantoraHost/core/Figures.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include "ui_ResultsPane.h"

#include <QtCore/QFileInfo>
#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>
#include <QtWidgets/QStyle>

namespace vantora::desktop {

ResultsPane::ResultsPane(ResultList& list, QWidget* parent)
    : QWidget(parent), list_(list), form_(std::make_unique<Ui::ResultsPane>())
{
    form_->setupUi(this);
    sorted_.setSourceModel(&list_);
    sorted_.setSortRole(ResultList::SortRole);
    form_->view->setModel(&sorted_);
    form_->view->sortByColumn(ResultList::Outcome, Qt::AscendingOrder);
    form_->closeButton->setIcon(style()->standardIcon(QStyle::SP_DockWidgetCloseButton));
    form_->closeButton->setToolTip(form_->closeButton->text());
    connect(form_->view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ResultsPane::updateButtons);
    connect(&list_, &QAbstractItemModel::rowsInserted, this, &ResultsPane::updateButtons);
    connect(&list_, &QAbstractItemModel::modelReset, this, &ResultsPane::updateButtons);
    connect(form_->openButton, &QPushButton::clicked, this,
            [this] { QDesktopServices::openUrl(QUrl::fromLocalFile(selectedOutput())); });
    connect(form_->folderButton, &QPushButton::clicked, this, [this] {
        QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(selectedOutput()).absolutePath()));
    });
    connect(form_->retryButton, &QPushButton::clicked, this, &ResultsPane::retryAsked);
    connect(form_->salvageButton, &QPushButton::clicked, this, &ResultsPane::salvageAsked);
    connect(form_->restButton, &QPushButton::clicked, this, &ResultsPane::restAsked);
    connect(form_->commandButton, &QPushButton::clicked, this, &ResultsPane::commandAsked);
    connect(form_->reportButton, &QPushButton::clicked, this, &ResultsPane::reportAsked);
    connect(form_->closeButton, &QToolButton::clicked, this, &ResultsPane::closeAsked);
    connect(form_->undoButton, &QPushButton::clicked, this, &ResultsPane::undoAsked);
    connect(form_->undoNowButton, &QPushButton::clicked, this, [this] {
        form_->undoNowButton->hide();
        form_->keepButton->hide();
        emit undoConfirmed();
    });
    connect(form_->keepButton, &QPushButton::clicked, this, &ResultsPane::endAsking);
    form_->restButton->hide();
    form_->undoButton->hide();
    form_->undoRow->hide();
    updateButtons();
}

ResultsPane::~ResultsPane() = default;

QString ResultsPane::selectedOutput() const
{
    const QModelIndex current = form_->view->currentIndex();
    return current.isValid() ? current.data(ResultList::OutputRole).toString() : QString();
}

void ResultsPane::focusList()
{
    form_->view->setFocus(Qt::OtherFocusReason);
}

void ResultsPane::updateButtons()
{
    const bool hasOutput = !selectedOutput().isEmpty();
    form_->openButton->setEnabled(hasOutput);
    form_->folderButton->setEnabled(hasOutput);
    form_->retryButton->setVisible(!list_.failed().empty());
    form_->salvageButton->setVisible(!list_.damaged().empty());
}

void ResultsPane::showSummary(const RunSummary& summary, std::size_t total, bool cancelled,
                              const QString& error)
{
    form_->summaryLabel->setText(summaryText(summary, total, cancelled, error));
    form_->restButton->setVisible(cancelled);
    form_->commandButton->show();
    updateButtons();
    fitColumns();
}

void ResultsPane::showTitle(const QString& title)
{
    form_->summaryLabel->setText(title);
    form_->restButton->hide();
    form_->commandButton->hide(); // that of another run
    updateButtons();
    fitColumns();
}

void ResultsPane::setUndoable(bool undoable)
{
    form_->undoButton->setVisible(undoable);
    form_->undoRow->hide();
}

void ResultsPane::askUndo(const UndoOutlook& outlook)
{
    form_->undoLabel->setText(outlookText(outlook));
    form_->undoNowButton->setVisible(outlook.hasWork());
    form_->keepButton->setText(outlook.hasWork() ? tr("&Leave It") : tr("C&lose"));
    form_->keepButton->show();
    form_->undoRow->show();
    (outlook.hasWork() ? form_->undoNowButton : form_->keepButton)->setFocus();
}

void ResultsPane::showUndoing(std::size_t done, std::size_t total)
{
    showUndoNote(tr("Undoing: %1 of %2", "documents").arg(numberText(done), numberText(total)));
}

void ResultsPane::showUndoNote(const QString& text)
{
    form_->undoLabel->setText(text);
    form_->undoNowButton->hide();
    form_->keepButton->hide();
    form_->undoRow->show();
    fitColumns(); // what became of each takes more room
}

void ResultsPane::endAsking()
{
    form_->undoRow->hide();
    form_->undoButton->setFocus();
}

void ResultsPane::fitColumns()
{
    const int room = 2 * form_->view->fontMetrics().averageCharWidth();
    for (int column = 0; column < ResultList::Columns; ++column) {
        form_->view->resizeColumnToContents(column);
        const int wanted = form_->view->columnWidth(column) + room;
        form_->view->setColumnWidth(column, std::min(wanted, std::max(width() / 3, room)));
    }
}

QString summaryText(const RunSummary& summary, std::size_t total, bool cancelled,
                    const QString& error)
{
    const std::size_t done = summary.finished() - summary.failed();
    QStringList parts = {
        done == total ? ResultsPane::tr("%n document(s) done", nullptr, asCount(done))
                      : ResultsPane::tr("%1 of %2", "documents done")
                            .arg(numberText(done),
                                 ResultsPane::tr("%n document(s) done", nullptr, asCount(total)))};
    if (summary.failed() > 0) {
        parts << ResultsPane::tr("%n failed", nullptr, asCount(summary.failed()));
    }
    if (summary.removedPages() > 0) {
        parts << ResultsPane::tr("%n page(s) removed", nullptr, asCount(summary.removedPages()));
    }
    if (summary.sizeAfter() > 0) {
        parts << ResultsPane::tr("%1 before, %2 after", "sizes")
                     .arg(sizeShown(summary.sizeBefore()), sizeShown(summary.sizeAfter()));
    }
    QString text = parts.join(QStringLiteral(" · "));
    if (cancelled) {
        text = ResultsPane::tr("Stopped: %1. Nothing is half-written.").arg(text);
    }
    return error.isEmpty() ? text
                           : ResultsPane::tr("%1. The run could not go on: %2").arg(text, error);
}

} // namespace vantora::desktop
