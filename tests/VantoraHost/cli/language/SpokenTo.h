#pragma once

#include "VantoraHost/core/language/Language.h"
#include "tests/VantoraHost/cli/Terminal.h"

namespace terminal {

/// As run(), for somebody who is spoken to in a language.
Answer runIn(const vantora::Language& language, const std::vector<std::string>& arguments,
             const Setting& setting = {});

} // namespace terminal
