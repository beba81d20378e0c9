#pragma once

#include "VantoraHost/core/documents/DocumentInfo.h"
#include "VantoraHost/desktop/documents/Document.h"

#include <QtCore/QByteArray>
#include <QtCore/QObject>

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
    Result<DocumentInfo> info;
};

/// Reads documents without waiting and without opening any of them here: the program's command
/// `info` does, each in a confined process of its own, and tells what it found as JSON.
class DocumentReader : public QObject {
    Q_OBJECT

public:
    /// `program` is that which has the command.
    explicit DocumentReader(std::filesystem::path program, QObject* parent = nullptr);
    ~DocumentReader() override;

    void read(std::vector<ReadingTask> tasks);

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
    std::deque<ReadingTask> waiting_;
    std::vector<ReadDocument> current_; ///< those that the process is at, in its order
    std::size_t answered_ = 0;          ///< of these
    std::unique_ptr<QProcess> process_;
    QByteArray received_; ///< of a line that isn't whole yet
};

} // namespace vantora::desktop
