#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/gui_part/GuiPart.h"
#include "VantoraHost/core/Installation.h"

#include <string>
#include <vector>

namespace vantora::cli {

/// The name of the hidden command that completes command lines for shells.
constexpr char completeCommand[] = "complete";

/// What a word may become that somebody is typing.
struct CompletionOptions {
    /// Names that somebody has given.
    enum class Names { None, Actions, Lists, Favourites, Profiles };

    struct Candidate {
        std::string text;
        std::string what; ///< one line for a person; may be empty
    };

    std::string before; ///< what stands in the word already and stays, such as "--list="
    std::string begun;  ///< what follows it, which candidates begin with
    std::vector<Candidate> candidates;
    Names names = Names::None; ///< candidates, too
    /// Files are, too: "folders", "files", or "files pdf" for those that end so.
    std::vector<std::string> files;
};

/// Prints a line for each candidate, with a tab before what it is; a line that begins with a colon
/// is one of CompletionOptions::files. Returns the exit status.
int complete(const CompletionOptions& options, const Installation& installation,
             const GuiPartSource& guiPart, const Streams& streams);

} // namespace vantora::cli
