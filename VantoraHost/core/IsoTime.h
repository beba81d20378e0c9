#pragma once

#include <cstdint>
#include <string>

namespace vantora {

/// A time in nanoseconds since 1970 in ISO 8601, in UTC: "2026-11-25T22:01:19.123456789Z".
std::string isoTime(std::int64_t nanoseconds);

/// The same of the decimal text that FileState has; empty when it is none.
std::string isoTime(const std::string& nanoseconds);

/// What time it is, in nanoseconds since 1970.
std::int64_t nanosecondsNow();

} // namespace vantora
