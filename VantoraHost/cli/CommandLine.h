#pragma once

#include "VantoraHost/cli/actions/ActionsCommand.h"
#include "VantoraHost/cli/arguments/Ending.h"
#include "VantoraHost/cli/completion/CompletionCommand.h"
#include "VantoraHost/cli/configuration/ConfigCommand.h"
#include "VantoraHost/cli/configure/ConfigureCommand.h"
#include "VantoraHost/cli/desktop/DesktopCommand.h"
#include "VantoraHost/cli/info/InfoCommand.h"
#include "VantoraHost/cli/lists_favourites_settings/SavedCommand.h"
#include "VantoraHost/cli/pages/PagesCommand.h"
#include "VantoraHost/cli/run/RunOptions.h"
#include "VantoraHost/cli/undo/UndoCommand.h"
#include "VantoraHost/cli/verify/VerifyCommand.h"
#include "VantoraHost/cli/watch/WatchOptions.h"
#include "VantoraHost/cli/worker/WorkerCommand.h"
#include "VantoraHost/core/language/Language.h"

#include <string>
#include <tl/expected.hpp>
#include <variant>
#include <vector>

namespace vantora::cli {

/// What a command line says to do: a command with its options.
using Command = std::variant<RunOptions, WatchOptions, WorkerOptions, PagesOptions, InfoOptions,
                             VerifyOptions, UndoOptions, ActionsOptions, SavedOptions,
                             ConfigOptions, ConfigureOptions, DesktopOptions, CompletionOptions>;

/// Whether these arguments are for a command that draws, and makes its own application for that.
bool draws(const std::vector<std::string>& arguments);

/// Reads the command line, `arguments` without the program's name, with what the user's
/// configuration adds to it. Helps are in the language given; mistakes are English.
tl::expected<Command, Ending> parse(const std::vector<std::string>& arguments,
                                    const Language& language = {});

/// All that helps and completion say, in English, for those who translate it.
std::vector<std::string> helpTexts();

} // namespace vantora::cli
