#include "KarvelPDFLibrary/saving/ObjectUsers.h"

#include <algorithm>
#include <string>

namespace karvel::saving {

namespace {

/// What a reader needs before it shows anything (ISO 32000-2, F.3.5).
bool isForOpening(const std::string& catalogKey)
{
    static const char* const keys[] = {"/ViewerPreferences", "/PageMode", "/Threads", "/OpenAction",
                                       "/AcroForm"};
    return std::any_of(std::begin(keys), std::end(keys),
                       [&](const char* key) { return catalogKey == key; });
}

} // namespace

ObjectUsers::ObjectUsers(Document& document, const LiveGraph& graph)
    : graph_(graph), flags_(graph.size()), page_(graph.size(), none), thumbnail_(graph.size(), none)
{
    const auto pages = static_cast<std::size_t>(document.pageCount());
    for (std::size_t page = 0; page < pages; ++page) {
        const auto number = static_cast<std::int32_t>(page);
        const auto object = document.order().at(number + 1).object;
        const auto mark = [&](std::uint32_t used) {
            return page == 0 ? add(used, FirstPage) : add(used, page_, ManyPages, number);
        };
        mark(static_cast<std::uint32_t>(object));
        walk(graph.ofPage(page), mark);
        // What a page itself uses is no longer only its thumbnail's.
        walk(graph.ofThumbnail(page), [&](std::uint32_t used) {
            const bool isOfPage = page == 0 ? has(used, FirstPage) : onePage(used) == number;
            return !isOfPage && add(used, thumbnail_, ManyThumbnails, number);
        });
    }
    for (const auto& [key, value] : document.file().getTrailer().getDictAsMap()) {
        if (key != "/Root") {
            useFrom(value, key == "/Encrypt" ? OpenDocument : Others);
        }
    }
    QPDFObjectHandle catalog = document.changes().present(document.catalog().getObjGen());
    for (const auto& [key, value] : catalog.getDictAsMap()) {
        useFrom(value, isForOpening(key) ? OpenDocument : key == "/Outlines" ? Outline : Others);
    }
    add(static_cast<std::uint32_t>(catalog.getObjectID()), Catalog);
}

void ObjectUsers::useFrom(const QPDFObjectHandle& value, Flag flag)
{
    const std::vector<std::uint32_t> start = referencesInEntry(value);
    walk({start.data(), start.size()}, [&](std::uint32_t used) { return add(used, flag); });
}

/// Marks everything that some objects lead to without passing a page. `mark` says whether an object
/// had not been marked so before; where it had been, all behind it has been, too.
template <class Mark>
void ObjectUsers::walk(LiveGraph::Objects from, const Mark& mark)
{
    const auto reach = [&](LiveGraph::Objects objects) {
        for (const std::uint32_t object : objects) {
            if (graph_.isThere(object) && !graph_.isPage(object) && mark(object)) {
                pending_.push_back(object);
            }
        }
    };
    reach(from);
    while (!pending_.empty()) {
        const std::uint32_t object = pending_.back();
        pending_.pop_back();
        reach(graph_.of(object));
    }
}

bool ObjectUsers::add(std::uint32_t object, Flag flag)
{
    const bool isNew = !has(object, flag);
    flags_[object] |= flag;
    return isNew;
}

bool ObjectUsers::add(std::uint32_t object, std::vector<std::int32_t>& only, Flag many,
                      std::int32_t user)
{
    if (has(object, many) || only[object] == user) {
        return false;
    }
    if (only[object] == none) {
        only[object] = user;
    } else {
        flags_[object] |= many;
    }
    return true;
}

void ObjectUsers::join(std::uint32_t object, std::uint32_t to)
{
    flags_[to] |= flags_[object];
    if (page_[object] != none) {
        add(to, page_, ManyPages, page_[object]);
    }
    if (thumbnail_[object] != none) {
        add(to, thumbnail_, ManyThumbnails, thumbnail_[object]);
    }
}

} // namespace karvel::saving
