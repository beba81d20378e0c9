#pragma once

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/workers/WorkerMessages.h"
#include "VantoraHost/core/workers/WorkerProcess.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace vantora {

/// Workers that are made before a run is planned, as copies of its process: they have the library
/// and the actions, nothing of the plan, and while it is made they prepare to read the inputs and
/// nothing else.
class EarlyWorkers {
public:
    /// Makes at most so many, fewer where the system has no room for them. The setup needs its
    /// library and folders of actions only. Null when the library can't be loaded. The sequence,
    /// which no run has begun with, must outlive the workers.
    static std::unique_ptr<EarlyWorkers> make(std::size_t count, const WorkerSetup& setup,
                                              Sequence& sequence,
                                              const std::vector<std::string>& inputs,
                                              const StoredReader& stored);

    /// One that waits for its setup, which need not name the steps, nor what it may read; null when
    /// all are taken.
    std::unique_ptr<WorkerProcess> take();

    std::size_t left() const { return waiting_.size(); }

    /// The library as the workers have it.
    KarvelPDFLibraryCPDylibCPP1311& library() { return *library_; }

private:
    explicit EarlyWorkers(std::unique_ptr<KarvelPDFLibraryCPDylibCPP1311> library)
        : library_(std::move(library))
    {
    }

    std::unique_ptr<KarvelPDFLibraryCPDylibCPP1311> library_;
    std::deque<std::unique_ptr<WorkerProcess>> waiting_;
};

} // namespace vantora
