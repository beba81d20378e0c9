#pragma once

#include <string>
#include <string_view>

namespace vantora {

/// Text that came from outside (a file's name, its title), fit for one line that a person reads:
/// control characters, bytes that are not UTF-8, and characters that reorder the line, end it or
/// can't be seen are shown as \n, \x1b, \u202e and so on.
std::string shown(std::string_view text);

} // namespace vantora
