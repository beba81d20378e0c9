#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace vantora {

/// 12345 as "12,345".
std::string grouped(std::uint64_t number);

/// "1 page" or "12,345 pages".
std::string counted(std::uint64_t number, const char* one, const char* several);

/// A size such as "1 byte", "812 bytes", "10.1 kB" or "2.5 MB" (powers of 1000).
std::string sizeText(std::uint64_t bytes);

/// A time for people: "8 s", "3 min" or "2 h 10 min".
std::string durationText(double seconds);

/// Documents in a second: "2,340", or "0.4" where they are few.
std::string rateText(std::size_t documents, double seconds);

} // namespace vantora
