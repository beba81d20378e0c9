#include "VantoraHost/desktop/documents/DocumentList.h"

#include "VantoraHost/core/Figures.h"
#include "VantoraHost/desktop/sentences/Sentences.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QIcon>

#include <algorithm>

namespace vantora::desktop {

QString nameOf(const Document& document)
{
    return shownName(document.input.path);
}

QString folderOf(const Document& document)
{
    const std::string& path = document.input.path;
    return shownText(path.substr(0, std::max<std::size_t>(1, path.rfind('/'))));
}

QString stateText(DocumentState state)
{
    const auto text = [](const char* source) {
        return QCoreApplication::translate("DocumentState", source);
    };
    switch (state) {
    case DocumentState::Reading:
        return text(QT_TRANSLATE_NOOP("DocumentState", "reading"));
    case DocumentState::Ready:
        return text(QT_TRANSLATE_NOOP("DocumentState", "ready"));
    case DocumentState::Locked:
        return text(QT_TRANSLATE_NOOP("DocumentState", "locked"));
    case DocumentState::Damaged:
        return text(QT_TRANSLATE_NOOP("DocumentState", "unreadable"));
    case DocumentState::Done:
        return text(QT_TRANSLATE_NOOP("DocumentState", "done"));
    case DocumentState::Failed:
        return text(QT_TRANSLATE_NOOP("DocumentState", "failed"));
    }
    return {};
}

QString statePicture(DocumentState state)
{
    switch (state) {
    case DocumentState::Done:
        return QStringLiteral(":/Vantora/Resources/Desktop/StateDone.png");
    case DocumentState::Damaged:
    case DocumentState::Failed:
        return QStringLiteral(":/Vantora/Resources/Desktop/StateTrouble.png");
    case DocumentState::Locked:
        return QStringLiteral(":/Vantora/Resources/Desktop/StateLocked.png");
    default:
        return {};
    }
}

int DocumentList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(documents_.size());
}

int DocumentList::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : Columns;
}

