#pragma once

#include "VantoraHost/core/documents/DocumentJob.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vantora {

/// Hears how a run goes, and is asked whether it is to go on.
class RunObserver {
public:
    virtual ~RunObserver() = default;

    /// Outputs are written and are about to get their names, after which these are the reports of
    /// their documents. Only called where JobSettings::reportFirst is set.
    virtual void outputsGetNames(const std::vector<DocumentReport>& reports) = 0;

    /// A document is done, whatever its turn.
    virtual void documentArrived(const DocumentReport& report) = 0;

    /// A document is done and those before it are; called in the order of the inputs, after
    /// documentArrived. When a run is interrupted, some documents before it may never be done.
    virtual void documentInTurn(const DocumentReport& report) = 0;

    /// Asked between documents and between the steps of one; a save that has begun is finished.
    virtual bool cancelled() const = 0;
};

/// A run over many documents.
struct Batch {
    std::vector<std::string> inputs;
    std::vector<Result<Target>> targets; ///< one for each input
    /// The range that each input has of its own; none at all where the steps tell for all of them.
    std::vector<std::optional<std::string>> ranges = {};
    JobSettings settings;

    std::optional<std::string> rangeOf(std::size_t input) const
    {
        return input < ranges.size() ? ranges[input] : std::nullopt;
    }
};

/// How a run ended. A document that failed doesn't end it.
struct BatchResult {
    std::size_t finished = 0; ///< documents with a report
    std::size_t failed = 0;
    bool interrupted = false;
    std::optional<Error> ending; ///< what an action had to complain of at the end of the run
};

/// Runs the sequence over every document in this process, one after the other. The error is that an
/// action refused to begin; no document was touched then.
Result<BatchResult> runBatch(KarvelPDFLibraryCPDylibCPP1311& library, Sequence& sequence,
                             const Batch& batch, RunObserver& observer);

} // namespace vantora
