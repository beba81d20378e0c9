#include "VantoraHost/core/workers/EarlyWorkers.h"

#include "VantoraHost/core/documents/PdfLibrary.h"
#include "VantoraHost/core/workers/WorkerService.h"

namespace vantora {

std::unique_ptr<EarlyWorkers> EarlyWorkers::make(std::size_t count, const WorkerSetup& setup,
                                                 Sequence& sequence,
                                                 const std::vector<std::string>& inputs,
                                                 const StoredReader& stored)
{
    auto library = loadPdfLibrary(setup.library);
    if (!library) {
        return nullptr;
    }
    std::unique_ptr<EarlyWorkers> early(new EarlyWorkers(std::move(*library)));
    WorkerInheritance inheritance;
    inheritance.library = early->library_.get();
    inheritance.sequence = &sequence;
    inheritance.readable = [&] {
        std::vector<std::string> readable = readableFor(inputs);
        const std::vector<std::string> always = programFiles(ownFolders(setup));
        readable.insert(readable.end(), always.begin(), always.end());
        return readable;
    };
    while (early->waiting_.size() < count) {
        auto process = WorkerProcess::copy({}, [&](int orders, int answers) {
            return serveAsWorker({orders, answers}, stored, inheritance) ? 0 : 1;
        });
        if (!process) {
            break;
        }
        early->waiting_.push_back(std::move(*process));
    }
    return early;
}

std::unique_ptr<WorkerProcess> EarlyWorkers::take()
{
    if (waiting_.empty()) {
        return nullptr;
    }
    std::unique_ptr<WorkerProcess> first = std::move(waiting_.front());
    waiting_.pop_front();
    return first;
}

} // namespace vantora
