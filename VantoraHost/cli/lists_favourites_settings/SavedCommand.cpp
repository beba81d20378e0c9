#include "VantoraHost/cli/lists_favourites_settings/SavedCommand.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/dialogs/DialogMessages.h"
#include "VantoraHost/cli/arguments/NamedSteps.h"
#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/cli/console/PlainLocale.h"
#include "VantoraHost/core/actions/PreferencesJson.h"
#include "VantoraHost/core/actions/StepStore.h"
#include "VantoraHost/core/reports/Json.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>

#include <algorithm>
#include <memory>
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

void printLine(const SavedEntry& entry, const Streams& streams)
{
    const std::size_t count = entry.steps.size();
    streams.out << shown(entry.name) << "  ("
                << (entry.category.empty() ? "" : shown(entry.category) + ", ")
                << (count == 1 ? shown(entry.steps.front().action)
                               : streams.language.counted(count, "step", "steps"))
                << ", " << shown(entry.file) << ")\n";
}

const char* const requestKeys[] = {"ActionName", "ActionListName", "ActionListCategory",
                                   "ActionListOverwrite", "CollectionName"};

// The options without what only says how they were saved; what is no text as JSON has it.
void printOptions(const PreferencesMap& options, std::ostream& out)
{
    for (auto option = options.begin(); option != options.end(); ++option) {
        const std::string key = option.key().toStdString();
        if (std::find(std::begin(requestKeys), std::end(requestKeys), key) ==
            std::end(requestKeys)) {
            const std::string value = option->type() == QVariant::String
                                          ? option->toString().toStdString()
                                          : preferencesJson({{option.key(), *option}});
            out << "    " << shown(key) << '=' << shown(value) << '\n';
        }
    }
}

int showSaved(const SavedOptions& options, const Streams& streams)
{
    const auto entry = savedEntry({options.kind, options.name});
    if (!entry) {
        return failedWith(streams, false, entry.error());
    }
    if (options.json) {
        printJson(*entry, options.kind, streams.out);
        return AllDone;
    }
    printLine(*entry, streams);
    for (std::size_t i = 0; i < entry->steps.size(); ++i) {
        streams.out << "  " << i + 1 << "  " << shown(entry->steps[i].action) << '\n';
        printOptions(entry->steps[i].stored, streams.out);
    }
    return AllDone;
}

// An application that can draw where there is no display.
std::unique_ptr<QGuiApplication> startWithoutDisplay()
{
    static char name[] = "vantora";
    static char option[] = "-platform";
    static char platform[] = "offscreen";
    // Anew each time, since the application takes out what it has understood.
    static int argumentCount;
    static char* arguments[4];
    argumentCount = 3;
    arguments[0] = name;
    arguments[1] = option;
    arguments[2] = platform;
    arguments[3] = nullptr;
    DropDialogMessages();
    auto application = std::make_unique<QGuiApplication>(argumentCount, arguments);
    keepPlainLocale();
    return application;
}

// As the options dialog gives it to a favourite: the action's selected image.
QIcon iconOf(const Step& step)
{
    return CActionUtils::GetIconForTool(
        step.action.operations->GetDefaultIcon().section('#', 1, 1));
}

Outcome addToList(const SavedOptions& options, const Sequence& sequence)
{
    Outcome done;
    for (const Step& step : sequence.steps()) {
        const bool replaces = options.overwrite && &step == &sequence.steps().front();
        done = replaces ? stepstore::makeActionList(options.name, step, options.category)
                        : stepstore::addToActionList(options.name, step, options.category);
        if (!done) {
            break;
        }
    }
    return done;
}

Outcome add(const SavedOptions& options, const ActionCatalog& catalog, const GuiPartSource& guiPart)
{
    const auto steps = stepsNamed(options.steps, guiPart);
    if (!steps) {
        return tl::unexpected<Error>(steps.error());
    }
    const auto sequence = Sequence::of(*steps, catalog);
    if (!sequence) {
        return tl::unexpected<Error>(sequence.error());
    }
    if (options.kind == SavedKind::ActionList) {
        return addToList(options, *sequence);
    }
    if (sequence->steps().size() > 1) {
        return fail(Reason::SavedStepsUnusable, {}, "only action lists hold several steps");
    }
    const Step& step = sequence->steps().front();
    const auto existing =
        options.overwrite ? stepstore::Existing::Replace : stepstore::Existing::Refuse;
    return options.kind == SavedKind::Favourite
               ? stepstore::makeFavourite(options.name, step, iconOf(step), existing)
               : stepstore::makeToolSettings(options.name, step, existing);
}

