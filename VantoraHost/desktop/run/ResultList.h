#pragma once

#include "VantoraHost/desktop/run/RunController.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QSet>

#include <functional>
#include <vector>

namespace vantora::desktop {

/// What became of the documents of the last run, as a table.
class ResultList : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Name, Outcome, Pages, Size, Output, Columns };
    enum Role {
        SortRole = Qt::UserRole, ///< what rows are sorted by; failures come first
        OutputRole,              ///< the output's path; empty when there is none
        IdRole,
    };

    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void clear();

    /// Adds results; one for a document that has one takes its place. Those of no listed document
    /// have 0 for it.
    void add(const std::vector<RunResult>& results);

    /// Says what became of results that were undone.
    void setUndone(const std::vector<Undone>& undone);

    const std::vector<RunResult>& results() const { return results_; }
    std::vector<DocumentId> failed() const;

    /// Those of them that failed because they are damaged, and can be done with losses.
    std::vector<DocumentId> damaged() const; ///< of the list

private:
    std::vector<DocumentId> failedBecause(const std::function<bool(Reason)>& accepts) const;
    QString display(const RunResult& result, int column) const;

    std::vector<RunResult> results_;
    QHash<DocumentId, int> rows_;
};

} // namespace vantora::desktop
