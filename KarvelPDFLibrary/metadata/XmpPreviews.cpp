#include "KarvelPDFLibrary/metadata/XmpPreviews.h"

#include "KarvelPDFLibrary/xmp/Packets.h"

#include <algorithm>
#include <stdexcept>

namespace karvel::metadata {

bool mayHavePreviews(const std::string& packet)
{
    std::string letters = packet; // of UTF-16 and UTF-32 as well
    letters.erase(std::remove(letters.begin(), letters.end(), '\0'), letters.end());
    return letters.find("Thumbnails") != std::string::npos ||
           letters.find(xmp::pictures) != std::string::npos ||
           letters.find("&#") != std::string::npos;
}

std::optional<std::string> withoutPreviews(const std::string& packet)
{
    const Result<xmp::PacketReader*> reader = xmp::loadedReader();
    if (!reader) {
        throw std::runtime_error(reader.error().text);
    }
    return (*reader)->withoutPreviews(packet);
}

} // namespace karvel::metadata
