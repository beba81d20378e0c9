#pragma once

#include "VantoraHost/desktop/documents/Document.h"

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <deque>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

class QProcess;

namespace vantora::desktop {

/// A document that is to be read.
struct ReadingTask {
    DocumentId id = 0;
    std::string path;     ///< absolute
    std::string password; ///< the one to try, UTF-8; empty for none
};

/// What came of it.
struct ReadDocument {
    ReadingTask task;
    std::optional<FileState> file; ///< as it was before it was read
    Result<std::string> found;     ///< a line of JSON
};

/// Reads documents without waiting and without opening any of them here: a command of the program
/// does, each in a confined process of its own, and tells what it found as a line of JSON each.
class DocumentReader : public QObject {
    Q_OBJECT

public:
    /// `program` is that which has the command, which stands before its options.
    DocumentReader(std::filesystem::path program, QStringList command, QObject* parent = nullptr);
    ~DocumentReader() override;

    void read(std::vector<ReadingTask> tasks);

    /// Reads with another command, or other options of it, from the next process on.
    void setCommand(QStringList command) { command_ = std::move(command); }

    /// Gives up all that isn't read yet.
    void stop();

    /// How many documents aren't read yet.
    std::size_t left() const { return waiting_.size() + current_.size() - answered_; }

signals:
    /// Documents are read, or can't be.
    void documentsRead(const std::vector<vantora::desktop::ReadDocument>& documents);

private:
    void startNext();
    void takeAnswers();
    void finish();
    std::vector<ReadDocument> answersIn(const QByteArray& lines);

    const std::filesystem::path program_;
    QStringList command_;
    std::deque<ReadingTask> waiting_;
    std::vector<ReadDocument> current_; ///< those that the process is at, in its order
    std::size_t answered_ = 0;          ///< of these
    std::unique_ptr<QProcess> process_;
    QByteArray received_; ///< of a line that isn't whole yet
};

} // namespace vantora::desktop
