#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>

namespace vantora {

/// Reads an open file or pipe to its end, but once there is more than `most`, only some of that. An
/// errno value when it fails, which is EINTR once `cancelled` says so.
tl::expected<std::string, int> textOf(
    int descriptor, std::size_t most,
    const std::function<bool()>& cancelled = [] { return false; });

/// Writes all of a text to an open file or pipe; false when that fails.
bool writeText(int descriptor, std::string_view text);

} // namespace vantora
