#include "VantoraHost/cli/SavedListCommand.h"

#include "VantoraHost/cli/Messages.h"
#include "VantoraHost/core/actions/PreferencesJson.h"
#include "VantoraHost/core/actions/SavedSteps.h"
#include "VantoraHost/core/reports/Json.h"

#include <ostream>

namespace vantora::cli {

namespace {

JsonObject stepObject(const StepRequest& step)
{
    JsonObject object;
    object.add("action", step.action).addJson("options", preferencesJson(step.stored));
    return object;
}

void printJson(const SavedEntry& entry, SavedKind kind, std::ostream& out)
{
    JsonObject object;
    object.add("schema", 1).add("name", entry.name);
    if (kind == SavedKind::ActionList) {
        object.add("category", entry.category);
    }
    std::vector<JsonObject> steps;
    for (const StepRequest& step : entry.steps) {
        steps.push_back(stepObject(step));
    }
    out << object.add("file", entry.file).add("steps", steps).text() << '\n';
}

void printLine(const SavedEntry& entry, std::ostream& out)
{
    const std::size_t count = entry.steps.size();
    out << shown(entry.name) << "  ("
        << (entry.category.empty() ? "" : shown(entry.category) + ", ")
        << (count == 1 ? shown(entry.steps.front().action) : grouped(count) + " steps") << ", "
        << shown(entry.file) << ")\n";
}

} // namespace

int listSaved(const SavedListOptions& options, const Streams& streams)
{
    const bool lists = options.kind == SavedKind::ActionList;
    const auto entries = lists ? savedActionLists() : savedFavourites();
    for (const Result<SavedEntry>& entry : entries) {
        if (!entry) {
            printWarning(streams, entry.error().file, "left out: " + entry.error().sentence);
        } else if (options.json) {
            printJson(*entry, options.kind, streams.out);
        } else {
            printLine(*entry, streams.out);
        }
    }
    if (entries.empty()) {
        printNote(streams, lists ? "no action list is saved" : "no favourite is saved");
    }
    return AllDone;
}

} // namespace vantora::cli
