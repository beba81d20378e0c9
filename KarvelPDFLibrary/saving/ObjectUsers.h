#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/saving/LiveGraph.h"

#include <cstdint>
#include <vector>

namespace karvel::saving {

/// Who uses each object of a document, as far as linearisation wants to know it (LinearOrder).
class ObjectUsers {
public:
    enum Flag : std::uint8_t {
        FirstPage = 1,
        ManyPages = 2, // more than one after the first
        ManyThumbnails = 4,
        Outline = 8,
        OpenDocument = 16, // what is needed for opening it
        Others = 32,
        Catalog = 64,
    };

    ObjectUsers(Document& document, const LiveGraph& graph);

    bool has(std::uint32_t object, int flags) const { return (flags_[object] & flags) != 0; }

    /// The page, from 0, that is the only one after the first that uses an object; `none` where
    /// there is no or more than one such page.
    std::int32_t onePage(std::uint32_t object) const
    {
        return has(object, ManyPages) ? none : page_[object];
    }

    /// The page, from 0, whose thumbnail is the only one that uses an object; `none` likewise.
    std::int32_t oneThumbnail(std::uint32_t object) const
    {
        return has(object, ManyThumbnails) ? none : thumbnail_[object];
    }

    bool hasAny(std::uint32_t object) const
    {
        return flags_[object] != 0 || page_[object] != none || thumbnail_[object] != none;
    }

    /// Lets whoever uses an object use another one, too.
    void join(std::uint32_t object, std::uint32_t to);

    static constexpr std::int32_t none = -1;

private:
    template <class Mark>
    void walk(LiveGraph::Objects from, const Mark& mark);
    void useFrom(const QPDFObjectHandle& value, Flag flag);
    bool add(std::uint32_t object, Flag flag);
    bool add(std::uint32_t object, std::vector<std::int32_t>& only, Flag many, std::int32_t user);

    const LiveGraph& graph_;
    std::vector<std::uint8_t> flags_;
    std::vector<std::int32_t> page_;
    std::vector<std::int32_t> thumbnail_;
    std::vector<std::uint32_t> pending_;
};

} // namespace karvel::saving
