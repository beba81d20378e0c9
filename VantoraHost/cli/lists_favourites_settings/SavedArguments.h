#pragma once

#include "VantoraHost/cli/arguments/Ending.h"
#include "VantoraHost/cli/arguments/StepArguments.h"
#include "VantoraHost/cli/lists_favourites_settings/SavedCommand.h"

#include <array>
#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace vantora::cli {

/// What the arguments of one verb of "lists", "favourites" or "settings" are read into.
struct SavedVerbArguments {
    CLI::App* command = nullptr;
    StepArguments steps;
    std::vector<std::string> changes;
    std::string category;
    std::string position;
    CLI::Option* categoryOption = nullptr;
    CLI::Option* positionOption = nullptr;
    SavedOptions options;
};

/// What those of one of these commands are read into.
struct SavedKindArguments {
    CLI::App* command = nullptr;
    SavedOptions listing;
    std::array<SavedVerbArguments, 4> verbs;
};

/// What those of all three are read into.
struct SavedArguments {
    std::array<SavedKindArguments, 3> kinds;
};

/// Declares the commands. What they are read into must outlive the parsing.
void declareSaved(CLI::App& program, SavedArguments& saved);

/// The options that the arguments of one of the commands say, or the mistake in them.
tl::expected<SavedOptions, Ending> finished(SavedArguments& saved, const std::string& command);

} // namespace vantora::cli
