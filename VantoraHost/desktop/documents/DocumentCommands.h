#pragma once

#include "VantoraHost/desktop/documents/DocumentList.h"

#include <QtWidgets/QUndoCommand>

#include <vector>

namespace vantora::desktop {

/// Adds documents at the list's end. What follows each other in one series, as the groups that a
/// search finds do, is undone together.
class AddDocuments : public QUndoCommand {
public:
    AddDocuments(DocumentList& list, std::vector<Document> documents, int series);

    void redo() override;
    void undo() override;
    int id() const override;
    bool mergeWith(const QUndoCommand* next) override;

private:
    DocumentList& list_;
    const int series_;
    QSet<DocumentId> ids_;
    std::vector<Document> added_;             ///< before the first time
    std::vector<DocumentList::Placed> taken_; ///< while it is undone
};

/// Takes documents out of the list.
class RemoveDocuments : public QUndoCommand {
public:
    RemoveDocuments(DocumentList& list, QSet<DocumentId> ids);

    void redo() override;
    void undo() override;

private:
    DocumentList& list_;
    const QSet<DocumentId> ids_;
    std::vector<DocumentList::Placed> taken_;
};

} // namespace vantora::desktop
