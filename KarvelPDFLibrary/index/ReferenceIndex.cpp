#include "KarvelPDFLibrary/index/ReferenceIndex.h"

#include <algorithm>

namespace karvel::index {

std::uint64_t destinationHash(std::string_view name)
{
    // FNV-1a. Names that fall together cost a look at an object, nothing else.
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char ch : name) {
        hash = (hash ^ static_cast<unsigned char>(ch)) * 0x100000001b3;
    }
    return hash;
}

/// What a list in the order of object numbers has for an object; null for nothing.
template <typename Entry>
static const Entry* ofObject(const std::vector<Entry>& entries, std::uint32_t object)
{
    const auto found = std::lower_bound(
        entries.begin(), entries.end(), object,
        [](const Entry& entry, std::uint32_t number) { return entry.object < number; });
    return found != entries.end() && found->object == object ? &*found : nullptr;
}

const ReferenceIndex::PlainLink* ReferenceIndex::plainLink(std::uint32_t object) const
{
    return ofObject(plainLinks_, object);
}

const PlainElement* ReferenceIndex::plainElement(std::uint32_t object) const
{
    return ofObject(plainElements_, object);
}

bool isOutOfProportion(std::uint64_t highestNumber, std::uint64_t objects)
{
    return highestNumber > 8'388'607 && highestNumber / 64 > objects;
}

const KidsOfNode* ReferenceIndex::kidsOf(std::uint32_t node) const
{
    return ofObject(kids_, node);
}

const AnnotationsOfPage* ReferenceIndex::annotationsOf(std::uint32_t page) const
{
    return ofObject(annotations_, page);
}

} // namespace karvel::index
