#include "VantoraHost/desktop/sequence/StepList.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraHost/core/actions/KnownAction.h"

#include <algorithm>
#include <iterator>

namespace vantora::desktop {

namespace {

constexpr char rowType[] = "application/x-vantora-step";

// Of a range that has thousands of parts a list lays out every letter whenever it is painted,
// though there is room for some dozens; no more is shown than a wide screen has room for.
QString shownRange(const QString& range)
{
    constexpr int mostLetters = 300;
    return range.size() <= mostLetters
               ? range
               : range.left(range.lastIndexOf(',', mostLetters) + 1) + QStringLiteral("...");
}

} // namespace

const char* rangeKeyOf(const ListedStep& step)
{
    const KnownAction* known = knownAction(step.action);
    return known ? known->pagesKey : nullptr;
}

ListedSteps moved(ListedSteps steps, int from, int before)
{
    const auto first = steps.begin();
    if (before > from) {
        std::rotate(first + from, first + from + 1, first + before);
    } else {
        std::rotate(first + before, first + from, first + from + 1);
    }
    return steps;
}

int StepList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(steps_.size());
}

QVariant StepList::data(const QModelIndex& index, int role) const
{
    const ListedStep& step = steps_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole: {
        const char* key = rangeKeyOf(step);
        if (key == nullptr) {
            return step.title;
        }
        const QString range =
            index.row() == marksRow() ? range_ : step.preferences.value(key).toString();
        return range.isEmpty()
                   ? step.title
                   : tr("%1: %2", "an action and its pages").arg(step.title, shownRange(range));
    }
    case Qt::ToolTipRole:
        return index.row() == marksRow() ? tr("Removes the pages that are marked")
                                         : QVariant(step.title);
    case Qt::DecorationRole:
        return CActionUtils::GetIconForTool(step.icon);
    case Qt::CheckStateRole:
        return step.isOn ? Qt::Checked : Qt::Unchecked;
    default:
        return {};
    }
}

Qt::ItemFlags StepList::flags(const QModelIndex& index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable |
                                 Qt::ItemIsDragEnabled
                           : Qt::ItemIsDropEnabled;
}

bool StepList::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole) {
        return false;
    }
    ListedSteps steps = steps_;
    ListedStep& step = steps[static_cast<std::size_t>(index.row())];
    step.isOn = value.toInt() == Qt::Checked;
    emit asked(steps, step.isOn ? tr("switching on %1").arg(step.title)
                                : tr("switching off %1").arg(step.title));
    return true;
}

QStringList StepList::mimeTypes() const
{
    return {rowType};
}

QMimeData* StepList::mimeData(const QModelIndexList& indexes) const
{
    auto* data = new QMimeData; // the drag owns it
    data->setData(rowType, QByteArray::number(indexes.first().row()));
    return data;
}

bool StepList::dropMimeData(const QMimeData* data, Qt::DropAction /*action*/, int row,
                            int /*column*/, const QModelIndex& /*parent*/)
{
    bool isNumber = false;
    const int from = data->data(rowType).toInt(&isNumber);
    if (isNumber && from >= 0 && from < rowCount()) {
        emit asked(moved(steps_, from, row < 0 ? rowCount() : row), tr("moving a step"));
    }
    return false; // the view would take the old row away
}

void StepList::set(ListedSteps steps)
{
    beginResetModel();
    steps_ = std::move(steps);
    endResetModel();
    emit changed();
}

int StepList::marksRow() const
{
    const auto found = std::find_if(steps_.begin(), steps_.end(), [](const ListedStep& step) {
        return step.isOn && rangeKeyOf(step) != nullptr;
    });
    return found == steps_.end() ? -1 : static_cast<int>(std::distance(steps_.begin(), found));
}

std::vector<StepRequest> StepList::requests(const QString& range) const
{
    std::vector<StepRequest> requests;
    const int marks = marksRow();
    for (int row = 0; row < rowCount(); ++row) {
        const ListedStep& step = steps_[static_cast<std::size_t>(row)];
        if (!step.isOn || (row == marks && range.isEmpty())) {
            continue;
        }
        requests.push_back(request(row, range));
    }
    return requests;
}

StepRequest StepList::request(int row, const QString& range) const
{
    const ListedStep& step = steps_[static_cast<std::size_t>(row)];
    StepRequest request;
    request.action = step.action;
    request.stored = step.preferences;
    if (row == marksRow()) {
        request.stored.insert(rangeKeyOf(step), range);
    }
    return request;
}

void StepList::setMarks(const QString& range)
{
    range_ = range;
    if (const int row = marksRow(); row >= 0) {
        emit dataChanged(index(row), index(row));
    }
}

} // namespace vantora::desktop
