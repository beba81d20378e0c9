#pragma once

#include "VantoraHost/core/workers/WorkerMessages.h"
#include "VantoraHost/core/workers/WorkerProcess.h"

#include <chrono>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace vantora {

/// How far a worker has come.
enum class WorkerStage {
    Starting,    ///< hasn't said that it is ready
    ClosedEarly, ///< the same, and isn't going to be given anything
    EndedEarly,  ///< has said that it ends, and never that it is ready
    Fresh,       ///< is ready and hasn't been given anything
    Used,        ///< is ready and has been given documents
    Closed,      ///< was ready, and gets no more documents
    Ended,       ///< was ready, and has said that it ends
    EndedAsked,  ///< the same, because somebody sent it a signal
};

/// What brings a worker from one stage to another.
enum class WorkerEvent { SaysReady, IsGivenDocuments, GetsNoMore, SaysEnd, SaysEndAsked };

/// The stage that a worker comes to.
WorkerStage stageAfter(WorkerStage stage, WorkerEvent event);

/// Whether the worker has said that it is ready.
bool wasReady(WorkerStage stage);

/// Whether the worker takes documents.
bool isOpen(WorkerStage stage);

/// Whether the worker has said that it ends.
bool hasSaidEnd(WorkerStage stage);

/// What a worker is killed for.
enum class WorkerFault {
    None,
    TookTooLong,
    MadeNoSense, ///< has said what is no answer
};

/// A worker of a pool, with the documents that it has been given.
struct CrewMember {
    std::unique_ptr<WorkerProcess> process; ///< null once it is gone
    std::deque<std::size_t> documents; ///< neither written nor reported yet; it is at the first
    std::size_t ahead = 0; ///< how many of these, the last ones, are a group that it has got for
                           ///< when the one before has its names
    std::map<std::size_t, WorkerWritten> written; ///< about to get their names
    std::chrono::steady_clock::time_point since;  ///< when last heard of, or given something
    WorkerStage stage = WorkerStage::Starting;
    WorkerFault fault = WorkerFault::None; ///< the first, if there are two

    void after(WorkerEvent event) { stage = stageAfter(stage, event); }
    void blameFor(WorkerFault what) { fault = fault == WorkerFault::None ? what : fault; }

    /// Adds a group, which it begins with when it has nothing else.
    void give(const std::vector<std::size_t>& group);

    /// To be called when it may be done with a group: then it is at the next one.
    void noteEndOfGroup();

    bool isBusy() const { return !documents.empty() || !written.empty(); }
    bool isAt(std::size_t document) const;

    /// The document that it is at, or the first of those that it gives names to.
    std::optional<std::size_t> current() const;

    /// The documents of which nothing has become, in order.
    std::vector<std::size_t> lost() const;

    void forget(std::size_t document);
};

} // namespace vantora
