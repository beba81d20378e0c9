#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/xmp/Packets.h"

#include <string>
#include <vector>

/// The document's XMP packet (ISO 32000-2, 14.3.2; ISO 16684-1). Texts are UTF-8.
namespace karvel::metadata {

/// Whether the catalog has a metadata stream.
bool hasXmpPacket(Document& document);

/// The packet as text; empty when there is none.
Result<std::string> xmpPacket(Document& document);

using xmp::PropertyName;

/// A simple property's text; empty when it is absent or no simple one.
Result<std::string> xmpProperty(Document& document, const PropertyName& property);

/// The items of an array property, none when it is absent or no array.
Result<std::vector<std::string>> xmpItems(Document& document, const PropertyName& property);

/// The conformances that the packet claims, such as "PDF/A-2b"; nothing is verified.
Result<std::vector<std::string>> conformanceClaims(Document& document);

} // namespace karvel::metadata
