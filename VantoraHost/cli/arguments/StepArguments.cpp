#include "VantoraHost/cli/arguments/StepArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"
#include "VantoraHost/core/actions/DeletePagesOptions.h"
#include "VantoraHost/core/choices/StepChoices.h"

#include <algorithm>
#include <map>
#include <optional>

namespace vantora::cli {

void declareChoices(CLI::App& command, ChoiceArguments& choices)
{
    oneEach(command.add_option("--choose", choices.choose,
                               "The pages that this names in each document go, such as last:2,\n"
                               "even, label:iv-x, bookmark:Index, text:Draft or size:A4;\n"
                               "several: the pages of any of them"),
            "CHOICE");
    oneEach(command.add_option("--keep", choices.keep,
                               "All pages go but those of this choice, or of any of several"),
            "CHOICE");
    oneEach(command.add_option("--except", choices.except,
                               "Pages that --choose or --keep leave in any case"),
            "CHOICE");
}

void declareSteps(CLI::App& command, StepArguments& run)
{
    run.command = &command;
    run.pagesOption =
        oneEach(command.add_option("-p,--pages", run.pages,
                                   "Remove these pages, for example 1,4-6,9-15,21, or those that\n"
                                   "a file names whose name follows an @; short for\n"
                                   "--action \"Delete Pages\" --set byPageRangeTextEdit=RANGE"),
                "RANGE");
    declareChoices(command, run);
    run.actionOption =
        oneEach(command.add_option("--action", run.actions,
                                   "Run this action; several run one after the other"),
                "NAME");
    run.listOption = oneEach(
        command.add_option("--list", run.lists,
                           "Run this action list: one of yours, or a file that ends in .xqq"),
        "NAME|FILE");
    run.favouriteOption = oneEach(
        command.add_option("--favourite,--favorite", run.favourites, "Run this favourite of yours"),
        "NAME");
    run.toolSettingsOption =
        oneEach(command.add_option("--settings", run.toolSettings,
                                   "Run the action of this tool-settings file (.tsf)"),
                "FILE");
    run.setOption = oneEach(command.add_option("--set", run.settings,
                                               "An option of the action, favourite or settings\n"
                                               "file before it; may be repeated"),
                            "KEY=VALUE");
}

namespace {

NamedStep savedStep(SavedKind kind, const std::string& name)
{
    NamedStep step;
    step.saved = SavedIn{kind, name};
    return step;
}

// The step that one of the options names, the `index`th of its kind.
NamedStep stepOf(const StepArguments& run, const CLI::Option* option, std::size_t index)
{
    if (option == run.listOption) {
        return savedStep(SavedKind::ActionList, run.lists[index]);
    }
    if (option == run.favouriteOption) {
        return savedStep(SavedKind::Favourite, run.favourites[index]);
    }
    if (option == run.toolSettingsOption) {
        return savedStep(SavedKind::ToolSettings, run.toolSettings[index]);
    }
    NamedStep step;
    if (option == run.pagesOption) {
        step.action = deletepages::actionName;
        step.options = {{deletepages::rangeKey, run.pages[index]}};
    } else {
        step.action = run.actions[index];
    }
    return step;
}

// The step that removes pages by what they are; none when no choice is given.
std::optional<NamedStep> stepOfChoices(const StepArguments& run)
{
    NamedStep step;
    step.action = deletepages::actionName;
    step.options = optionsOf(run);
    return step.options.empty() ? std::nullopt : std::optional(step);
}

} // namespace

std::vector<std::pair<std::string, std::string>> optionsOf(const ChoiceArguments& choices)
{
    std::vector<std::pair<std::string, std::string>> options;
    for (const auto& [key, given] : {std::pair(chooseKey, &choices.choose),
                                     {keepKey, &choices.keep},
                                     {exceptKey, &choices.except}}) {
        std::string lines;
        for (const std::string& choice : *given) {
            lines += choice + "\n";
        }
        if (!lines.empty()) {
            options.emplace_back(key, lines);
        }
    }
    return options;
}

bool StepArguments::areGiven() const
{
    const auto all = {&pages, &choose,     &keep,         &except,  &actions,
                      &lists, &favourites, &toolSettings, &settings};
    return std::any_of(all.begin(), all.end(), [](const auto* some) { return !some->empty(); });
}

NamedStep stepOfOwnRanges()
{
    NamedStep step;
    step.action = deletepages::actionName;
    step.options = {{ownRangesKey, "yes"}};
    return step;
}

// The parser keeps them apart by option.
tl::expected<std::vector<NamedStep>, std::string> stepsOf(const StepArguments& run)
{
    std::vector<NamedStep> steps;
    std::map<const CLI::Option*, std::size_t> counts;
    const CLI::Option* latest = nullptr;
    for (const CLI::Option* option : run.command->parse_order()) {
        if (option == run.setOption) {
            const std::string& text = run.settings[counts[option]++];
            auto setting = settingOf(text);
            if (!setting) {
                return tl::unexpected<std::string>(std::move(setting.error()));
            }
            if (!latest || latest == run.pagesOption) {
                return tl::unexpected<std::string>("--set " + text + " stands before any --action");
            }
            if (latest == run.listOption) {
                return tl::unexpected<std::string>("--set " + text +
                                                   " stands after a --list, which has its own");
            }
            steps.back().options.push_back(std::move(*setting));
        } else if (option == run.pagesOption || option == run.actionOption ||
                   option == run.listOption || option == run.favouriteOption ||
                   option == run.toolSettingsOption) {
            steps.push_back(stepOf(run, option, counts[option]++));
            latest = option;
        }
    }
    if (const auto chosen = stepOfChoices(run)) {
        if (!steps.empty()) {
            return tl::unexpected<std::string>("--choose, --keep and --except say what goes; leave "
                                               "out --pages, actions and lists");
        }
        steps.push_back(*chosen);
    }
    if (steps.empty()) {
        return tl::unexpected<std::string>("nothing to do: name the pages to remove with --pages "
                                           "RANGE (or an action, a list or a favourite)");
    }
    return steps;
}

} // namespace vantora::cli
