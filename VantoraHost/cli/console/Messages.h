#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/Figures.h"
#include "VantoraHost/core/ShownText.h"

#include <string>
#include <vector>

namespace vantora::cli {

/// An input's name for people: "standard input" for "-".
std::string inputName(const std::string& input, const Language& language = {});

/// What a person can do about it, such as "use --overwrite to replace it"; empty when the sentence
/// says it all.
std::string remedy(Reason reason);

/// Prints "vantora: error: FILE: sentence; remedy" as one line, which is where the error's English
/// becomes the person's language.
void printError(const Streams& streams, const Error& error);

/// Prints an error that ends a whole command, with `json` also as an object on the output: like a
/// document's report, with the file that the error is about, if any, as its input.
void printFailure(const Streams& streams, bool json, const Error& error);

/// The exit status that goes with an error that ends a whole command.
ExitStatus exitStatus(Reason reason);

/// Prints such an error, and returns the exit status that goes with it.
ExitStatus failedWith(const Streams& streams, bool json, const Error& error);

/// Prints "vantora: warning: FILE: sentence" as one line, from an English sentence.
void printWarning(const Streams& streams, const std::string& file, const std::string& sentence);

/// Prints what was repaired in a file as one warning: the first repair, and how many more.
void printRepairs(const Streams& streams, const std::string& file,
                  const std::vector<std::string>& repairs);

/// Prints "vantora: sentence" as one line, of a sentence in the person's language.
void printNote(const Streams& streams, const std::string& sentence);

} // namespace vantora::cli
