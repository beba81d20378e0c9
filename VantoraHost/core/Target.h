#pragma once

#include "VantoraHost/core/FileIdentity.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace vantora {

/// The name that stands for standard input and standard output.
inline constexpr char standardStream[] = "-";

/// Where one document's result goes.
struct Target {
    std::string name;   ///< as the caller named it, "-" for standard output
    std::string path;   ///< the file to write; a link there is replaced itself
    std::string backup; ///< the file beside it to keep the original as; empty for no backup

    /// Where in the path the part begins that is looked up in the folder named before it, without
    /// following links; npos when that is the file's name alone.
    std::size_t below = std::string::npos;

    /// The folder that this was when the output was planned, so that one exchanged for another
    /// meanwhile gets nothing; none when nobody knows.
    std::optional<FileIdentity> root;

    /// What the output replaces, as it was when that was planned; none for a new file, and in
    /// place, where it is what is opened.
    std::optional<FileVersion> replaced;

    /// The size in bytes that the input had when its output was planned; none where nobody knows.
    std::optional<std::uint64_t> inputSize;

    /// The input as somebody looked at it, so that nothing else is opened in its place; none where
    /// whatever is there will do.
    std::optional<FileVersion> input;

    bool standardOutput = false;
    bool inPlace = false; ///< whether the input itself is replaced
    bool number = false;  ///< whether to take a copy name when the file exists by then
};

} // namespace vantora
