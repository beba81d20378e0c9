#include "VantoraHost/desktop/documents/DocumentCommands.h"

#include <QtCore/QCoreApplication>

#include <utility>

namespace vantora::desktop {

namespace {

// By which the stack knows commands of one kind; those of the marks have another.
constexpr int addingId = 0x646f63;

QString addingText(int count)
{
    return QCoreApplication::translate("DocumentCommands", "adding %n document(s)", nullptr, count);
}

QString removingText(int count)
{
    return QCoreApplication::translate("DocumentCommands", "removing %n document(s)", nullptr,
                                       count);
}

} // namespace

AddDocuments::AddDocuments(DocumentList& list, std::vector<Document> documents, int series)
    : QUndoCommand(addingText(static_cast<int>(documents.size()))), list_(list), series_(series),
      added_(std::move(documents))
{
    for (const Document& document : added_) {
        ids_.insert(document.id);
    }
}

void AddDocuments::redo()
{
    if (taken_.empty()) {
        list_.append(std::exchange(added_, {}));
    } else {
        list_.putBack(std::exchange(taken_, {}));
    }
}

void AddDocuments::undo()
{
    taken_ = list_.take(ids_);
}

int AddDocuments::id() const
{
    return addingId;
}

bool AddDocuments::mergeWith(const QUndoCommand* next)
{
    const auto& added = static_cast<const AddDocuments&>(*next);
    if (added.series_ != series_) {
        return false;
    }
    ids_ += added.ids_;
    setText(addingText(ids_.size()));
    return true;
}

RemoveDocuments::RemoveDocuments(DocumentList& list, QSet<DocumentId> ids)
    : QUndoCommand(removingText(ids.size())), list_(list), ids_(std::move(ids))
{
}

void RemoveDocuments::redo()
{
    taken_ = list_.take(ids_);
}

void RemoveDocuments::undo()
{
    list_.putBack(std::exchange(taken_, {}));
}

} // namespace vantora::desktop
