#include "KarvelPDFLibrary/metadata/Identifier.h"

#include <qpdf/QUtil.hh>

namespace karvel::metadata {

std::string fileIdentifier(Document& document, IdentifierPart part)
{
    QPDFObjectHandle identifier = document.file().getTrailer().getKey("/ID");
    const int index = static_cast<int>(part) - 1;
    if (!identifier.isArray() || identifier.getArrayNItems() <= index) {
        return {};
    }
    QPDFObjectHandle half = identifier.getArrayItem(index);
    return half.isString() ? QUtil::hex_encode(half.getStringValue()) : std::string();
}

} // namespace karvel::metadata
