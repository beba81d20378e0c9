#pragma once

#include "VantoraHost/desktop/run/ResultList.h"
#include "VantoraHost/desktop/run/UndoController.h"

#include <QtCore/QSortFilterProxyModel>
#include <QtWidgets/QWidget>

#include <memory>

namespace Ui {
class ResultsPane;
}

namespace vantora::desktop {

/// The results of the last run, and what can be done with them.
class ResultsPane : public QWidget {
    Q_OBJECT

public:
    /// The list outlives the pane.
    explicit ResultsPane(ResultList& list, QWidget* parent = nullptr);
    ~ResultsPane() override;

    /// Says how a run ended.
    void showSummary(const RunSummary& summary, std::size_t total, bool cancelled,
                     const QString& error);

    /// Says what is shown instead: a run of before, whose results are in the list.
    void showTitle(const QString& title);

    /// Whether there is something to undo a run by.
    void setUndoable(bool undoable);

    /// Says what undoing would do, and asks whether it is to be done.
    void askUndo(const UndoOutlook& outlook);

    /// Says how far undoing is, and what it has come to.
    void showUndoing(std::size_t done, std::size_t total);
    void showUndoNote(const QString& text);

    /// Leads the keyboard to the results.
    void focusList();

signals:
    void retryAsked();
    void salvageAsked();
    void restAsked();
    void commandAsked();
    void reportAsked();
    /// It is to be worked out what undoing the run would do.
    void undoAsked();
    /// The run is to be undone.
    void undoConfirmed();
    void closeAsked();

private:
    QString selectedOutput() const;
    void updateButtons();
    void endAsking();
    void fitColumns();

    ResultList& list_;
    QSortFilterProxyModel sorted_;
    const std::unique_ptr<Ui::ResultsPane> form_;
};

/// How a run ended, in a sentence or two.
QString summaryText(const RunSummary& summary, std::size_t total, bool cancelled,
                    const QString& error);

} // namespace vantora::desktop
