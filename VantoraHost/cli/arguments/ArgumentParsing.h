#pragma once

#include "VantoraHost/cli/arguments/Ending.h"

#include <CLI/CLI.hpp>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <utility>

/// What the commands' arguments are declared and judged with.
namespace vantora::cli {

/// Declares a command of the program.
CLI::App& declareCommand(CLI::App& program, const char* name, const char* what);

/// Lets an option take one value an occurrence, which the help calls `value`.
CLI::Option* oneEach(CLI::Option* option, const char* value);

/// Lets what stands alone on the command line be taken, up to the number of `arguments`.
CLI::Option* takeAll(CLI::Option* option, std::size_t arguments);

/// The end of a command line with a mistake; `helpFor` is the command whose help explains it.
Ending mistake(const std::string& sentence, const std::string& helpFor);

using Setting = std::pair<std::string, std::string>;

/// The two sides of KEY=VALUE, or the mistake.
tl::expected<Setting, std::string> settingOf(const std::string& text);

/// A number with a unit from a list of "letter, factor"; none when it isn't one.
std::optional<std::uint64_t> amountOf(const std::string& text,
                                      std::initializer_list<std::pair<char, std::uint64_t>> units);

} // namespace vantora::cli
