#pragma once

#include "VantoraHost/core/workers/WorkerLines.h"
#include "VantoraHost/core/workers/WorkerMessages.h"

namespace vantora {

/// What a worker process does: takes its setup, then groups of documents, and answers with a report
/// for each, until the orders end. SIGTERM ends the process at once, or when what is being saved is
/// finished. Gives up what it does not need before it opens the first document. A copy of the run's
/// process takes the standard streams of the run (`inherited`). Returns false when there was
/// nothing that it could do.
bool serveAsWorker(const WorkerChannel& channel, const StoredReader& stored,
                   JobSettings* inherited = nullptr);

} // namespace vantora
