#pragma once

#include "VantoraHost/core/DocumentJob.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vantora {

/// Hears how a run goes, and is asked whether it is to go on.
class RunObserver {
public:
    virtual ~RunObserver() = default;

    /// A document is done, in the order of the inputs; `finished` counts them.
    virtual void documentFinished(const DocumentReport& report, std::size_t finished,
                                  std::size_t total) = 0;

    /// Asked between documents and between the steps of one; a save that has begun is finished.
    virtual bool cancelled() const = 0;
};

/// A run over many documents.
struct Batch {
    std::vector<std::string> inputs;
    std::vector<Result<Target>> targets; ///< one for each input
    JobSettings settings;
};

/// How a run ended. A document that failed doesn't end it.
struct BatchResult {
    std::size_t finished = 0; ///< documents with a report
    std::size_t failed = 0;
    bool interrupted = false;
    std::optional<Error> ending; ///< what an action had to complain of at the end of the run
};

/// Runs the sequence over every document, one after the other. The error is that an action refused
/// to begin; no document was touched then.
Result<BatchResult> runBatch(KarvelPDFLibraryCPDylibCPP1311& library, Sequence& sequence,
                             const Batch& batch, RunObserver& observer);

} // namespace vantora
