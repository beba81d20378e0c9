#pragma once

#include "VantoraHost/core/OutlineEntries.h"

#include <functional>
#include <vector>

namespace vantora {

/// The pages of those sections of a document of `pageCount` pages whose entries in the outline are
/// wanted, ascending: from where an entry leads up to where the next one does that is not below it.
/// Where outlines don't follow the order of the pages, a section ends with the first page at which
/// another one begins that is not below it, wherever its entry stands.
std::vector<int> pagesOfSections(const std::vector<OutlineEntry>& outline, int pageCount,
                                 const std::function<bool(const OutlineEntry&)>& isWanted);

} // namespace vantora
