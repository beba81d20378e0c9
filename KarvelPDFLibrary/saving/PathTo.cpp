#include "KarvelPDFLibrary/saving/PathTo.h"

#include <functional>
#include <unordered_set>
#include <utility>
#include <vector>

namespace karvel::saving {

namespace {

/// A part of an object's value, and the part of which it is an entry.
struct Part {
    QPDFObjectHandle value;
    std::string step;
    std::size_t holder;
};

/// Goes through all parts of a value until one of them is the reference that is looked for. Calls
/// `found` with every reference.
std::vector<Part> partsOf(const QPDFObjectHandle& value,
                          const std::function<bool(QPDFObjectHandle)>& found)
{
    std::vector<Part> parts = {{value, {}, 0}};
    for (std::size_t at = 0; at < parts.size(); ++at) {
        QPDFObjectHandle part = parts[at].value;
        if (part.isIndirect() && at > 0) {
            if (found(part)) {
                parts.resize(at + 1);
                break;
            }
            continue;
        }
        if (part.isStream()) {
            part = part.getDict();
        }
        if (part.isArray()) {
            int index = 0;
            for (const QPDFObjectHandle& item : part.getArrayAsVector()) {
                parts.push_back({item, "[" + std::to_string(index++) + "]", at});
            }
        } else if (part.isDictionary()) {
            for (const auto& [key, entry] : part.getDictAsMap()) {
                parts.push_back({entry, key, at});
            }
        }
    }
    return parts;
}

/// The steps within a value to its reference to an object.
std::string stepsTo(const QPDFObjectHandle& value, int object)
{
    const std::vector<Part> parts =
        partsOf(value, [&](QPDFObjectHandle target) { return target.getObjectID() == object; });
    std::string steps;
    for (std::size_t at = parts.size() - 1; at > 0; at = parts[at].holder) {
        steps = parts[at].step + (steps.empty() ? "" : " ") + steps;
    }
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
        partsOf(reached[at].first, [&](QPDFObjectHandle target) {
            if (seen.count(object) == 0 && seen.insert(target.getObjectID()).second) {
                reached.emplace_back(target, at);
            }
            return false;
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
