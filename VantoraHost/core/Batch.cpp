#include "VantoraHost/core/Batch.h"

namespace vantora {

namespace {

bool wasInterrupted(const DocumentReport& report)
{
    return report.error && report.error->reason == Reason::Interrupted;
}

} // namespace

Result<BatchResult> runBatch(KarvelPDFLibraryCPDylibCPP1311& library, Sequence& sequence,
                             const Batch& batch, RunObserver& observer)
{
    if (const Outcome begun = sequence.begin(library); !begun) {
        return tl::unexpected<Error>(begun.error());
    }
    DocumentJob job(library, sequence, batch.settings);
    BatchResult result;
    for (std::size_t i = 0; i < batch.inputs.size() && !result.interrupted; ++i) {
        if (observer.cancelled()) {
            result.interrupted = true;
            break;
        }
        const DocumentReport report = job.run(batch.inputs[i], batch.targets[i]);
        if (wasInterrupted(report)) {
            result.interrupted = true;
            break;
        }
        ++result.finished;
        result.failed += report.status == DocumentStatus::Failed ? 1 : 0;
        observer.documentArrived(report);
        observer.documentInTurn(report);
    }
    if (Outcome ended = sequence.end(library); !ended) {
        result.ending = std::move(ended.error());
    }
    return result;
}

} // namespace vantora
