#include "KarvelPDFLibrary/attachments/Attachments.h"

#include "KarvelPDFLibrary/objects/NameTree.h"

namespace karvel::attachments {

int count(Document& document)
{
    QPDFObjectHandle names = document.catalog().getKey("/Names");
    if (!names.isDictionary()) {
        return 0;
    }
    return static_cast<int>(readNameTree(names.getKey("/EmbeddedFiles")).size());
}

} // namespace karvel::attachments
