#pragma once

#include "VantoraHost/core/documents/Batch.h"
#include "VantoraHost/core/workers/EarlyWorkers.h"
#include "VantoraHost/core/workers/WorkerMessages.h"

#include <chrono>
#include <filesystem>
#include <functional>

namespace vantora {

/// How a run is spread over worker processes.
struct WorkerSettings {
    std::filesystem::path program; ///< which is started with the argument "worker"
    StoredReader copies; ///< where set, workers are copies of this process instead, which read
                         ///< saved options so; standard input and output are for these only
    EarlyWorkers* early = nullptr; ///< those that are to be taken first; outlive the run
    std::size_t count = 1;         ///< at most so many at a time, at least 1
    /// Called once, while workers start and before any of them gets a document; before they start
    /// where they are copies and none was made early: they have then what it has loaded.
    std::function<Outcome()> begin = [] { return Outcome(); };
    std::chrono::seconds timeout{0}; ///< the longest that one document may take; 0 for no limit
    std::chrono::seconds timeToBegin{120}; ///< the longest that a worker may take to be ready
    std::function<std::chrono::steady_clock::time_point()> now =
        std::chrono::steady_clock::now; ///< the time that the limits go by
    /// `job` and `files` are taken from the batch. With `wholeRun`, one worker does all documents
    /// in their order, and what it leaves undone is done by nobody.
    WorkerSetup setup;
};

/// Runs a batch in worker processes. One that crashes, takes too long or wants too much memory
/// costs the document that it was at, which is reported with the reason, and a fresh one takes
/// over. A document whose worker was ended by a signal, be it a crash or somebody's doing, gets a
/// second chance with a fresh worker that has nothing else. Documents whose target is a reason are
/// reported without a worker. Actions are not told of the run but by a worker that sees all of it
/// (SpreadRun does that). The error is that of `begin`, or that no worker could begin; no document
/// was touched then.
Result<BatchResult> runInWorkers(const Batch& batch, const WorkerSettings& settings,
                                 RunObserver& observer);

} // namespace vantora
