#include "VantoraHost/core/documents/Batch.h"

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
    const auto verifier = verifierIn(batch.settings.verifier);
    if (!verifier) {
        return tl::unexpected<Error>(verifier.error());
    }
    if (const Outcome begun = sequence.begin(library); !begun) {
        return tl::unexpected<Error>(begun.error());
    }
    DocumentJob job(library, sequence, batch.settings, *verifier);
    OutputGroup outputs;
    BatchResult result;
    const auto report = [&](const DocumentReport& done) {
        ++result.finished;
        result.failed += done.status == DocumentStatus::Failed ? 1 : 0;
        observer.documentArrived(done);
        observer.documentInTurn(done);
    };
    const auto placeOutputs = [&] {
        if (batch.settings.reportFirst && !outputs.empty()) {
            observer.outputsGetNames(outputs.reports());
        }
        for (const OutputGroup::Entry& entry : outputs.place()) {
            report(entry.report);
        }
    };
    for (std::size_t i = 0; i < batch.inputs.size() && !result.interrupted; ++i) {
        if (observer.cancelled()) {
            result.interrupted = true;
            break;
        }
        ProcessedDocument document = job.run(batch.inputs[i], batch.targets[i], batch.rangeOf(i));
        result.interrupted = wasInterrupted(document.report);
        if (document.output) {
            outputs.add(i, std::move(document.report), std::move(*document.output));
        }
        if (!document.output || outputs.isFull()) {
            placeOutputs();
        }
        if (!document.output && !result.interrupted) {
            report(document.report);
        }
    }
    placeOutputs();
    if (Outcome ended = sequence.end(library); !ended) {
        result.ending = std::move(ended.error());
    }
    return result;
}

} // namespace vantora
