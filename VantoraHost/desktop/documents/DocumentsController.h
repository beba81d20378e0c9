#pragma once

#include "VantoraHost/desktop/documents/DiskWatch.h"
#include "VantoraHost/desktop/documents/DocumentList.h"
#include "VantoraHost/desktop/documents/DocumentReader.h"
#include "VantoraHost/desktop/documents/FolderSearch.h"

#include <filesystem>
#include <string>
#include <vector>

class QUndoStack;

namespace vantora::desktop {

/// What happens to the list of documents: files and folders are added, read, given passwords and
/// read again when they change.
class DocumentsController : public QObject {
    Q_OBJECT

public:
    /// `program` has the command `info`. The list and the stack outlive the controller.
    DocumentsController(DocumentList& list, QUndoStack& undo, std::filesystem::path program,
                        QObject* parent = nullptr);

    /// Adds files, and the documents in folders and their subfolders. A file that isn't there is
    /// listed with that reason.
    void add(const QStringList& paths);

    void remove(const QSet<DocumentId>& ids);

    /// Tries a password on a document and, once it has opened that, on all others that are locked.
    /// It is kept in memory as long as the program runs, and nowhere else.
    void tryPassword(DocumentId id, const QString& password);

    /// The passwords that have opened a document, UTF-8.
    const std::vector<std::string>& passwords() const { return passwords_; }

    /// Reads documents anew.
    void readAgain(const std::vector<DocumentId>& ids);

    /// Looks at the disk now; returns those documents that aren't any more what is listed, which
    /// are then read anew.
    std::vector<DocumentId> readChanged();

    /// Forgets what the last run made of documents: they can be run again.
    void forgetRun(const std::vector<DocumentId>& ids);

    void stopAdding();
    bool isSearching() const { return search_.isBusy(); }
    std::size_t unread() const { return reader_.left(); }

signals:
    /// How far searching and reading are, has changed.
    void progressed();
    /// What can't be listed, as sentences.
    void refused(const QString& reason);
    /// A password didn't open the document.
    void passwordRefused(vantora::desktop::DocumentId id);

private:
    void addInputs(const std::vector<Input>& inputs);
    void readNew(int first, int last); ///< rows
    void take(const std::vector<ReadDocument>& documents);
    bool takeOne(Document& document, const ReadDocument& read);
    void read(const std::vector<DocumentId>& ids, const std::string& password);
    std::vector<WatchedFile> watched() const;

    DocumentList& list_;
    QUndoStack& undo_;
    DocumentReader reader_;
    FolderSearch search_;
    DiskWatch watch_;
    std::vector<std::string> passwords_;
    quint64 versions_ = 0;
    int series_ = 0; ///< of documents that are added, to be undone together
};

} // namespace vantora::desktop
