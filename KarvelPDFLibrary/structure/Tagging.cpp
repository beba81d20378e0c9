#include "KarvelPDFLibrary/structure/Tagging.h"

namespace karvel::structure {

bool isTagged(Document& document)
{
    QPDFObjectHandle information = document.catalogEntry("/MarkInfo");
    QPDFObjectHandle marked =
        information.isDictionary() ? information.getKey("/Marked") : QPDFObjectHandle::newNull();
    return marked.isBool() && marked.getBoolValue();
}

} // namespace karvel::structure
