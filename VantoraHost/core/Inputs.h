#pragma once

#include "VantoraHost/core/Error.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantora {

/// A document of a run.
struct Input {
    std::string path;        ///< as named by the caller, "-" for standard input
    std::size_t placeAt = 0; ///< where in the path the part begins that an output folder repeats
    bool leftAlone = false;  ///< not for this run, but it keeps its place among the outputs
    std::optional<std::string> range = {}; ///< its own pages, where a list of ranges names it

    std::string_view place() const { return std::string_view(path).substr(placeAt); }
};

/// An input that is named itself; its place is its file name.
Input inputNamed(std::string path);

bool isFolder(const std::string& path);

/// One text for paths that differ only in needless parts.
std::string normalPath(const std::string& path);

/// Whether the contents of a folder can be listed and opened; the error is that they can't.
Outcome folderIsReadable(const std::string& folder);

/// The PDF files in a folder and its subfolders, in the order and by the rules of
/// CActionUtils::SearchFilesInDir: neither hidden ones nor links. Their paths begin with the folder
/// as it is named here, and their places are what follows. Subfolders that can't be read come last,
/// so that the run names them among what it can't read. What is in the folder `outputs` is left out
/// when it lies below the folder, since it comes from an earlier run; empty for none. The error is
/// that the folder itself can't be read.
Result<std::vector<Input>> inputsBelow(const std::string& folder, const std::string& outputs);

/// One of several shares of the inputs, so that a run can be spread over machines.
struct Share {
    std::size_t number = 1; ///< from 1
    std::size_t count = 1;

    /// Whether an input belongs to this share. That depends on its name alone, so that it is the
    /// same on every machine and in every version that is given the same names.
    bool holds(std::string_view path) const;
};

} // namespace vantora
