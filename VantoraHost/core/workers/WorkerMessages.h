#pragma once

#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/documents/DocumentJob.h"
#include "VantoraHost/core/workers/FileAccess.h"

#include <QtCore/QByteArray>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// What a run and its worker processes tell each other (Packing), without the frame (MessageFrames)
/// that it goes in; what isn't such a message reads as nothing.
namespace vantora {

/// The version of the messages; a worker refuses the setup of another one.
inline constexpr int workerProtocol = 12;

/// What a worker is told first.
struct WorkerSetup {
    std::filesystem::path library;
    std::vector<std::filesystem::path> actionFolders;
    std::vector<StepRequest> steps;
    JobSettings job;               ///< what workers are told of it (visitSettings)
    std::uint64_t memoryLimit = 0; ///< bytes; 0 for none
    /// The worker sees the whole run and tells the actions of its beginning and its end; else
    /// somebody else does.
    bool wholeRun = false;
    FileAccess files; ///< what its documents take
};

/// One document for a worker.
struct WorkerTask {
    std::size_t number = 0; ///< the document's place in the run, which its report names
    std::string input;
    Target target;
    std::optional<std::string> range = {}; ///< the document's own pages
};

/// The worker has its actions, which know of the run.
struct WorkerReady {};

/// A document's output is written and is about to get its name, after which this is its report.
/// Whoever finds that very file under the name knows that the document is done.
struct WorkerWritten {
    std::size_t number = 0;
    DocumentReport report;
    FileIdentity output{};
};

/// The worker waits for leave (namingMessage) to give what it has announced its names.
struct WorkerNaming {};

/// Outputs that were announced so have got their names, and the disk has them.
struct WorkerPlaced {
    std::vector<std::size_t> numbers;
};

/// A document is done; what was announced of it before counts no longer.
struct WorkerReport {
    std::size_t number = 0;
    DocumentReport report;
};

/// The worker ends, in an orderly way, and takes no more documents.
struct WorkerEnd {
    std::optional<Error> complaint; ///< what an action had to complain of at the end of the run
    bool asked = false;             ///< whether it ends because a signal asked it to
};

/// The worker can't begin, and neither could another one.
struct WorkerRefusal {
    Error error;
};

/// The refusal is the first one, for good: a run understands it from a program of another version,
/// too.
using WorkerAnswer = std::variant<WorkerRefusal, WorkerReady, WorkerWritten, WorkerNaming,
                                  WorkerPlaced, WorkerReport, WorkerEnd>;

/// Makes options of what storedBytes made of them.
using StoredReader = std::function<std::optional<PreferencesMap>(const QByteArray&)>;

std::string setupMessage(const WorkerSetup& setup);

/// The error is that it is no setup, or one of another version.
Result<WorkerSetup> setupOf(std::string_view message, const StoredReader& stored);

std::string tasksMessage(const std::vector<WorkerTask>& tasks);
std::optional<std::vector<WorkerTask>> tasksOf(std::string_view message);

/// Leave for a worker to give outputs their names, where JobSettings::reportFirst is set.
std::string namingMessage();

std::string answerMessage(const WorkerAnswer& answer);
std::optional<WorkerAnswer> answerOf(std::string_view message);

} // namespace vantora
