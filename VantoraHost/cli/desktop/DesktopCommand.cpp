#include "VantoraHost/cli/desktop/DesktopCommand.h"

#include "VantoraHost/cli/console/Messages.h"

#include <unistd.h>

#include <cerrno>

namespace vantora::cli {

int openDesktop(const DesktopOptions& options, const Installation& installation,
                const Streams& streams)
{
    std::string program = installation.desktop.string();
    std::string newWindow = "--new-window";
    std::string endOfOptions = "--";
    std::vector<std::string> files = options.files;
    std::vector<char*> arguments = {program.data()};
    if (options.newWindow) {
        arguments.push_back(newWindow.data());
    }
    arguments.push_back(endOfOptions.data());
    for (std::string& file : files) {
        arguments.push_back(file.data());
    }
    arguments.push_back(nullptr);
    ::execv(program.c_str(), arguments.data());
    const std::string why = errno == ENOENT ? "isn't there, which the package vantora-desktop has"
                                            : "can't be started: " + systemMessage(errno);
    printError(streams, {Reason::LibraryMissing, program, "the program with the window " + why});
    return SomeFailed;
}

} // namespace vantora::cli
