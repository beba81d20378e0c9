#include "KarvelPDFLibrary/deletion/modules.h"
#include "KarvelPDFLibrary/index/BoundedData.h"
#include "KarvelPDFLibrary/metadata/XmpPreviews.h"

namespace karvel::deletion {

namespace {

/// Decoded packets beyond this are made to fill memory.
constexpr std::size_t largestPacket = 64U << 20U;

std::optional<std::string> packetIn(const QPDFObjectHandle& metadata)
{
    try {
        return index::boundedData(metadata, largestPacket);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

} // namespace

void removePreviews(Removal& removal)
{
    QPDFObjectHandle metadata = removal.catalogEntry("/Metadata");
    if (!metadata.isStream()) {
        return;
    }
    const std::optional<std::string> packet = packetIn(metadata);
    if (packet && !metadata::mayHavePreviews(*packet)) {
        return;
    }
    const std::optional<std::string> left =
        packet ? metadata::withoutPreviews(*packet) : std::nullopt;
    if (packet && left == packet) {
        return;
    }
    if (left) {
        removal.changes().edit(metadata).replaceStreamData(*left, QPDFObjectHandle::newNull(),
                                                           QPDFObjectHandle::newNull());
        return;
    }
    removal.changes().edit(removal.catalog()).removeKey("/Metadata");
    removal.warn("metadata of the document that cannot be read were removed, since they may show "
                 "removed pages");
}

} // namespace karvel::deletion
