#include "VantoraHost/cli/worker/WorkerCommand.h"

#include "VantoraHost/core/pictures/PictureService.h"
#include "VantoraHost/core/workers/WorkerService.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

namespace vantora::cli {

namespace {

bool serve(WorkerOptions::Work work, const WorkerChannel& channel, const GuiPartSource& guiPart)
{
    switch (work) {
    case WorkerOptions::Work::Pictures:
        return servePictures(channel);
    case WorkerOptions::Work::Certificates: {
        const auto part = guiPart();
        return part && (*part)->drawCertificates(channel);
    }
    case WorkerOptions::Work::Documents:
        break;
    }
    return serveAsWorker(channel, storedReader(guiPart));
}

} // namespace

StoredReader storedReader(const GuiPartSource& guiPart)
{
    return [&guiPart](const QByteArray& bytes) -> std::optional<PreferencesMap> {
        const auto part = guiPart();
        return part ? (*part)->options(bytes) : std::nullopt;
    };
}

int work(const WorkerOptions& options, const GuiPartSource& guiPart, const Streams& streams)
{
    // What an action or a library prints must not come between the answers.
    const WorkerChannel channel = {streams.in, ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3)};
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    const bool served = serve(options.work, channel, guiPart);
    // Everything is written; taking the process apart would only cost time.
    std::_Exit(served ? AllDone : WrongUsage);
}

} // namespace vantora::cli
