#include "VantoraHost/cli/worker/WorkerCommand.h"

#include "VantoraHost/core/pictures/PictureService.h"
#include "VantoraHost/core/workers/WorkerService.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

namespace vantora::cli {

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
    const bool served = options.makesPictures ? servePictures(channel)
                                              : serveAsWorker(channel, storedReader(guiPart));
    // Everything is written; taking the process apart would only cost time.
    std::_Exit(served ? AllDone : WrongUsage);
}

} // namespace vantora::cli
