#pragma once

#include "VantoraHost/desktop/background/Background.h"
#include "VantoraHost/desktop/documents/DocumentList.h"

#include <QtCore/QObject>

class QUndoStack;

namespace vantora::desktop {

class Marks;

/// Loads and saves which pages go from which documents, as lists that `vantora run --ranges` takes.
/// Files are read and written beside the window's thread, one at a time.
class RangesFiles : public QObject {
    Q_OBJECT

public:
    /// All outlive this.
    RangesFiles(DocumentList& list, Marks& marks, QUndoStack& undo, QObject* parent = nullptr);

    /// Marks in each document that a list names the pages that it says, "only here", and adds those
    /// that aren't listed. Documents that it doesn't name stay as they are. One step of undo.
    void load(const QString& path);

    /// Writes a list of the documents that pages go from. It replaces one of that name.
    void save(const QString& path);

    bool isBusy() const { return background_.isBusy(); }

signals:
    /// What became of it, as a sentence.
    void noted(const QString& sentence);

private:
    /// What a list says of documents.
    struct Loaded {
        std::vector<std::pair<DocumentId, QString>> listed;
        std::vector<Input> others; ///< with their ranges
    };

    static Result<Loaded> read(const std::string& path, const std::vector<Input>& inputs,
                               const std::vector<DocumentId>& ids,
                               const std::atomic<bool>& stopped);
    void take(const Loaded& loaded, int before);

    DocumentList& list_;
    Marks& marks_;
    QUndoStack& undo_;
    Background background_; ///< the last: what it does uses the others
};

} // namespace vantora::desktop
