#include "VantoraHost/desktop/run/ResultList.h"

#include "VantoraHost/core/Figures.h"
#include "VantoraHost/core/ShownText.h"
#include "VantoraHost/desktop/documents/DocumentList.h"
#include "VantoraHost/desktop/run/RunRemedy.h"

#include <QtCore/QFile>
#include <QtGui/QIcon>

namespace vantora::desktop {

namespace {

QString text(const std::string& bytes)
{
    return QString::fromStdString(shown(bytes));
}

QString number(int value)
{
    return QString::fromStdString(grouped(static_cast<std::uint64_t>(value)));
}

QString name(const std::string& path)
{
    return text(path.substr(path.rfind('/') + 1));
}

bool hasWarnings(const DocumentReport& report)
{
    return !report.warnings.empty() || !report.repairs.empty();
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

QString ResultList::display(const DocumentReport& report, int column) const
{
    const bool isDone = report.status == DocumentStatus::Done;
    switch (column) {
    case Name:
        return name(report.input);
    case Outcome: {
        if (report.error) {
            return tr("failed: %1").arg(explained(*report.error));
        }
        const auto warnings = withRepairs(report.warnings, report.repairs);
        if (!warnings.empty()) {
            return tr("%1; %2", "done or left out, and a warning")
                .arg(isDone ? tr("done") : tr("left out"), text(warnings.front()));
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
                         .arg(text(sizeText(*report.bytesBefore)),
                              text(sizeText(*report.bytesAfter)))
                   : QString();
    case Output:
        return isDone ? text(report.output) : QString();
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
        return display(report, index.column());
    case Qt::ToolTipRole:
        return index.column() == Name ? text(report.input) : display(report, index.column());
    case Qt::TextAlignmentRole: {
        const bool isNumber = index.column() == Pages || index.column() == Size;
        return static_cast<int>((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    case SortRole:
        return index.column() == Outcome ? QVariant(report.error          ? 0
                                                    : hasWarnings(report) ? 1
                                                                          : 2)
               : index.column() == Pages ? QVariant(report.pagesBefore.value_or(0))
               : index.column() == Size
                   ? QVariant(static_cast<qulonglong>(report.bytesBefore.value_or(0)))
                   : QVariant(display(report, index.column()));
    case Qt::DecorationRole: {
        const bool isGood = report.status == DocumentStatus::Done && !hasWarnings(report);
        return index.column() == Outcome
                   ? QIcon(statePicture(isGood ? DocumentState::Done : DocumentState::Failed))
                   : QVariant();
    }
    case OutputRole:
        return report.status == DocumentStatus::Done ? QFile::decodeName(report.output.c_str())
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
        const int row = rows_.value(result.id, -1);
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
        rows_.insert(result.id, rowCount());
        results_.push_back(std::move(result));
    }
    endInsertRows();
}

std::vector<DocumentId> ResultList::failed() const
{
    std::vector<DocumentId> ids;
    for (const RunResult& result : results_) {
        if (result.report.error) {
            ids.push_back(result.id);
        }
    }
    return ids;
}

} // namespace vantora::desktop
