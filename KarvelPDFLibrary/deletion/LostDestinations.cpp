#include "KarvelPDFLibrary/deletion/Removal.h"

#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>

/// Whether destinations lead to removed pages: what one names is read from whatever is at hand, and
/// judged in one place.
namespace karvel::deletion {

bool Removal::isGone(const Target& target)
{
    if (target.name) {
        return goneNames.count(*target.name) > 0;
    }
    return target.pageNumber ? presentNumberOf(*target.pageNumber) == 0 : pages_.has(target.object);
}

bool Removal::leadsToRemovedPage(const QPDFObjectHandle& destination)
{
    const std::optional<Target> indexed = indexedTargetOf(destination);
    return isGone(indexed ? *indexed : targetOf(destination));
}

Removal::Target Removal::targetOf(QPDFObjectHandle destination)
{
    if (destination.isDictionary()) {
        destination = destination.getKey("/D");
    }
    if (destination.isName()) {
        return {0, {}, destination.getName()};
    }
    if (destination.isString()) {
        return {0, {}, destination.getStringValue()};
    }
    if (!destination.isArray() || destination.getArrayNItems() == 0) {
        return {};
    }
    QPDFObjectHandle page = destination.getArrayItem(0);
    if (isPage(page.getObjectID())) {
        return {page.getObjectID(), {}, {}};
    }
    // Some programs name the page by its number, from 0, as in destinations in other files.
    return page.isInteger() ? Target{0, page.getIntValueAsInt() + 1, {}} : Target();
}

/// What an object that is a destination names, when the index shows it: its one reference is to a
/// page.
std::optional<Removal::Target> Removal::indexedTargetOf(const QPDFObjectHandle& destination) const
{
    const auto references = indexedReferencesOf(destination.getObjectID());
    if (!references || references->end() - references->begin() != 1 ||
        !document_.index()->withNumberedDestinations().empty()) {
        return std::nullopt;
    }
    const std::uint32_t target = *references->begin();
    const bool isPage = document_.index()->object(target).kind == index::Kind::Page;
    return isPage ? std::optional<Target>({static_cast<int>(target), {}, {}}) : std::nullopt;
}

bool Removal::leadsToRemainingPages(int node) const
{
    const auto references = indexedReferencesOf(node);
    if (!references || mayHave(node, index::HasKids) || !mayHave(node, index::IsDictionary) ||
        !document_.index()->withNumberedDestinations().empty()) {
        return false;
    }
    const auto remains = [this](std::uint32_t page) {
        return document_.index()->object(page).kind == index::Kind::Page &&
               !pages_.has(static_cast<int>(page));
    };
    return std::all_of(references->begin(), references->end(), [&](std::uint32_t target) {
        const auto further = indexedReferencesOf(static_cast<int>(target));
        return remains(target) ||
               (further && further->end() - further->begin() == 1 && remains(*further->begin()));
    });
}

std::optional<bool> Removal::textLeadsToRemovedPage(std::string_view destination)
{
    const std::string_view text = index::trimmed(destination);
    if (text.empty()) {
        return false;
    }
    if (text.front() == '[') {
        const int page = targetOfText(text.substr(1));
        return isPage(page) ? std::optional<bool>(isGone(Target{page, {}, {}})) : std::nullopt;
    }
    const bool isName = text.front() == '(' || text.front() == '/' ||
                        (text.front() == '<' && text.substr(0, 2) != "<<");
    return isName ? std::optional<bool>(isGone(Target{0, {}, index::decodedString(text)}))
                  : std::nullopt;
}

int Removal::targetOfText(std::string_view reference) const
{
    const auto written = index::readReference(reference);
    return written ? static_cast<int>(document_.index()->targetOf(*written)) : 0;
}

bool Removal::judgePlainLink(int object)
{
    const auto* link = plainLink(object);
    if (link == nullptr) {
        return false;
    }
    Target target{static_cast<int>(link->page), {}, {}};
    if (link->nameLength > 0) {
        target.name = document_.index()->nameOf(*link);
    }
    if (isGone(target)) {
        drop(object);
    }
    return true;
}

} // namespace karvel::deletion
