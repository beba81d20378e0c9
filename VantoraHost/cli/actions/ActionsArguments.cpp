#include "VantoraHost/cli/actions/ActionsArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"

namespace vantora::cli {

void declareActions(CLI::App& program, ActionsOptions& actions)
{
    CLI::App& command = declareCommand(program, "actions", "List the actions that are installed");
    command.add_flag("--json", actions.json, "Print one JSON object per action");
}

} // namespace vantora::cli
