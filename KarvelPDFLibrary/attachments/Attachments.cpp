#include "KarvelPDFLibrary/attachments/Attachments.h"

#include "KarvelPDFLibrary/objects/NameTree.h"

namespace karvel::attachments {

namespace {

NameTreeEntries filesOf(Document& document)
{
    QPDFObjectHandle names = document.catalogEntry("/Names");
    return names.isDictionary() ? readNameTree(names.getKey("/EmbeddedFiles")) : NameTreeEntries();
}

} // namespace

int count(Document& document)
{
    return static_cast<int>(filesOf(document).size());
}

Result<std::string> nameOf(Document& document, int attachment)
{
    const NameTreeEntries files = filesOf(document);
    if (attachment < 1 || static_cast<std::size_t>(attachment) > files.size()) {
        return fail(ErrorCode::NotFound,
                    document.name() + ": has no embedded file " + std::to_string(attachment));
    }
    const auto& [key, value] = files[static_cast<std::size_t>(attachment) - 1];
    QPDFObjectHandle file = value;
    if (file.isDictionary()) {
        for (const char* entry : {"/UF", "/F"}) {
            QPDFObjectHandle name = file.getKey(entry);
            if (name.isString() && !name.getStringValue().empty()) {
                return name.getUTF8Value();
            }
        }
    }
    return QPDFObjectHandle::newString(key).getUTF8Value();
}

} // namespace karvel::attachments
