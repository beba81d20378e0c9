#pragma once

#include <optional>
#include <string>

namespace karvel::metadata {

/// Whether an XMP packet may hold pictures of pages (ISO 16684-1, 8.4: xmp:Thumbnails), as far as
/// its bytes tell.
bool mayHavePreviews(const std::string& packet);

/// An XMP packet without its pictures of pages, wherever they stand in it. Nothing when it is not
/// well-formed XML. Throws when what reads packets cannot be loaded.
std::optional<std::string> withoutPreviews(const std::string& packet);

} // namespace karvel::metadata
