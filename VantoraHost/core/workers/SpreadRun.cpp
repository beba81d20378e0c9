#include "VantoraHost/core/workers/SpreadRun.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/documents/PdfLibrary.h"

#include <memory>

namespace vantora {

Result<BatchResult> spreadRun(Sequence& sequence, const Batch& batch, WorkerSettings settings,
                              RunObserver& observer)
{
    settings.setup.wholeRun = sequence.firstThatSeesTheRun() != nullptr;
    if (settings.setup.wholeRun) {
        return runInWorkers(batch, settings, observer);
    }
    std::unique_ptr<KarvelPDFLibraryCPDylibCPP1311> own;
    KarvelPDFLibraryCPDylibCPP1311* begunWith = nullptr;
    settings.begin = [&]() -> Outcome {
        auto loaded =
            settings.early ? Result<decltype(own)>() : loadPdfLibrary(settings.setup.library);
        if (!loaded) {
            return tl::unexpected<Error>(std::move(loaded.error()));
        }
        own = std::move(*loaded);
        auto& library = own ? *own : settings.early->library();
        const Outcome begun = sequence.begin(library);
        begunWith = begun ? &library : nullptr;
        return begun;
    };
    Result<BatchResult> result = runInWorkers(batch, settings, observer);
    const Outcome ended = begunWith ? sequence.end(*begunWith) : Outcome();
    if (result && !ended && !result->ending) {
        result->ending = ended.error();
    }
    return result;
}

} // namespace vantora
