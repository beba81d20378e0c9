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

/// A worker of a pool, with the documents that it has been given.
struct CrewMember {
    std::unique_ptr<WorkerProcess> process;
    std::deque<std::size_t> documents; ///< neither written nor reported yet; it is at the first
    std::map<std::size_t, WorkerWritten> written; ///< about to get their names
    std::chrono::steady_clock::time_point since;  ///< when last heard of, or given something
    bool ready = false;
    bool fresh = true;    ///< hasn't been given anything
    bool closing = false; ///< gets no more documents
    bool orderly = false; ///< has said that it ends
    bool asked = false;   ///< it ends because somebody sent it a signal
    bool timedOut = false;
    bool senseless = false; ///< has said what is no answer
    bool gone = false;

    bool isBusy() const { return !documents.empty() || !written.empty(); }
    bool isAt(std::size_t document) const;

    /// The document that it is at, or the first of those that it gives names to.
    std::optional<std::size_t> current() const;

    /// The documents of which nothing has become, in order.
    std::vector<std::size_t> lost() const;

    void forget(std::size_t document);
};

} // namespace vantora
