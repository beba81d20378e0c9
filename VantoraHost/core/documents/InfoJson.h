#pragma once

#include "VantoraHost/core/documents/DocumentInfo.h"

#include <string_view>

namespace vantora {

/// What was found out about a document as one JSON object, which is also what `vantora info --json`
/// prints; where nothing was, that is failureJson().
std::string toJson(const DocumentInfo& info);

/// What such an object says. The error is the one that it tells, or that it is none.
Result<DocumentInfo> documentInfoOf(std::string_view json);

} // namespace vantora
