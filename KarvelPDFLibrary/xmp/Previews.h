#pragma once

#include <optional>
#include <string>

namespace karvel::xmp {

/// An XMP packet without its pictures of pages, wherever they stand in it. Nothing when it is not
/// well-formed XML.
std::optional<std::string> withoutPreviews(const std::string& packet);

} // namespace karvel::xmp
