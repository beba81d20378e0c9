#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantora {

/// SHA-256 in hexadecimal digits.
std::string sha256Of(std::string_view bytes);

/// That of an open file, from its beginning; its offset stays. None when it can't be read.
std::optional<std::string> sha256Of(int descriptor);

/// That of the file that a path leads to; none when it is no file, or can't be read.
std::optional<std::string> sha256OfFile(const std::string& path);

} // namespace vantora
