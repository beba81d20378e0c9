#include "VantoraHost/core/workers/SpreadRun.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/documents/PdfLibrary.h"

namespace vantora {

Result<BatchResult> spreadRun(Sequence& sequence, const Batch& batch, WorkerSettings settings,
                              RunObserver& observer)
{
    settings.setup.wholeRun = sequence.firstThatSeesTheRun() != nullptr;
    if (settings.setup.wholeRun) {
        return runInWorkers(batch, settings, observer);
    }
    const auto library = loadPdfLibrary(settings.setup.library);
    if (!library) {
        return tl::unexpected<Error>(library.error());
    }
    if (const Outcome begun = sequence.begin(**library); !begun) {
        return tl::unexpected<Error>(begun.error());
    }
    Result<BatchResult> result = runInWorkers(batch, settings, observer);
    const Outcome ended = sequence.end(**library);
    if (result && !ended && !result->ending) {
        result->ending = ended.error();
    }
    return result;
}

} // namespace vantora
