#pragma once

#include <string>

/// Documents that say the same with other objects: readers take a value and a reference to it for
/// the same nearly everywhere, whatever the format asks for.
namespace support {

/// Puts what only one place refers to into that place.
std::string withDirectObjects(const std::string& pdf);

/// Makes an object of every array and dictionary.
std::string withIndirectObjects(const std::string& pdf);

} // namespace support
