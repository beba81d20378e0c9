#include "KarvelPDFLibrary/saving/HeldBytes.h"

#include "KarvelPDFLibrary/saving/LiveGraph.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

namespace karvel::saving {

namespace {

enum Kind : std::size_t { Images, Fonts, Content, Attachments, Other, KindCount };

constexpr std::array<const char*, KindCount> kindNames = {"images", "fonts", "content",
                                                          "attachments", "other"};

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

/// Walks over what pages refer to, from page to page never.
class Walk {
public:
    explicit Walk(std::size_t objects) : seen_(objects) {}

    /// Marks an object, what `of` says that it refers to, and so on.
    template <class Of>
    void enter(std::uint32_t object, const Of& of)
    {
        reach(object);
        while (!pending_.empty()) {
            const std::uint32_t next = pending_.back();
            pending_.pop_back();
            of(next, [this](std::uint32_t target) { reach(target); });
        }
    }

    bool has(std::uint32_t object) const { return object < seen_.size() && seen_[object]; }

private:
    void reach(std::uint32_t object)
    {
        if (object != 0 && object < seen_.size() && !seen_[object]) {
            seen_[object] = true;
            pending_.push_back(object);
        }
    }

    std::vector<bool> seen_;
    std::vector<std::uint32_t> pending_;
};

/// What the pages that stay show, with what they inherit.
Walk shownByRemainingPages(Document& document, const LiveGraph& graph)
{
    const index::ReferenceIndex& index = *document.index();
    Walk walk(graph.size());
    const auto of = [&](std::uint32_t object, const auto& reach) {
        if (!graph.isPage(object)) {
            for (const std::uint32_t target : graph.of(object)) {
                reach(target);
            }
        }
    };
    for (int page = 0; page < document.pageCount(); ++page) {
        for (const std::uint32_t object : graph.ofPage(static_cast<std::size_t>(page))) {
            walk.enter(object, of);
        }
    }
    for (std::uint32_t object = 1; object < index.size(); ++object) {
        if (index.object(object).kind == index::Kind::PageNode) {
            walk.enter(object, of);
        }
    }
    return walk;
}

/// What the pages that were cut showed in the file, but for what they inherited.
Walk shownByCutPages(Document& document)
{
    const index::ReferenceIndex& index = *document.index();
    Walk walk(index.size());
    const auto of = [&](std::uint32_t object, const auto& reach) {
        if (!index.contains(object)) {
            return;
        }
        const index::IndexedObject& entry = index.object(object);
        for (std::uint32_t i = 0; i < entry.referenceCount; ++i) {
            const std::uint32_t target = index.references()[entry.firstReference + i];
            const index::Kind kind = index.object(target).kind;
            if (kind != index::Kind::Page && kind != index::Kind::PageNode) {
                reach(target);
            }
        }
    };
    for (const std::int32_t page : document.cutPages()) {
        walk.enter(static_cast<std::uint32_t>(page), of);
    }
    return walk;
}

std::string grouped(std::uint64_t number)
{
    std::string digits = std::to_string(number);
    for (auto place = static_cast<std::ptrdiff_t>(digits.size()) - 3; place > 0; place -= 3) {
        digits.insert(static_cast<std::size_t>(place), ",");
    }
    return digits;
}

} // namespace

HeldBytes heldThoughCut(Document& document, const Liveness& live)
{
    HeldBytes held;
    const index::ReferenceIndex* index = document.index();
    if (index == nullptr) {
        return held;
    }
    const LiveGraph graph(document, live);
    const Walk cut = shownByCutPages(document);
    const Walk remaining = shownByRemainingPages(document, graph);
    std::array<std::uint64_t, KindCount> bytes = {};
    for (std::uint32_t number = 1; number < index->size(); ++number) {
        const index::IndexedObject& object = index->object(number);
        if ((object.flags & index::IsStream) == 0 || !graph.isThere(number) || !cut.has(number) ||
            remaining.has(number)) {
            continue;
        }
        QPDFObjectHandle stream =
            document.file().getObject(static_cast<int>(number), object.generation);
        if (stream.isStream()) {
            bytes[kindOf(stream)] += object.end - object.start;
            held.bytes += object.end - object.start;
        }
    }
    std::array<std::size_t, KindCount> kinds = {};
    std::iota(kinds.begin(), kinds.end(), std::size_t{0});
    std::stable_sort(kinds.begin(), kinds.end(),
                     [&](std::size_t a, std::size_t b) { return bytes[a] > bytes[b]; });
    for (const std::size_t kind : kinds) {
        if (bytes[kind] > 0) {
            held.kinds += (held.kinds.empty() ? "" : ", ") + std::string(kindNames[kind]) + " " +
                          grouped(bytes[kind]) + (held.kinds.empty() ? " bytes" : "");
        }
    }
    return held;
}

} // namespace karvel::saving
