#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Messages of any bytes, one after the other, each with its length in front.
namespace vantora {

/// The longest that a worker may say. The report of a million pages takes less than a tenth.
inline constexpr std::size_t longestMessage = 64 * 1024 * 1024;

std::string framed(std::string_view message);

/// Takes the first message off what has come; none when it isn't all there yet.
std::optional<std::string> takeMessage(std::string_view& received);

/// Whether what has come begins with a message that is longer than a worker may say.
bool isTooLong(std::string_view received);

} // namespace vantora