QVariant DocumentList::data(const QModelIndex& index, int role) const
{
    const Document& document = documents_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return display(document, index.column());
    case Qt::ToolTipRole:
        return document.error
                   ? shownText(document.input.path) + ": " + shownSentence(document.error->sentence)
                   : shownText(document.input.path);
    case Qt::TextAlignmentRole: {
        const bool isNumber =
            index.column() == Pages || index.column() == Going || index.column() == Size;
        return static_cast<int>((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    case Qt::DecorationRole:
        return index.column() == State && !statePicture(document.state).isEmpty()
                   ? QIcon(statePicture(document.state))
                   : QVariant();
    case SortRole:
        return sorted(document, index.column());
    case StateRole:
        return static_cast<int>(document.state);
    case IdRole:
        return document.id;
    default:
        return {};
    }
}

QString DocumentList::display(const Document& document, int column) const
{
    switch (column) {
    case Name:
        return nameOf(document);
    case Folder:
        return folderOf(document);
    case Pages:
        return document.pages > 0 ? numberText(static_cast<std::uint64_t>(document.pages))
                                  : QString();
    case Going: {
        const auto going =
            forecast_ && document.isUsable() ? forecast_(document) : std::optional<int>();
        return going ? numberText(static_cast<std::uint64_t>(*going)) : QString();
    }
    case Size:
        return document.read ? sizeShown(document.bytes) : QString();
    case State:
        return document.error && document.state != DocumentState::Locked
                   ? tr("%1: %2", "a state and its reason")
                         .arg(stateText(document.state), shownSentence(document.error->sentence))
                   : stateText(document.state);
    default:
        return {};
    }
}

QVariant DocumentList::sorted(const Document& document, int column) const
{
    switch (column) {
    case Pages:
        return document.pages;
    case Going:
        return forecast_ && document.isUsable() ? forecast_(document).value_or(-1) : -1;
    case Size:
        return static_cast<qulonglong>(document.bytes);
    case State:
        return static_cast<int>(document.state);
    default:
        return display(document, column);
    }
}

QVariant DocumentList::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        const bool isNumber = section == Pages || section == Going || section == Size;
        return static_cast<int>((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    if (role == Qt::ToolTipRole && section == Going) {
        return tr("How many of its pages are going to go");
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    const QString names[] = {tr("Name"), tr("Pages"), tr("Go"),
                             tr("Size"), tr("State"), tr("Folder")};
    return section < Columns ? names[section] : QVariant();
}

const Document* DocumentList::find(DocumentId id) const
{
    const int row = rowOf(id);
    return row < 0 ? nullptr : &documents_[static_cast<std::size_t>(row)];
}

int DocumentList::rowOf(DocumentId id) const
{
    return rows_.value(id, -1);
}

QHash<QString, DocumentId> DocumentList::idsByPath() const
{
    QHash<QString, DocumentId> ids;
    for (const Document& document : documents_) {
        ids.insert(qtPath(document.input.path), document.id);
    }
    return ids;
}

std::vector<Document> DocumentList::newOnes(const std::vector<Input>& inputs)
{
    std::vector<Document> documents;
    QSet<QString> met;
    for (const Input& input : inputs) {
        const QString path = qtPath(input.path);
        if (!paths_.contains(path) && !met.contains(path)) {
            met.insert(path);
            Document document;
            document.id = ++last_;
            document.input = input;
            documents.push_back(std::move(document));
        }
    }
    return documents;
}

void DocumentList::append(std::vector<Document> documents)
{
    if (documents.empty()) {
        return;
    }
    const std::size_t first = documents_.size();
    beginInsertRows({}, static_cast<int>(first), static_cast<int>(first + documents.size()) - 1);
    std::move(documents.begin(), documents.end(), std::back_inserter(documents_));
    numberFrom(first);
    endInsertRows();
    emit changed();
}

std::vector<DocumentList::Placed> DocumentList::take(const QSet<DocumentId>& ids)
{
    std::vector<Placed> taken;
    std::vector<Document> kept;
    beginResetModel();
    for (std::size_t row = 0; row < documents_.size(); ++row) {
        Document& document = documents_[row];
        if (ids.contains(document.id)) {
            paths_.remove(qtPath(document.input.path));
            taken.emplace_back(static_cast<int>(row), std::move(document));
        } else {
            kept.push_back(std::move(document));
        }
    }
    documents_ = std::move(kept);
    rows_.clear();
    numberFrom(0);
    endResetModel();
    emit changed();
    return taken;
}

void DocumentList::putBack(const std::vector<Placed>& documents)
{
    std::vector<Document> all;
    auto next = documents.begin();
    beginResetModel();
    for (auto rest = documents_.begin();;) {
        if (next != documents.end() && static_cast<std::size_t>(next->first) <= all.size()) {
            all.push_back((next++)->second);
        } else if (rest != documents_.end()) {
            all.push_back(std::move(*rest++));
        } else if (next != documents.end()) {
            all.push_back((next++)->second);
        } else {
            break;
        }
    }
    documents_ = std::move(all);
    rows_.clear();
    numberFrom(0);
    endResetModel();
    emit changed();
}

void DocumentList::numberFrom(std::size_t row)
{
    for (; row < documents_.size(); ++row) {
        rows_.insert(documents_[row].id, static_cast<int>(row));
        paths_.insert(qtPath(documents_[row].input.path));
    }
}

void DocumentList::update(const std::vector<DocumentId>& ids,
                          const std::function<bool(Document&)>& change)
{
    int first = rowCount();
    int last = -1;
    for (const DocumentId id : ids) {
        const int row = rowOf(id);
        if (row >= 0 && change(documents_[static_cast<std::size_t>(row)])) {
            first = std::min(first, row);
            last = std::max(last, row);
        }
    }
    if (last >= 0) {
        emit dataChanged(index(first, 0), index(last, Columns - 1));
        emit changed();
    }
}

void DocumentList::setForecast(std::function<std::optional<int>(const Document&)> forecast)
{
    forecast_ = std::move(forecast);
    forecastChanged();
}

void DocumentList::forecastChanged()
{
    if (!documents_.empty()) {
        emit dataChanged(index(0, Going), index(rowCount() - 1, Going));
    }
}

void DocumentList::forecastChanged(DocumentId id)
{
    if (const int row = rowOf(id); row >= 0) {
        emit dataChanged(index(row, Going), index(row, Going));
    }
}

} // namespace vantora::desktop
