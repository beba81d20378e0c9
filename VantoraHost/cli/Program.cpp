#include "VantoraHost/cli/Program.h"

#include "VantoraHost/cli/CommandLine.h"
#include "VantoraHost/cli/actions/ActionsCommand.h"
#include "VantoraHost/cli/completion/CompletionCommand.h"
#include "VantoraHost/cli/configuration/ConfigCommand.h"
#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/cli/desktop/DesktopCommand.h"
#include "VantoraHost/cli/info/InfoCommand.h"
#include "VantoraHost/cli/pages/PagesCommand.h"
#include "VantoraHost/cli/run/RunCommand.h"
#include "VantoraHost/cli/undo/UndoCommand.h"
#include "VantoraHost/cli/verify/VerifyCommand.h"
#include "VantoraHost/cli/watch/WatchCommand.h"
#include "VantoraHost/cli/worker/WorkerCommand.h"
#include "VantoraHost/core/reports/FailureJson.h"

#include <algorithm>
#include <exception>
#include <new>
#include <ostream>

namespace vantora::cli {

namespace {

int carryOutWith(const Result<const GuiPart*>& guiPart, const Command& command,
                 const Installation& installation, const Streams& streams)
{
    if (!guiPart) {
        printError(streams, guiPart.error());
        return SomeFailed;
    }
    if (const auto* options = std::get_if<ConfigureOptions>(&command)) {
        return (*guiPart)->configure(*options, installation, streams);
    }
    return (*guiPart)->saved(std::get<SavedOptions>(command), installation, streams);
}

int carryOut(const Command& command, const Installation& installation, const GuiPartSource& guiPart,
             const Streams& streams)
{
    if (const auto* options = std::get_if<RunOptions>(&command)) {
        return run(*options, installation, guiPart, streams);
    }
    if (const auto* options = std::get_if<WatchOptions>(&command)) {
        return watch(*options, installation, guiPart, streams);
    }
    if (const auto* options = std::get_if<WorkerOptions>(&command)) {
        return work(*options, guiPart, streams);
    }
    if (const auto* options = std::get_if<PagesOptions>(&command)) {
        return showPages(*options, installation, streams);
    }
    if (const auto* options = std::get_if<InfoOptions>(&command)) {
        return showInfo(*options, installation, streams);
    }
    if (const auto* options = std::get_if<VerifyOptions>(&command)) {
        return verifyRemovals(*options, installation, streams);
    }
    if (const auto* options = std::get_if<UndoOptions>(&command)) {
        return undoRun(*options, streams);
    }
    if (const auto* options = std::get_if<ActionsOptions>(&command)) {
        return listActions(*options, installation, streams);
    }
    if (const auto* options = std::get_if<ConfigOptions>(&command)) {
        return showConfiguration(*options, streams);
    }
    if (const auto* options = std::get_if<DesktopOptions>(&command)) {
        return openDesktop(*options, installation, streams);
    }
    if (const auto* options = std::get_if<CompletionOptions>(&command)) {
        return complete(*options, installation, guiPart, streams);
    }
    return carryOutWith(guiPart(), command, installation, streams);
}

int statusOf(const std::vector<std::string>& arguments, const Installation& installation,
             const GuiPartSource& guiPart, const Streams& streams)
{
    const auto command = parse(arguments, streams.language);
    if (command) {
        return carryOut(*command, installation, guiPart, streams);
    }
    if (command.error().status == AllDone) {
        streams.out << command.error().text;
    } else {
        printNote(streams, mistakeText(command.error(), streams.language));
        if (std::find(arguments.begin(), arguments.end(), "--json") != arguments.end()) {
            streams.out << failureJson({Reason::WrongUsage, {}, mistakeText(command.error(), {})},
                                       std::nullopt)
                        << '\n';
        }
    }
    return command.error().status;
}

} // namespace

int runProgram(const std::vector<std::string>& arguments, const Installation& installation,
               const GuiPartSource& guiPart, const Streams& streams)
{
    int status = SomeFailed;
    try {
        status = statusOf(arguments, installation, guiPart, streams);
    } catch (const std::bad_alloc&) {
        printError(streams, {Reason::OutOfMemory, {}, "there is not enough memory"});
    } catch (const std::exception& error) {
        printError(streams, {Reason::LibraryFailed, {}, error.what()});
    }
    if (status == AllDone && !streams.out.flush()) {
        printError(streams, {Reason::OutputNotWritable, {}, "standard output can't be written"});
        status = SomeFailed;
    }
    return status;
}

} // namespace vantora::cli
