#pragma once

#include <string>

namespace karvel::fonts {

/// Whether the licence bits of a face of a font file (0-based) let it be embedded with its
/// outlines. False for a file that is no font.
bool mayBeEmbedded(const std::string& path, int face);

} // namespace karvel::fonts
