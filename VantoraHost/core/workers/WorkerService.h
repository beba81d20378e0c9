#pragma once

#include "VantoraHost/core/workers/WorkerMessages.h"

namespace vantora {

/// Where a worker's orders come from and its answers go to: open file descriptors.
struct WorkerChannel {
    int orders;
    int answers;
};

/// What a worker process does: takes its setup, then groups of documents, and answers with a report
/// for each, until the orders end. SIGTERM ends the process at once, or when what is being saved is
/// finished. Gives up what it does not need before it opens the first document. A copy of the run's
/// process takes the standard streams of the run (`inherited`). Returns false when there was
/// nothing that it could do.
bool serveAsWorker(const WorkerChannel& channel, const StoredReader& stored,
                   JobSettings* inherited = nullptr);

} // namespace vantora
