#include "VantoraHost/verification/Walk.h"

#include "VantoraHost/verification/Patterns.h"

#include <algorithm>
#include <map>

namespace vantora::verification {

namespace {

constexpr const char* categories[] = {"/XObject", "/Font",      "/ColorSpace", "/Pattern",
                                      "/Shading", "/ExtGState", "/Properties"};

bool endsName(char c)
{
    return c <= ' ' || c == '/' || c == '(' || c == ')' || c == '<' || c == '>' || c == '[' ||
           c == ']' || c == '{' || c == '}' || c == '%';
}

// The names in some content, and what in its strings and images looks like one.
void addNames(const std::string& content, std::set<std::string>& names)
{
    for (std::size_t at = content.find('/'); at != std::string::npos;
         at = content.find('/', at + 1)) {
        std::string name = "/";
        for (std::size_t i = at + 1; i < content.size() && name.size() < 200; ++i) {
            if (content[i] == '#' && i + 2 < content.size() && hexOf(content[i + 1]) >= 0 &&
                hexOf(content[i + 2]) >= 0) {
                name += static_cast<char>(hexOf(content[i + 1]) * 16 + hexOf(content[i + 2]));
                i += 2;
            } else if (static_cast<unsigned char>(content[i]) < 128 && endsName(content[i])) {
                break;
            } else {
                name += content[i];
            }
        }
        names.insert(std::move(name));
    }
}

Kind kindOf(const QPDFObjectHandle& object, Kind otherwise)
{
    if (isNamed(object, "/Subtype", "/Image")) {
        return otherwise == Kind::Thumbnail ? otherwise : Kind::Image;
    }
    if (isNamed(object, "/Type", "/EmbeddedFile") || isNamed(object, "/Type", "/Filespec")) {
        return Kind::Attachment;
    }
    return isNamed(object, "/Type", "/Metadata") ? Kind::Metadata : otherwise;
}

Kind kindOfPageEntry(const std::string& key)
{
    static const std::map<std::string, Kind> kinds = {
        {"/Contents", Kind::Content},      {"/Annots", Kind::Annotation},
        {"/Thumb", Kind::Thumbnail},       {"/Metadata", Kind::Metadata},
        {"/PieceInfo", Kind::PrivateData}, {"/AF", Kind::Attachment}};
    const auto found = kinds.find(key);
    return found == kinds.end() ? Kind::Resource : found->second;
}

} // namespace

std::vector<QPDFObjectHandle> contentsOf(QPDFObjectHandle page)
{
    std::vector<QPDFObjectHandle> streams;
    QPDFObjectHandle contents = valueOf(page, "/Contents");
    if (contents.isArray()) {
        for (const QPDFObjectHandle& item : contents.getArrayAsVector()) {
            if (QPDFObjectHandle(item).isStream()) {
                streams.push_back(item);
            }
        }
    } else if (contents.isStream()) {
        streams.push_back(contents);
    }
    return streams;
}

void Walk::page(const Page& page, int number)
{
    QPDFObjectHandle object = page.object;
    for (const auto& [key, value] : object.getDictAsMap()) {
        if (key != "/Parent" && key != "/Resources") {
            push(value, kindOfPageEntry(key), number);
        }
    }
    auto names = namesIn(contentsOf(object));
    addFormsWithoutResources(page.resources(), names);
    pushResources(page.resources(), std::move(names), number);
    goOn();
}

void Walk::object(QPDFObjectHandle object, Kind kind, int number,
                  const std::set<std::string>& leftOut)
{
    if (object.isIndirect()) {
        seen_.insert(object.getObjGen());
    }
    const Piece piece{kind, number, object};
    if (object.isStream()) {
        enter(piece);
    } else if (object.isDictionary()) {
        enterDictionary(object, piece, leftOut);
    } else {
        enter(piece);
    }
    goOn();
}

void Walk::push(QPDFObjectHandle object, Kind kind, int page)
{
    if (!object.isString() && !object.isArray() && !object.isDictionary() && !object.isStream()) {
        return;
    }
    if (object.isIndirect() && (file_.isPage(object) || seen_.count(object.getObjGen()) > 0)) {
        return;
    }
    if (keepsOut_(object)) {
        return;
    }
    if (object.isIndirect()) {
        seen_.insert(object.getObjGen());
    }
    open_.push_back({kind, page, object});
}

void Walk::goOn()
{
    while (!open_.empty()) {
        Piece piece = std::move(open_.back());
        open_.pop_back();
        enter(std::move(piece));
    }
}

void Walk::enter(Piece piece)
{
    QPDFObjectHandle& object = piece.object;
    if (object.isString()) {
        pieces_.push_back(std::move(piece));
    } else if (object.isArray()) {
        for (const QPDFObjectHandle& item : object.getArrayAsVector()) {
            push(item, piece.kind, piece.page);
        }
    } else if (object.isStream()) {
        piece.kind = kindOf(object, piece.kind);
        QPDFObjectHandle resources = valueOf(object, "/Resources");
        if (resources.isDictionary()) {
            pushResources(resources, namesIn({object}), piece.page);
        }
        enterDictionary(object.getDict(), piece, {"/Resources"});
        pieces_.push_back(std::move(piece));
    } else {
        piece.kind = kindOf(object, piece.kind);
        enterDictionary(object, piece, {});
    }
}

void Walk::enterDictionary(QPDFObjectHandle dictionary, const Piece& piece,
                           const std::set<std::string>& leftOut)
{
    const bool isField = piece.kind == Kind::Annotation;
    for (const auto& [key, value] : dictionary.getDictAsMap()) {
        if (key == "/Parent" || leftOut.count(key) > 0) {
            continue;
        }
        const bool isValue = isField && (key == "/V" || key == "/DV" || key == "/Opt");
        push(value, isValue ? Kind::FormValue : piece.kind, piece.page);
    }
}

std::optional<std::set<std::string>> Walk::namesIn(const std::vector<QPDFObjectHandle>& streams)
{
    std::set<std::string> names;
    for (const QPDFObjectHandle& stream : streams) {
        const StreamData data = dataOf(stream);
        if (!data.decoded) {
            guessed_ = true;
            return std::nullopt;
        }
        addNames(data.bytes, names);
    }
    return names;
}

// A form without resources uses those of the page (ISO 32000-1, 7.8.3).
void Walk::addFormsWithoutResources(QPDFObjectHandle resources,
                                    std::optional<std::set<std::string>>& names)
{
    QPDFObjectHandle forms = valueOf(resources, "/XObject");
    if (!forms.isDictionary()) {
        return;
    }
    std::set<std::string> done;
    for (bool more = names.has_value(); more && names;) {
        more = false;
        const std::set<std::string> known = *names;
        for (const std::string& name : known) {
            QPDFObjectHandle form = forms.getKey(name);
            if (isNamed(form, "/Subtype", "/Form") && valueOf(form, "/Resources").isNull() &&
                done.insert(name).second) {
                const auto further = namesIn({form});
                if (!further) {
                    names.reset();
                    return;
                }
                names->insert(further->begin(), further->end());
                more = true;
            }
        }
    }
}

void Walk::pushResources(QPDFObjectHandle resources, std::optional<std::set<std::string>> names,
                         int page)
{
    for (const char* category : categories) {
        QPDFObjectHandle entries = valueOf(resources, category);
        if (!entries.isDictionary()) {
            continue;
        }
        for (const auto& [name, value] : entries.getDictAsMap()) {
            if (!names || names->count(name) > 0) {
                push(value, Kind::Resource, page);
            }
        }
    }
}

} // namespace vantora::verification
