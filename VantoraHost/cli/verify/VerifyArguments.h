#pragma once

#include "VantoraHost/cli/arguments/Ending.h"
#include "VantoraHost/cli/arguments/WorkerArguments.h"
#include "VantoraHost/cli/verify/VerifyCommand.h"

#include <CLI/CLI.hpp>

#include <tl/expected.hpp>

namespace vantora::cli {

/// What the arguments of the command "verify" are read into.
struct VerifyArguments {
    WorkerArguments workers;
    CLI::Option* pagesOption = nullptr;
    CLI::Option* rangesOption = nullptr;
    CLI::Option* reportOption = nullptr;
    VerifyOptions options;
};

/// Declares the command. What it is read into must outlive the parsing.
void declareVerify(CLI::App& program, VerifyArguments& verify);

/// The options that the arguments say, or the mistake in them.
tl::expected<VerifyOptions, Ending> finished(VerifyArguments& verify);

} // namespace vantora::cli
