#include "KarvelPDFLibrary/document/CryptFilters.h"

namespace karvel {

namespace {

/// What a name that should be one and isn't is called in messages.
constexpr char noName[] = "(not a name)";

bool isKnown(QPDFObjectHandle filters, const std::string& name)
{
    if (name == "/Identity") {
        return true;
    }
    QPDFObjectHandle filter =
        filters.isDictionary() ? filters.getKey(name) : QPDFObjectHandle::newNull();
    QPDFObjectHandle method =
        filter.isDictionary() ? filter.getKey("/CFM") : QPDFObjectHandle::newNull();
    return method.isName() && (method.getName() == "/V2" || method.getName() == "/AESV2" ||
                               method.getName() == "/AESV3");
}

bool hasCryptFilters(QPDFObjectHandle encryption)
{
    QPDFObjectHandle version = encryption.getKey("/V");
    return version.isInteger() && version.getIntValue() >= 4;
}

/// The crypt filter that a stream's parameters name; Identity is the default.
std::string namedIn(QPDFObjectHandle parameters)
{
    QPDFObjectHandle name =
        parameters.isDictionary() ? parameters.getKey("/Name") : QPDFObjectHandle::newNull();
    return name.isName() ? name.getName() : name.isNull() ? "/Identity" : noName;
}

/// The first of a stream's crypt filters that is not known; empty when there is none.
std::string unknownIn(QPDFObjectHandle dictionary, const QPDFObjectHandle& known)
{
    QPDFObjectHandle filter = dictionary.getKey("/Filter");
    QPDFObjectHandle parameters = dictionary.getKey("/DecodeParms");
    const int count = filter.isArray() ? filter.getArrayNItems() : filter.isName() ? 1 : 0;
    for (int i = 0; i < count; ++i) {
        QPDFObjectHandle one = filter.isArray() ? filter.getArrayItem(i) : filter;
        if (!one.isName() || one.getName() != "/Crypt") {
            continue;
        }
        const bool inArray = parameters.isArray() && i < parameters.getArrayNItems();
        const std::string name = namedIn(inArray ? parameters.getArrayItem(i) : parameters);
        if (!isKnown(known, name)) {
            return name;
        }
    }
    return {};
}

} // namespace

std::string unknownCryptFilter(QPDF& file)
{
    QPDFObjectHandle encryption = file.getTrailer().getKey("/Encrypt");
    if (!file.isEncrypted() || !hasCryptFilters(encryption)) {
        return {};
    }
    const auto entries = encryption.getDictAsMap(); // with those that lead nowhere
    for (const char* key : {"/StmF", "/StrF", "/EFF"}) {
        const auto entry = entries.find(key);
        if (entry == entries.end()) {
            continue;
        }
        QPDFObjectHandle value = entry->second;
        if (!value.isName()) {
            return noName;
        }
        if (!isKnown(encryption.getKey("/CF"), value.getName())) {
            return value.getName();
        }
    }
    return {};
}

std::string unknownCryptFilterOfStreams(QPDF& file)
{
    QPDFObjectHandle encryption = file.getTrailer().getKey("/Encrypt");
    if (!file.isEncrypted() || !hasCryptFilters(encryption)) {
        return {};
    }
    for (QPDFObjectHandle object : file.getAllObjects()) {
        std::string unknown;
        if (object.isStream()) {
            unknown = unknownIn(object.getDict(), encryption.getKey("/CF"));
        }
        if (!unknown.empty()) {
            return unknown;
        }
    }
    return {};
}

} // namespace karvel
