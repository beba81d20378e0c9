#pragma once

#include "VantoraHost/cli/console/InputFiles.h"

#include <CLI/CLI.hpp>

#include <cstddef>
#include <optional>
#include <string>

namespace vantora::cli {

/// The arguments that name documents, as a command has them.
struct InputArguments {
    std::string called = "INPUT"; ///< a document, in the help
    CLI::Option* filesFromOption = nullptr;
    InputNames names; ///< what they are read into
};

/// Declares the documents, --files-from, -0 and -r; `count` is the number of arguments on the
/// command line. `inFolders` says what becomes of the folders of -r. What the arguments are read
/// into must outlive the parsing.
void declareInputs(CLI::App& command, InputArguments& inputs, const char* inFolders,
                   std::size_t count);

/// Declares --password-file.
void declarePasswords(CLI::App& command, std::string& file);

/// What is wrong with how they name documents. They may name none where something else does.
enum class NamedBy { TheseArguments, OthersToo };
std::optional<std::string> inputsMistake(const InputArguments& inputs,
                                         NamedBy by = NamedBy::TheseArguments);

} // namespace vantora::cli
