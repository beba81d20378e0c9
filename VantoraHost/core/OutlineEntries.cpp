#include "VantoraHost/core/OutlineEntries.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"

#include <set>
#include <utility>

namespace vantora {

std::vector<OutlineEntry> outlineEntries(KarvelPDFLibraryCPDylibCPP1311& library, std::size_t most)
{
    std::vector<OutlineEntry> entries;
    std::set<int> seen;
    std::vector<std::pair<int, int>> waiting = {{library.FirstOutlineEntry(), 1}};
    while (!waiting.empty() && entries.size() < most) {
        const auto [entry, level] = waiting.back();
        waiting.pop_back();
        if (entry == 0 || !seen.insert(entry).second) {
            continue;
        }
        entries.push_back({level, library.GetOutlineTitle(entry), library.GetOutlinePage(entry)});
        waiting.emplace_back(library.GetNextOutlineEntry(entry), level);
        waiting.emplace_back(library.GetOutlineChild(entry), level + 1);
    }
    return entries;
}

} // namespace vantora
