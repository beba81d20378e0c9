#pragma once

#include "VantoraHost/cli/arguments/NamedStep.h"
#include "VantoraHost/cli/arguments/WorkerOptions.h"
#include "VantoraHost/cli/console/InputFiles.h"
#include "VantoraHost/core/documents/IfEmpty.h"
#include "VantoraHost/core/outputs/OutputPlan.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantora::cli {

/// What the command line says about a run.
struct RunOptions {
    std::vector<NamedStep> steps;
    InputNames inputs;                      ///< none where the list of ranges names them
    std::string rangesPath;                 ///< a list of each document's own range; empty: none
    std::optional<Destination> destination; ///< none only in a dry run
    std::string passwordFile;               ///< empty: none
    TakenName taken = TakenName::Refuse;
    Share share;
    std::string reportPath;                  ///< empty: none
    bool reportHashes = false;               ///< with the SHA-256 of each input
    std::vector<std::string> resumed;        ///< reports of earlier runs
    std::string metricsPath;                 ///< where figures for monitoring go; empty: nowhere
    std::optional<Destination> certificates; ///< none: none are written
    std::vector<std::string> arguments;      ///< with the configuration's, for certificates
    std::string checksumsPath;               ///< empty: none
    bool keepSigned = false;
    bool strict = false;
    bool verify = false;                  ///< verify outputs before they get their names
    bool salvage = false;                 ///< do damaged documents with losses
    std::optional<IfEmpty> ifEmpty;       ///< none: as suits the destination
    std::vector<Reason> acceptedFailures; ///< those that leave the exit status as it is
    bool skipExisting = false;            ///< leave out inputs whose outputs are newer
    bool dryRun = false;
    bool quiet = false;
    bool verbose = false; ///< say what stays and may repeat what removed pages said
    bool json = false;
    WorkerChoice workers;
};

} // namespace vantora::cli
