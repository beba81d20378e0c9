#pragma once

#include "VantoraHost/core/workers/WorkerMessages.h"

#include <functional>

namespace vantora {

/// Where a worker's orders come from and its answers go to: open file descriptors.
struct WorkerChannel {
    int orders;
    int answers;
};

/// What a worker process does: takes its setup, then groups of documents, and answers with a report
/// for each, until the orders end or `stopped` says so; a document whose saving has begun is
/// finished. Gives up what it does not need before it opens the first document. Returns false when
/// there was nothing that it could do.
bool serveAsWorker(const WorkerChannel& channel, const StoredReader& stored,
                   const std::function<bool()>& stopped);

} // namespace vantora
