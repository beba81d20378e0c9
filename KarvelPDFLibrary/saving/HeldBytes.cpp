#include "KarvelPDFLibrary/saving/HeldBytes.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>
#include <vector>

namespace karvel::saving {

namespace {

enum Kind : std::size_t { Images, Fonts, Content, Attachments, Structure, Other, KindCount };

constexpr std::array<const char*, KindCount> kindNames = {"images",      "fonts",     "content",
                                                          "attachments", "structure", "other"};

/// Reading more dictionaries than this for one sentence would take too long.
constexpr std::size_t mostStreams = 20000;

bool isOneOf(QPDFObjectHandle value, std::initializer_list<const char*> names)
{
    return value.isName() && std::any_of(names.begin(), names.end(),
                                         [&](const char* name) { return value.getName() == name; });
}

/// What a stream is, as far as its dictionary tells. Only pages' content tells nothing.
Kind kindOf(QPDFObjectHandle stream)
{
    QPDFObjectHandle dictionary = stream.getDict();
    QPDFObjectHandle type = dictionary.getKey("/Type");
    QPDFObjectHandle subtype = dictionary.getKey("/Subtype");
    if (isOneOf(subtype, {"/Image"})) {
        return Images;
    }
    if (isOneOf(subtype, {"/Type1C", "/CIDFontType0C", "/OpenType"}) ||
        dictionary.hasKey("/Length1")) {
        return Fonts;
    }
    if (isOneOf(type, {"/EmbeddedFile"})) {
        return Attachments;
    }
    if (isOneOf(subtype, {"/Form"}) || dictionary.hasKey("/PatternType")) {
        return Content;
    }
    const bool tellsSomething = !type.isNull() || !subtype.isNull() || dictionary.hasKey("/N") ||
                                dictionary.hasKey("/FunctionType") ||
                                dictionary.hasKey("/ShadingType");
    return tellsSomething ? Other : Content;
}

class Tally {
public:
    Tally(Document& document, const Liveness& live)
        : document_(document), live_(live), index_(document.index())
    {
    }

    std::array<std::uint64_t, KindCount> run()
    {
        collect();
        const std::size_t most = std::min(streams_.size(), mostStreams);
        std::partial_sort(streams_.begin(), streams_.begin() + static_cast<std::ptrdiff_t>(most),
                          streams_.end(),
                          [](const auto& a, const auto& b) { return a.first > b.first; });
        streams_.resize(most);
        for (const auto& [size, id] : streams_) {
            QPDFObjectHandle stream = document_.file().getObject(id);
            if (stream.isStream()) {
                bytes_[kindOf(stream)] += size;
            }
        }
        return bytes_;
    }

private:
    void collect()
    {
        if (index_ == nullptr) {
            collectWithoutIndex();
            return;
        }
        countMembers();
        for (std::uint32_t number = 1; number < index_->size(); ++number) {
            if (!live_.isLive(number) || !index_->contains(number)) {
                continue;
            }
            const index::IndexedObject& object = index_->object(number);
            const QPDFObjGen id(static_cast<int>(number), object.generation);
            if ((object.flags & index::IsStream) != 0) {
                streams_.emplace_back(object.end - object.start, id);
            } else if (isElement(object)) {
                bytes_[Structure] += storedSize(object);
            }
        }
    }

    void collectWithoutIndex()
    {
        for (const QPDFObjectHandle& object : document_.file().getAllObjects()) {
            QPDFObjectHandle stream = object;
            const auto number = static_cast<std::uint32_t>(stream.getObjectID());
            QPDFObjectHandle length = stream.isStream() && live_.isLive(number)
                                          ? stream.getDict().getKey("/Length")
                                          : QPDFObjectHandle::newNull();
            if (length.isInteger() && length.getIntValue() > 0) {
                streams_.emplace_back(static_cast<std::uint64_t>(length.getIntValue()),
                                      stream.getObjGen());
            }
        }
    }

    /// Structure elements have /P or /Pg, as annotations do, but no /Subtype.
    static bool isElement(const index::IndexedObject& object)
    {
        return object.kind == index::Kind::Other && (object.flags & index::HasPlace) != 0 &&
               (object.flags & index::HasSubtype) == 0;
    }

    void countMembers()
    {
        for (const index::ObjectStreamMembers& stream : index_->objectStreams()) {
            std::uint64_t decoded = 1;
            for (const std::uint32_t member : stream.members) {
                decoded += index_->object(member).end - index_->object(member).start;
            }
            const index::IndexedObject& object = index_->object(stream.object);
            packing_[stream.object] =
                static_cast<double>(object.end - object.start) / static_cast<double>(decoded);
        }
    }

    /// A member of an object stream takes its share of it.
    std::uint64_t storedSize(const index::IndexedObject& object) const
    {
        const auto size = static_cast<double>(object.end - object.start);
        const auto packing = packing_.find(object.container);
        return static_cast<std::uint64_t>(packing == packing_.end() ? size
                                                                    : size * packing->second);
    }

    Document& document_;
    const Liveness& live_;
    const index::ReferenceIndex* index_;
    std::vector<std::pair<std::uint64_t, QPDFObjGen>> streams_;
    std::unordered_map<std::uint32_t, double> packing_; // stored bytes for a decoded one
    std::array<std::uint64_t, KindCount> bytes_ = {};
};

std::string grouped(std::uint64_t number)
{
    std::string digits = std::to_string(number);
    for (auto place = static_cast<std::ptrdiff_t>(digits.size()) - 3; place > 0; place -= 3) {
        digits.insert(static_cast<std::size_t>(place), ",");
    }
    return digits;
}

} // namespace

std::string whatHolds(Document& document, const Liveness& live, std::uint64_t writtenBytes)
{
    std::array<std::uint64_t, KindCount> bytes = Tally(document, live).run();
    std::uint64_t known = 0;
    for (std::size_t kind = 0; kind < Other; ++kind) {
        known += bytes[kind];
    }
    bytes[Other] = writtenBytes > known ? writtenBytes - known : 0;
    std::vector<std::size_t> kinds;
    for (std::size_t kind = 0; kind < KindCount; ++kind) {
        if (bytes[kind] > 0) {
            kinds.push_back(kind);
        }
    }
    std::stable_sort(kinds.begin(), kinds.end(),
                     [&](std::size_t a, std::size_t b) { return bytes[a] > bytes[b]; });
    std::string text;
    for (const std::size_t kind : kinds) {
        text += (text.empty() ? "" : ", ") + std::string(kindNames[kind]) + " " +
                grouped(bytes[kind]) + (text.empty() ? " bytes" : "");
    }
    return text;
}

} // namespace karvel::saving
