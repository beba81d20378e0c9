#pragma once

#include "VantoraHost/core/Error.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vantora {

/// How outputs are named after their inputs: a text with {name} for the input's file name without
/// its extension, {ext} for the extension with its dot, and {number} for the input's number in the
/// run, with as many leading zeroes as the last one needs. {{ and }} stand for braces.
class OutputName {
public:
    /// The error is what is wrong with the text, fit to follow it.
    static tl::expected<OutputName, std::string> of(std::string_view text);

    /// The file name for an input called `fileName`, the `number`th of `total`, from 1.
    std::string of(std::string_view fileName, std::size_t number, std::size_t total) const;

private:
    enum class Kind { Text, Name, Extension, Number };
    struct Part {
        Kind kind;
        std::string text;
    };
    std::vector<Part> parts_;
};

} // namespace vantora
