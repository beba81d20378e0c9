#pragma once

#include "VantoraHost/cli/arguments/NamedStep.h"

#include <CLI/CLI.hpp>

#include <string>
#include <tl/expected.hpp>
#include <utility>
#include <vector>

namespace vantora::cli {

/// What the arguments that choose pages by what they are are read into.
struct ChoiceArguments {
    std::vector<std::string> choose;
    std::vector<std::string> keep;
    std::vector<std::string> except;
};

/// Declares --choose, --keep and --except; what they are read into must outlive the parsing.
void declareChoices(CLI::App& command, ChoiceArguments& choices);

/// The choices as options of a step; empty for none.
std::vector<std::pair<std::string, std::string>> optionsOf(const ChoiceArguments& choices);

/// What the arguments that name steps are read into.
struct StepArguments : ChoiceArguments {
    CLI::App* command = nullptr;
    std::vector<std::string> pages;
    std::vector<std::string> actions;
    std::vector<std::string> lists;
    std::vector<std::string> favourites;
    std::vector<std::string> toolSettings;
    std::vector<std::string> settings;
    CLI::Option* pagesOption = nullptr;
    CLI::Option* actionOption = nullptr;
    CLI::Option* listOption = nullptr;
    CLI::Option* favouriteOption = nullptr;
    CLI::Option* toolSettingsOption = nullptr;
    CLI::Option* setOption = nullptr;

    /// Whether any of them is on the command line.
    bool areGiven() const;
};

/// Declares the arguments that name steps; what they are read into must outlive the parsing.
void declareSteps(CLI::App& command, StepArguments& steps);

/// The step that removes of each document the pages that a list of ranges has for it.
NamedStep stepOfOwnRanges();

/// The steps in the order of the command line, at least one, or the mistake in them.
tl::expected<std::vector<NamedStep>, std::string> stepsOf(const StepArguments& arguments);

} // namespace vantora::cli
