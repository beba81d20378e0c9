#include "KarvelPDFLibrary/metadata/Information.h"

namespace karvel::metadata {

namespace {

const char* keyOf(Entry entry)
{
    static constexpr const char* keys[entryCount] = {"/Title",    "/Author",       "/Subject",
                                                     "/Keywords", "/CreationDate", "/ModDate",
                                                     "/Creator",  "/Producer"};
    return keys[static_cast<int>(entry) - 1];
}

bool isDate(Entry entry)
{
    return entry == Entry::CreationDate || entry == Entry::ModDate;
}

/// The dictionary for reading; null when there is none.
QPDFObjectHandle dictionary(Document& document)
{
    QPDFObjectHandle information = document.file().getTrailer().getKey("/Info");
    return information.isDictionary() ? information : QPDFObjectHandle::newNull();
}

/// The dictionary for changing; one that is missing or has no number of its own gets one.
QPDFObjectHandle editDictionary(Document& document)
{
    QPDFObjectHandle information = dictionary(document);
    if (information.isIndirect()) {
        return document.changes().edit(information);
    }
    information = document.changes().add(information.isNull() ? QPDFObjectHandle::newDictionary()
                                                              : information.shallowCopy());
    document.changes().editTrailer().replaceKey("/Info", information);
    return information;
}

std::string textOf(QPDFObjectHandle value)
{
    if (value.isString()) {
        return value.getUTF8Value();
    }
    if (value.isName()) {
        return value.getName().substr(1);
    }
    return value.isScalar() && !value.isNull() ? value.unparseResolved() : std::string();
}

std::string read(Document& document, const std::string& key)
{
    QPDFObjectHandle information = dictionary(document);
    return information.isNull() ? std::string() : textOf(information.getKey(key));
}

void write(Document& document, const std::string& key, const QPDFObjectHandle& value)
{
    editDictionary(document).replaceKey(key, value);
}

void remove(Document& document, const std::string& key)
{
    QPDFObjectHandle information = dictionary(document);
    if (!information.isNull() && information.hasKey(key)) {
        editDictionary(document).removeKey(key);
    }
}

/// The date that a text in either form tells.
std::optional<Date> dateOf(const std::string& text)
{
    std::optional<Date> date = fromIso8601(text);
    return date ? date : fromPdf(text);
}

} // namespace

std::string information(Document& document, Entry entry)
{
    std::string text = read(document, keyOf(entry));
    if (isDate(entry)) {
        if (const std::optional<Date> date = fromPdf(text)) {
            return toIso8601(*date);
        }
    }
    return text;
}

Outcome setInformation(Document& document, Entry entry, const std::string& value)
{
    if (value.empty()) {
        remove(document, keyOf(entry));
        return {};
    }
    if (!isDate(entry)) {
        write(document, keyOf(entry), QPDFObjectHandle::newUnicodeString(value));
        return {};
    }
    const std::optional<Date> date = dateOf(value);
    if (!date) {
        return fail(ErrorCode::BadArgument, "\"" + value + "\" is no date in ISO 8601 or PDF form");
    }
    return setInformationDate(document, entry, *date);
}

Outcome setInformationDate(Document& document, Entry entry, const Date& date)
{
    if (!isDate(entry)) {
        return fail(ErrorCode::BadArgument, "the entry must be 5 (creation) or 6 (modification)");
    }
    if (!isValid(date)) {
        return fail(ErrorCode::BadArgument, "there is no such date or time");
    }
    write(document, keyOf(entry), QPDFObjectHandle::newString(toPdf(date)));
    return {};
}

std::vector<std::string> informationKeys(Document& document)
{
    std::vector<std::string> keys;
    QPDFObjectHandle information = dictionary(document);
    if (!information.isNull()) {
        for (const std::string& key : information.getKeys()) {
            keys.push_back(key.substr(1));
        }
    }
    return keys;
}

std::string customInformation(Document& document, const std::string& key)
{
    return read(document, "/" + key);
}

Outcome setCustomInformation(Document& document, const std::string& key, const std::string& value)
{
    // libqpdf writes the number sign into a name as it is, where it would start an escape.
    if (key.empty() || key.find_first_of(std::string("#\0", 2)) != std::string::npos) {
        return fail(ErrorCode::BadArgument,
                    "the key must not be empty or hold the characters # and NUL");
    }
    write(document, "/" + key, QPDFObjectHandle::newUnicodeString(value));
    return {};
}

Outcome removeCustomInformation(Document& document, const std::string& key)
{
    QPDFObjectHandle information = dictionary(document);
    if (information.isNull() || !information.hasKey("/" + key)) {
        return fail(ErrorCode::NotFound,
                    document.name() + ": the information dictionary has no entry \"" + key + "\"");
    }
    remove(document, "/" + key);
    return {};
}

void removeInformation(Document& document)
{
    if (document.file().getTrailer().hasKey("/Info")) {
        document.changes().editTrailer().removeKey("/Info");
    }
}

Trapped trapped(Document& document)
{
    const std::string state = read(document, "/Trapped");
    if (state == "True" || state == "true") { // old writers used a Boolean
        return Trapped::True;
    }
    return state == "False" || state == "false" ? Trapped::False : Trapped::Unknown;
}

Outcome setTrapped(Document& document, Trapped state)
{
    static constexpr const char* names[] = {"/Unknown", "/True", "/False"};
    write(document, "/Trapped", QPDFObjectHandle::newName(names[static_cast<int>(state)]));
    return {};
}

} // namespace karvel::metadata
