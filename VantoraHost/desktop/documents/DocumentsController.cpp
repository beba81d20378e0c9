#include "VantoraHost/desktop/documents/DocumentsController.h"

#include "VantoraHost/core/documents/InfoJson.h"
#include "VantoraHost/desktop/documents/DocumentCommands.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QFileInfo>
#include <QtCore/QTimer>
#include <QtWidgets/QUndoStack>

#include <algorithm>
#include <map>

namespace vantora::desktop {

namespace {

// The longest for one document, in seconds; people are waiting.
const QStringList readingCommand = {"info", "--timeout", "60"};

} // namespace

DocumentsController::DocumentsController(DocumentList& list, QUndoStack& undo,
                                         std::filesystem::path program, QObject* parent)
    : QObject(parent), list_(list), undo_(undo), reader_(std::move(program), readingCommand),
      watch_([this] { return watched(); })
{
    connect(&list_, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex& /*parent*/, int first, int last) { readNew(first, last); });
    // What is put back by undo may have been taken out before it was read.
    connect(&list_, &QAbstractItemModel::modelReset, this, [this] {
        if (reader_.left() == 0) {
            readNew(0, list_.rowCount() - 1);
        }
    });
    connect(&reader_, &DocumentReader::documentsRead, this, &DocumentsController::take);
    connect(&search_, &FolderSearch::found, this, &DocumentsController::addInputs);
    connect(&search_, &FolderSearch::finished, this, [this](const QStringList& unreadable) {
        for (const QString& folder : unreadable) {
            emit refused(tr("The folder %1 can't be read.").arg(folder));
        }
        emit progressed();
    });
    connect(&watch_, &DiskWatch::changed, this, [this](const std::vector<DocumentId>& ids) {
        forgetRun(ids);
        readAgain(ids);
    });
}

void DocumentsController::add(const QStringList& paths)
{
    if (!search_.isBusy()) {
        ++series_;
    }
    std::vector<Input> files;
    QStringList folders;
    for (const QString& path : paths) {
        const QFileInfo info(path);
        if (info.isDir()) {
            folders << info.absoluteFilePath();
        } else {
            files.push_back(inputNamed(normalPath(systemPath(info.absoluteFilePath()))));
        }
    }
    addInputs(files);
    search_.search(folders);
    emit progressed();
}

void DocumentsController::addInputs(const std::vector<Input>& inputs)
{
    std::vector<Document> documents = list_.newOnes(inputs);
    if (!documents.empty()) {
        undo_.push(new AddDocuments(list_, std::move(documents), series_));
    }
}

void DocumentsController::remove(const QSet<DocumentId>& ids)
{
    if (!ids.isEmpty()) {
        undo_.push(new RemoveDocuments(list_, ids));
    }
}

void DocumentsController::readNew(int first, int last)
{
    std::vector<DocumentId> unread;
    for (int row = first; row <= last; ++row) {
        const Document& document = list_.documents()[static_cast<std::size_t>(row)];
        if (document.state == DocumentState::Reading) {
            unread.push_back(document.id);
        }
    }
    read(unread, {});
}

void DocumentsController::read(const std::vector<DocumentId>& ids, const std::string& password)
{
    std::vector<ReadingTask> tasks;
    for (const DocumentId id : ids) {
        if (const Document* document = list_.find(id)) {
            tasks.push_back({id, document->input.path, password});
        }
    }
    reader_.read(std::move(tasks));
    emit progressed();
}

void DocumentsController::readAgain(const std::vector<DocumentId>& ids)
{
    list_.update(ids, [](Document& document) {
        document.state = DocumentState::Reading;
        document.error.reset();
        document.read.reset();
        document.pages = 0;
        document.passwordsTried = 0;
        return true;
    });
    std::map<std::string, std::vector<DocumentId>> byPassword;
    for (const DocumentId id : ids) {
        if (const Document* document = list_.find(id)) {
            byPassword[document->password].push_back(id);
        }
    }
    for (const auto& [password, documents] : byPassword) {
        read(documents, password);
    }
}

std::vector<DocumentId> DocumentsController::readChanged()
{
    const std::vector<DocumentId> changed = changedAmong(watched());
    forgetRun(changed);
    readAgain(changed);
    return changed;
}

void DocumentsController::forgetRun(const std::vector<DocumentId>& ids)
{
    list_.update(ids, [](Document& document) {
        const bool wasInRun = document.isDone || document.state == DocumentState::Failed;
        if (wasInRun && document.isUsable()) {
            document.state = DocumentState::Ready;
            document.error.reset();
        }
        document.isDone = false;
        return wasInRun;
    });
}

void DocumentsController::tryPassword(DocumentId id, const QString& password)
{
    read({id}, password.toStdString());
}

void DocumentsController::stopAdding()
{
    search_.stop();
    emit progressed();
}

// Returns whether it opened.
bool DocumentsController::takeOne(Document& document, const ReadDocument& read)
{
    document.read = read.file;
    document.version = ++versions_;
    const auto info =
        read.found.and_then([](const std::string& line) { return documentInfoOf(line); });
    if (info) {
        document.state = document.isDone ? DocumentState::Done : DocumentState::Ready;
        document.error.reset();
        document.pages = info->pages;
        document.bytes = info->bytes;
        document.password = read.task.password;
        return true;
    }
    const Reason reason = info.error().reason;
    const bool isLocked = reason == Reason::PasswordNeeded || reason == Reason::PasswordWrong;
    document.state = isLocked ? DocumentState::Locked : DocumentState::Damaged;
    document.error = info.error();
    document.bytes = read.file ? read.file->size : 0;
    return false;
}

void DocumentsController::take(const std::vector<ReadDocument>& documents)
{
    QHash<DocumentId, const ReadDocument*> answers;
    std::vector<DocumentId> ids;
    for (const ReadDocument& read : documents) {
        answers.insert(read.task.id, &read);
        ids.push_back(read.task.id);
    }
    std::map<std::string, std::vector<DocumentId>> retries; // by the password to try
    std::vector<DocumentId> refusedHere;
    std::string opener;
    list_.update(ids, [&](Document& document) {
        const ReadDocument& read = *answers.value(document.id);
        const std::string& password = read.task.password;
        const bool isKnown =
            std::find(passwords_.begin(), passwords_.end(), password) != passwords_.end();
        if (takeOne(document, read)) {
            if (!password.empty() && !isKnown) {
                opener = password;
            }
        } else if (document.state == DocumentState::Locked) {
            if (!password.empty() && !isKnown) {
                refusedHere.push_back(document.id);
            } else if (document.passwordsTried < passwords_.size()) {
                retries[passwords_[document.passwordsTried++]].push_back(document.id);
            }
        }
        return true;
    });
    if (!opener.empty()) {
        passwords_.push_back(opener);
        for (const Document& document : list_.documents()) {
            if (document.state == DocumentState::Locked) {
                retries[opener].push_back(document.id);
            }
        }
    }
    for (const auto& [password, locked] : retries) {
        read(locked, password);
    }
    for (const DocumentId id : refusedHere) {
        emit passwordRefused(id);
    }
    emit progressed();
}

std::vector<WatchedFile> DocumentsController::watched() const
{
    std::vector<WatchedFile> files;
    for (const Document& document : list_.documents()) {
        if (document.read) {
            files.push_back({document.id, document.input.path, *document.read});
        }
    }
    return files;
}

} // namespace vantora::desktop
