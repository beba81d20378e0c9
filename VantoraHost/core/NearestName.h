#pragma once

#include <string>
#include <vector>

namespace vantora {

/// The name that was probably meant by a misspelt one: that which takes the fewest letters left
/// out, added or replaced, if these are few for its length, upper and lower case being the same.
/// Empty when none is near.
std::string nearestName(const std::string& misspelt, const std::vector<std::string>& names);

} // namespace vantora
