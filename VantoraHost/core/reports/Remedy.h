#pragma once

#include "VantoraHost/core/Error.h"

#include <string>

namespace vantora {

/// What a person can do about a failure, whatever the program looks like, such as "check its
/// permissions"; empty where that depends on the program, and where the error's sentence says it
/// all.
std::string commonRemedy(Reason reason);

} // namespace vantora
