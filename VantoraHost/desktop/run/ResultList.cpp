#include "VantoraHost/desktop/run/ResultList.h"

#include "VantoraHost/core/Figures.h"
#include "VantoraHost/desktop/documents/DocumentList.h"
#include "VantoraHost/desktop/run/RunRemedy.h"
#include "VantoraHost/desktop/sentences/Sentences.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtGui/QIcon>

namespace vantora::desktop {

namespace {

QString number(int value)
{
    return numberText(static_cast<std::uint64_t>(value));
}

QString undoneText(const Undone& undone)
{
    switch (undone.status) {
    case UndoStatus::GivenBack:
        return ResultList::tr("undone: the original is put back");
    case UndoStatus::Removed:
        return ResultList::tr("undone: the result is removed");
    case UndoStatus::Already:
        return ResultList::tr("undone already");
    case UndoStatus::LeftAlone:
        break;
    }
    return undone.why ? ResultList::tr("left alone: %1").arg(explained(*undone.why))
                      : ResultList::tr("left alone");
}

bool isRemoved(const RunResult& result)
{
    return result.undone && result.undone->status == UndoStatus::Removed;
}

bool isLeftAlone(const RunResult& result)
{
    return result.undone && result.undone->status == UndoStatus::LeftAlone;
}

bool hasWarnings(const DocumentReport& report)
{
    return !report.warnings.empty() || !report.repairs.empty() || !report.losses.empty();
}

} // namespace

int ResultList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(results_.size());
}

int ResultList::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : Columns;
}

QString ResultList::display(const RunResult& result, int column) const
{
    const DocumentReport& report = result.report;
    const bool isDone = report.status == DocumentStatus::Done;
    switch (column) {
    case Name:
        return shownName(report.input);
    case Outcome: {
        if (result.undone) {
            return undoneText(*result.undone);
        }
        if (report.error) {
            return tr("failed: %1").arg(explained(*report.error));
        }
        if (!report.losses.empty()) {
            const PageLoss& loss = report.losses.front();
            return tr("done; lost of page %1: %2", "a page's number, what is missing")
                .arg(number(loss.page), shownText(loss.what));
        }
        const auto warnings = withRepairs(report.warnings, report.repairs);
        if (!warnings.empty()) {
            return tr("%1; %2", "done or left out, and a warning")
                .arg(isDone ? tr("done") : tr("left out"), shownSentence(warnings.front()));
        }
        return isDone ? tr("done") : tr("left out");
    }
    case Pages:
        return report.pagesBefore && report.pagesAfter && isDone
                   ? tr("%1 → %2", "before and after")
                         .arg(number(*report.pagesBefore), number(*report.pagesAfter))
                   : QString();
    case Size:
        return report.bytesBefore && report.bytesAfter
                   ? tr("%1 → %2", "before and after")
                         .arg(sizeShown(*report.bytesBefore), sizeShown(*report.bytesAfter))
                   : QString();
    case Output:
        return isDone ? shownText(report.output) : QString();
    default:
        return {};
    }
}

QVariant ResultList::data(const QModelIndex& index, int role) const
{
    const RunResult& result = results_[static_cast<std::size_t>(index.row())];
    const DocumentReport& report = result.report;
    switch (role) {
    case Qt::DisplayRole:
        return display(result, index.column());
    case Qt::ToolTipRole:
        return index.column() == Name ? shownText(report.input) : display(result, index.column());
    case Qt::TextAlignmentRole: {
        const bool isNumber = index.column() == Pages || index.column() == Size;
        return static_cast<int>((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    case SortRole:
        return index.column() == Outcome ? QVariant(report.error || isLeftAlone(result) ? 0
                                                    : hasWarnings(report)               ? 1
                                                                                        : 2)
               : index.column() == Pages ? QVariant(report.pagesBefore.value_or(0))
               : index.column() == Size
                   ? QVariant(static_cast<qulonglong>(report.bytesBefore.value_or(0)))
                   : QVariant(display(result, index.column()));
    case Qt::DecorationRole: {
        const bool isGood =
            report.status == DocumentStatus::Done && !hasWarnings(report) && !isLeftAlone(result);
        return index.column() == Outcome
                   ? QIcon(statePicture(isGood ? DocumentState::Done : DocumentState::Failed))
                   : QVariant();
    }
    case OutputRole:
        return report.status == DocumentStatus::Done && !isRemoved(result) ? qtPath(report.output)
                                                                           : QString();
    case IdRole:
        return result.id;
    default:
        return {};
    }
}

QVariant ResultList::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section >= Columns) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        const bool isNumber = section == Pages || section == Size;
        return static_cast<int>((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    const QString names[] = {tr("Document"), tr("Result"), tr("Pages"), tr("Size"), tr("Saved as")};
    return role == Qt::DisplayRole ? names[section] : QVariant();
}

void ResultList::clear()
{
    beginResetModel();
    results_.clear();
    rows_.clear();
    endResetModel();
}

void ResultList::add(const std::vector<RunResult>& results)
{
    std::vector<RunResult> others;
    for (const RunResult& result : results) {
        const int row = result.id == 0 ? -1 : rows_.value(result.id, -1);
        if (row < 0) {
            others.push_back(result);
        } else {
            results_[static_cast<std::size_t>(row)] = result;
            emit dataChanged(index(row, 0), index(row, Columns - 1));
        }
    }
    if (others.empty()) {
        return;
    }
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(others.size()) - 1);
    for (RunResult& result : others) {
        if (result.id != 0) {
            rows_.insert(result.id, rowCount());
        }
        results_.push_back(std::move(result));
    }
    endInsertRows();
}

void ResultList::setUndone(const std::vector<Undone>& undone)
{
    QHash<QString, const Undone*> byOutput;
    for (const Undone& one : undone) {
        byOutput.insert(qtPath(one.output), &one);
    }
    for (RunResult& result : results_) {
        const Undone* const one = byOutput.value(qtPath(result.report.output));
        if (one != nullptr && result.report.status == DocumentStatus::Done) {
            result.undone = *one;
        }
    }
    if (!results_.empty()) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, Columns - 1));
    }
}

std::vector<DocumentId> ResultList::failed() const
{
    return failedBecause([](Reason) { return true; });
}

std::vector<DocumentId> ResultList::damaged() const
{
    return failedBecause([](Reason reason) { return reason == Reason::PagesDamaged; });
}

std::vector<DocumentId> ResultList::failedBecause(const std::function<bool(Reason)>& accepts) const
{
    std::vector<DocumentId> ids;
    for (const RunResult& result : results_) {
        if (result.report.error && result.id != 0 && accepts(result.report.error->reason)) {
            ids.push_back(result.id);
        }
    }
    return ids;
}

} // namespace vantora::desktop
