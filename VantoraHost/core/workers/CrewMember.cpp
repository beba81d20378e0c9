#include "VantoraHost/core/workers/CrewMember.h"

#include <algorithm>

namespace vantora {

bool CrewMember::isAt(std::size_t document) const
{
    return !documents.empty() && documents.front() == document;
}

std::optional<std::size_t> CrewMember::current() const
{
    if (!documents.empty()) {
        return documents.front();
    }
    return written.empty() ? std::nullopt : std::optional(written.begin()->first);
}

std::vector<std::size_t> CrewMember::lost() const
{
    std::vector<std::size_t> lost(documents.begin(), documents.end());
    for (const auto& [document, output] : written) {
        lost.push_back(document);
    }
    std::sort(lost.begin(), lost.end());
    return lost;
}

void CrewMember::forget(std::size_t document)
{
    written.erase(document);
    documents.erase(std::remove(documents.begin(), documents.end(), document), documents.end());
}

} // namespace vantora