// Which step of an entry is meant, from 0.
Result<std::size_t> positionIn(const SavedEntry& entry, const SavedOptions& options)
{
    const std::size_t count = entry.steps.size();
    if (!options.position && count > 1) {
        return fail(Reason::SavedStepMissing, entry.file,
                    "the list has " + grouped(count) + " steps");
    }
    const std::size_t number = options.position.value_or(1);
    if (number > count) {
        return fail(Reason::SavedStepMissing, entry.file,
                    "there is no step " + std::to_string(number) + ", only " +
                        counted(count, "step", "steps"));
    }
    return number - 1;
}

Outcome change(const SavedOptions& options, const ActionCatalog& catalog)
{
    const SavedIn saved{options.kind, options.name};
    const auto entry = savedEntry(saved);
    if (!entry) {
        return tl::unexpected<Error>(entry.error());
    }
    if (!options.changes.empty()) {
        const auto position = positionIn(*entry, options);
        if (!position) {
            return tl::unexpected<Error>(position.error());
        }
        StepRequest step = entry->steps[*position];
        step.options = options.changes;
        const auto sequence = Sequence::of({step}, catalog);
        if (!sequence) {
            return tl::unexpected<Error>(sequence.error());
        }
        const PreferencesMap& accepted = sequence->steps().front().preferences;
        for (const auto& change : options.changes) {
            const QString key = QString::fromStdString(change.first);
            step.stored.insert(key, accepted.value(key));
        }
        if (Outcome done = stepstore::changeStep(saved, *position, step.stored); !done) {
            return done;
        }
    }
    return options.category ? stepstore::changeCategory(saved, *options.category) : Outcome();
}

int removeSaved(const SavedOptions& options, const Streams& streams)
{
    const auto removed = stepstore::remove({options.kind, options.name});
    if (!removed) {
        return failedWith(streams, false, removed.error());
    }
    streams.out << streams.language.text("removed %1", {shown(*removed)}) << '\n';
    return AllDone;
}

Outcome removeStep(const SavedOptions& options)
{
    const SavedIn list{options.kind, options.name};
    return savedEntry(list)
        .and_then([&](const SavedEntry& entry) { return positionIn(entry, options); })
        .and_then([&](std::size_t position) { return stepstore::removeStep(list, position); });
}

int listSaved(const SavedOptions& options, const Streams& streams)
{
    const bool lists = options.kind == SavedKind::ActionList;
    const auto entries = lists ? savedActionLists() : savedFavourites();
    for (const Result<SavedEntry>& entry : entries) {
        if (!entry) {
            printWarning(streams, entry.error().file, "left out: " + entry.error().sentence);
        } else if (options.json) {
            printJson(*entry, options.kind, streams.out);
        } else {
            printLine(*entry, streams);
        }
    }
    if (entries.empty()) {
        printNote(streams, lists ? streams.language.text("no action list is saved")
                                 : streams.language.text("no favourite is saved"));
    }
    return AllDone;
}

} // namespace

int workOnSaved(const SavedOptions& options, const Installation& installation,
                const GuiPartSource& guiPart, const Streams& streams)
{
    const bool mayDraw = options.kind == SavedKind::Favourite;
    const auto application =
        mayDraw && !QCoreApplication::instance() ? startWithoutDisplay() : nullptr;
    if (options.verb == SavedVerb::List) {
        return listSaved(options, streams);
    }
    if (options.verb == SavedVerb::Show) {
        return showSaved(options, streams);
    }
    if (options.verb == SavedVerb::Remove && !options.position) {
        return removeSaved(options, streams);
    }
    const ActionCatalog catalog = ActionCatalog::of(installation.actionFolders);
    const Outcome done = options.verb == SavedVerb::Add      ? add(options, catalog, guiPart)
                         : options.verb == SavedVerb::Change ? change(options, catalog)
                                                             : removeStep(options);
    return done ? showSaved(options, streams) : failedWith(streams, false, done.error());
}

} // namespace vantora::cli
