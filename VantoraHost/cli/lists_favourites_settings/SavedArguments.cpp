#include "VantoraHost/cli/lists_favourites_settings/SavedArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"

#include <charconv>
#include <optional>

namespace vantora::cli {

namespace {

/// How a command speaks of what it is about.
struct KindWords {
    SavedKind kind;
    const char* command;
    const char* what; ///< what the command does
    const char* one;  ///< such as "an action list"
    const char* name; ///< how the help calls what names one
    const char* examples;
};

constexpr KindWords kinds[] = {
    {SavedKind::ActionList, "lists", "List your action lists, or add, show, change or remove one",
     "action list", "NAME", R"(Examples:
  vantora lists
  vantora lists add "Clean scans" --pages 1
  vantora lists add "Clean scans" --action "Delete Pages" --set byPageRangeTextEdit=4-6
  vantora lists show "Clean scans"
  vantora lists change "Clean scans" --step 2 --set byPageRangeTextEdit=5
  vantora lists remove "Clean scans" --step 2
  vantora lists remove "Clean scans"
  vantora run --list "Clean scans" scans/*.pdf -d clean)"},
    {SavedKind::Favourite, "favourites", "List your favourites, or add, show, change or remove one",
     "favourite", "NAME", R"(Examples:
  vantora favourites
  vantora favourites add "Without cover" --pages 1
  vantora favourites show "Without cover"
  vantora favourites change "Without cover" --set byPageRangeTextEdit=1-2
  vantora favourites remove "Without cover"
  vantora run --favourite "Without cover" scans/*.pdf -d clean)"},
    {SavedKind::ToolSettings, "settings", "Add, show, change or remove a tool-settings file",
     "tool-settings file", "FILE", R"(Examples:
  vantora settings add cover.tsf --pages 1
  vantora settings show cover.tsf
  vantora settings change cover.tsf --set byPageRangeTextEdit=1-2
  vantora settings remove cover.tsf
  vantora run --settings cover.tsf scans/*.pdf -d clean)"},
};

void declareChange(CLI::App& command, SavedVerbArguments& verb, bool ofList)
{
    oneEach(command.add_option("--set", verb.changes,
                               "An option of the step and its new value; may be repeated"),
            "KEY=VALUE");
    if (ofList) {
        verb.categoryOption =
            command.add_option("--category", verb.category, "The list's new category");
        verb.categoryOption->option_text("NAME");
    }
}

void declareAdd(CLI::App& command, SavedVerbArguments& verb, bool toList)
{
    declareSteps(command, verb.steps);
    if (toList) {
        verb.categoryOption = command.add_option("--category", verb.category,
                                                 "The list's category (Default where it is new)");
        verb.categoryOption->option_text("NAME");
    }
    command.add_flag("--overwrite", verb.options.overwrite,
                     toList ? "Replace a list of that name instead of adding to it"
                            : "Replace what there is of that name");
}

struct VerbWords {
    SavedVerb verb;
    const char* name;
    const char* what;
};

constexpr VerbWords verbs[] = {
    {SavedVerb::Show, "show", "Show its steps with their options"},
    {SavedVerb::Add, "add", "Make one, or add steps to an action list"},
    {SavedVerb::Change, "change", "Change options of it"},
    {SavedVerb::Remove, "remove", "Remove it"},
};

void declareVerb(const KindWords& kind, const VerbWords& words, CLI::App& parent,
                 SavedVerbArguments& verb)
{
    const bool isList = kind.kind == SavedKind::ActionList;
    CLI::App& command = *parent.add_subcommand(words.name, words.what);
    verb.command = &command;
    verb.options.kind = kind.kind;
    verb.options.verb = words.verb;
    command.add_option(kind.name, verb.options.name, std::string("The ") + kind.one)
        ->required()
        ->option_text(" ");
    if (words.verb == SavedVerb::Show) {
        command.add_flag("--json", verb.options.json, "Print a JSON object");
    } else if (words.verb == SavedVerb::Add) {
        declareAdd(command, verb, isList);
    } else if (words.verb == SavedVerb::Change) {
        declareChange(command, verb, isList);
    }
    if (isList && (words.verb == SavedVerb::Change || words.verb == SavedVerb::Remove)) {
        verb.positionOption =
            command.add_option("--step", verb.position, "Only this step of it, from 1");
        verb.positionOption->option_text("N");
    }
}

// What is wrong with the arguments of a verb, which are read into its options.
std::optional<std::string> readVerb(SavedVerbArguments& verb)
{
    SavedOptions& options = verb.options;
    if (verb.categoryOption && verb.categoryOption->count() > 0) {
        options.category = verb.category;
    }
    if (verb.positionOption && verb.positionOption->count() > 0) {
        std::size_t number = 0;
        const char* const last = verb.position.data() + verb.position.size();
        const auto [end, failed] = std::from_chars(verb.position.data(), last, number);
        if (failed != std::errc() || end != last || number == 0) {
            return "--step takes the number of a step, from 1, not " + verb.position;
        }
        options.position = number;
    }
    for (const std::string& text : verb.changes) {
        auto setting = settingOf(text);
        if (!setting) {
            return setting.error();
        }
        options.changes.push_back(std::move(*setting));
    }
    if (options.verb == SavedVerb::Change && options.changes.empty() && !options.category) {
        return "nothing to change: say what with --set KEY=VALUE";
    }
    if (options.verb == SavedVerb::Change && options.changes.empty() && options.position) {
        return "--step goes with --set";
    }
    if (options.verb == SavedVerb::Add) {
        auto steps = stepsOf(verb.steps);
        if (!steps) {
            return steps.error();
        }
        if (options.kind != SavedKind::ActionList && steps->size() > 1) {
            return std::string("one step is kept here; only action lists hold several");
        }
        options.steps = std::move(*steps);
    }
    return std::nullopt;
}

void declareKind(CLI::App& program, const KindWords& words, SavedKindArguments& kind)
{
    kind.command = &declareCommand(program, words.command, words.what);
    kind.command->footer(words.examples);
    kind.listing.kind = words.kind;
    for (std::size_t i = 0; i < kind.verbs.size(); ++i) {
        declareVerb(words, verbs[i], *kind.command, kind.verbs[i]);
    }
    kind.command->require_subcommand(0, 1);
    if (words.kind != SavedKind::ToolSettings) {
        kind.command->add_flag("--json", kind.listing.json,
                               std::string("Print one JSON object per ") + words.one);
    }
}

} // namespace

void declareSaved(CLI::App& program, SavedArguments& saved)
{
    for (std::size_t i = 0; i < saved.kinds.size(); ++i) {
        declareKind(program, kinds[i], saved.kinds[i]);
    }
}

tl::expected<SavedOptions, Ending> finished(SavedArguments& saved, const std::string& command)
{
    for (SavedKindArguments& kind : saved.kinds) {
        if (kind.command->get_name() != command) {
            continue;
        }
        for (SavedVerbArguments& verb : kind.verbs) {
            if (!verb.command->parsed()) {
                continue;
            }
            if (const auto wrong = readVerb(verb)) {
                return tl::unexpected<Ending>(
                    mistake(*wrong, command + ' ' + verb.command->get_name()));
            }
            return std::move(verb.options);
        }
        if (kind.listing.kind != SavedKind::ToolSettings) {
            return kind.listing;
        }
    }
    return tl::unexpected<Ending>(mistake(
        "these files lie anywhere; say what to do with one: show, add, change or remove", command));
}

} // namespace vantora::cli
