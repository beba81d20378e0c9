#include "KarvelPDFLibrary/transfer/DefaultAppearance.h"

namespace karvel::transfer {

namespace {

constexpr const char* endsOfNames = "/()<>[]{}% \t\r\n\f";

} // namespace

bool isSameFont(QPDFObjectHandle one, QPDFObjectHandle other)
{
    if (!one.isDictionary() || !other.isDictionary()) {
        return false;
    }
    for (const char* key : {"/Subtype", "/BaseFont", "/Encoding"}) {
        if (one.getKey(key).unparseResolved() != other.getKey(key).unparseResolved()) {
            return false;
        }
    }
    return true;
}

void renameFonts(QPDFObjectHandle field, const std::unordered_map<std::string, std::string>& names)
{
    QPDFObjectHandle appearance = field.getKey("/DA");
    if (names.empty() || !appearance.isString()) {
        return;
    }
    const std::string text = appearance.getStringValue();
    std::string renamed;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = text.find('/', at);
        renamed += text.substr(at, start - at);
        if (start == std::string::npos) {
            break;
        }
        at = std::min(text.find_first_of(endsOfNames, start + 1), text.size());
        const std::string name = text.substr(start, at - start);
        const auto found = names.find(name);
        renamed += found == names.end() ? name : found->second;
    }
    if (renamed != text) {
        field.replaceKey("/DA", QPDFObjectHandle::newString(renamed));
    }
}

} // namespace karvel::transfer
