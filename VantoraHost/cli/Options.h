#pragma once

#include "VantoraHost/core/actions/SavedSteps.h"
#include "VantoraHost/core/actions/Sequence.h"
#include "VantoraHost/core/documents/IfEmpty.h"
#include "VantoraHost/core/outputs/OutputPlan.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <variant>
#include <vector>

namespace vantora::cli {

/// A step as the command line names it: spelled out, or, with no action, in what somebody saved;
/// the options given then count before the saved ones.
struct NamedStep : StepRequest {
    std::optional<SavedIn> saved = {};
};

struct RunOptions {
    std::vector<NamedStep> steps;
    std::vector<std::string> inputs;
    std::string filesFrom;                  ///< a file that names further inputs; empty: none
    bool endedByNull = false;               ///< the names in it end with a zero byte, not a line
    std::optional<Destination> destination; ///< none only in a dry run
    std::string passwordFile;               ///< empty: none
    bool recursive = false;                 ///< inputs that are folders stand for their files
    TakenName taken = TakenName::Refuse;
    Share share;
    std::string reportPath;           ///< empty: none
    std::vector<std::string> resumed; ///< reports of earlier runs
    std::string metricsPath;          ///< where figures for monitoring go; empty: nowhere
    bool keepSigned = false;
    bool strict = false;
    std::optional<IfEmpty> ifEmpty;       ///< none: as suits the destination
    std::vector<Reason> acceptedFailures; ///< those that leave the exit status as it is
    bool skipExisting = false;            ///< leave out inputs whose outputs are newer
    bool dryRun = false;
    bool quiet = false;
    bool json = false;
    std::optional<std::size_t> jobs;          ///< worker processes; 0 for none
    std::optional<int> timeout;               ///< seconds for one document; 0 for no limit
    std::optional<std::uint64_t> memoryLimit; ///< bytes for one worker; 0 for no limit
};

/// Processes documents for a run that started this process; not for people.
struct WorkerOptions {};

struct InfoOptions {
    std::vector<std::string> inputs;
    std::string passwordFile; ///< empty: none
    bool json = false;
};

struct ActionsOptions {
    bool json = false;
};

/// What is done with what somebody saved.
enum class SavedVerb { List, Show, Add, Change, Remove };

struct SavedOptions {
    SavedKind kind = SavedKind::ActionList;
    SavedVerb verb = SavedVerb::List;
    std::string name;                    ///< of all verbs but List; a file's for tool settings
    std::vector<NamedStep> steps;        ///< to add, at least one
    std::optional<std::size_t> position; ///< the step that is meant, from 1
    std::vector<std::pair<std::string, std::string>> changes;
    std::optional<std::string> category;
    bool overwrite = false;
    bool json = false;
};

/// The window of the host that an options dialog is shown inside of.
enum class DialogPlace { Alone, MainWindow, Preview };

struct ConfigureOptions {
    StepRequest step; ///< the options that the dialog starts from
    bool hideAddToActionList = false;
    DialogPlace place = DialogPlace::Alone;
};

using Command = std::variant<RunOptions, WorkerOptions, InfoOptions, ActionsOptions,
                             SavedOptions, ConfigureOptions>;

/// A command line that ends here: help or version, to be printed on standard output with status 0,
/// or a mistake, one line for standard error with status 2.
struct Ending {
    int status;
    std::string text;
};

/// Whether these arguments are for a command that draws, and makes its own application for that.
bool draws(const std::vector<std::string>& arguments);

/// Reads the command line, `arguments` without the program's name.
tl::expected<Command, Ending> parse(const std::vector<std::string>& arguments);

} // namespace vantora::cli
