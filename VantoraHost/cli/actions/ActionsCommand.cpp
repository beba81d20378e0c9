#include "VantoraHost/cli/actions/ActionsCommand.h"

#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/core/actions/ActionCatalog.h"
#include "VantoraHost/core/reports/Json.h"

#include <ostream>

namespace vantora::cli {

namespace {

void printAction(const Action& action, bool json, std::ostream& out)
{
    CActionInterface& operations = *action.operations;
    const std::string group = operations.GetGroupName().toStdString();
    if (!json) {
        out << shown(action.name) << "  (" << shown(group) << ", "
            << shown(action.file.path.native()) << ")\n";
        return;
    }
    JsonObject object;
    object.add("schema", 1)
        .add("name", action.name)
        .add("display_name", operations.GetDisplayName().toStdString())
        .add("group", group)
        .add("help", operations.GetActionHelp().toStdString())
        .add("flags", operations.GetActionFlags())
        .add("identifier", action.file.identifier)
        .add("file", action.file.path.native());
    out << object.text() << '\n';
}

} // namespace

int listActions(const ActionsOptions& options, const Installation& installation,
                const Streams& streams)
{
    const ActionCatalog catalog = ActionCatalog::of(installation.actionFolders);
    bool unusable = false;
    for (const ActionFile& file : catalog.actions()) {
        const Result<Action> action = ActionCatalog::load(file);
        if (action) {
            printAction(*action, options.json, streams.out);
        } else {
            unusable = true;
            printError(streams, action.error());
        }
    }
    for (const Error& rejected : catalog.rejected()) {
        printWarning(streams, rejected.file, "left out: " + rejected.sentence);
    }
    if (installation.leftOut) {
        printWarning(streams, installation.leftOut->file,
                     "left out: " + installation.leftOut->sentence);
    }
    if (catalog.actions().empty()) {
        printError(streams, {Reason::ActionUnusable, {}, "no action is installed"});
        return SomeFailed;
    }
    return unusable ? SomeFailed : AllDone;
}

} // namespace vantora::cli
