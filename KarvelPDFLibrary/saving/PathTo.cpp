#include "KarvelPDFLibrary/saving/PathTo.h"

#include "KarvelPDFLibrary/objects/References.h"

#include <unordered_set>
#include <utility>
#include <vector>

namespace karvel::saving {

namespace {

/// Steps within a value with one more.
std::string joined(const std::string& steps, const PartPlace& place)
{
    return steps + (steps.empty() ? "" : " ") +
           (place.key != nullptr ? *place.key : "[" + std::to_string(place.index) + "]");
}

/// The steps within a value to its reference to an object.
std::string stepsTo(const QPDFObjectHandle& value, int object)
{
    std::string steps;
    bool isOutermost = true;
    walkParts(
        value, std::string(),
        [&](const QPDFObjectHandle&, const std::string& before, const PartPlace& place) {
            const bool isFirst = std::exchange(isOutermost, false);
            return std::optional<std::string>(isFirst ? before : joined(before, place));
        },
        [&](QPDFObjectHandle target, const std::string& before, const PartPlace& place) {
            if (steps.empty() && target.getObjectID() == object) {
                steps = joined(before, place);
            }
        });
    return steps;
}

} // namespace

std::string pathTo(Document& document, int object)
{
    document.changes().settle();
    // Everything in the order of distance, each with the position of what it was reached from.
    std::vector<std::pair<QPDFObjectHandle, std::size_t>> reached = {
        {document.file().getTrailer(), 0}};
    std::unordered_set<int> seen;
    for (std::size_t at = 0; at < reached.size() && seen.count(object) == 0; ++at) {
        forEachReference(reached[at].first, [&](QPDFObjectHandle target) {
            if (seen.count(object) == 0 && seen.insert(target.getObjectID()).second) {
                reached.emplace_back(target, at);
            }
        });
    }
    if (seen.count(object) == 0) {
        return "a reference";
    }
    const std::size_t holder = reached.back().second;
    std::string path;
    for (std::size_t at = reached.size() - 1; at > 0; at = reached[at].second) {
        const bool named = at == holder;
        const std::string name =
            named ? " (object " + std::to_string(reached[at].first.getObjectID()) + ")" : "";
        path = stepsTo(reached[reached[at].second].first, reached[at].first.getObjectID()) + name +
               (path.empty() ? "" : " ") + path;
    }
    return path;
}

} // namespace karvel::saving
