#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/saving/Liveness.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace karvel::saving {

/// What the live objects of a document refer to at their present values, for walks that must not go
/// from one page to another: pages are known, and their references are told apart.
class LiveGraph {
public:
    /// Some objects' numbers, in no order and with repetitions.
    struct Objects {
        const std::uint32_t* first = nullptr;
        std::size_t count = 0;
        const std::uint32_t* begin() const { return first; }
        const std::uint32_t* end() const { return first + count; }
    };

    /// The document must be synchronized and have an index.
    LiveGraph(Document& document, const Liveness& live);

    /// One more than the highest object number.
    std::uint32_t size() const { return live_.size(); }

    /// Whether an object is to be written: it is live and something else than null.
    bool isThere(std::uint32_t object) const { return live_.isLive(object) && !isNull_[object]; }

    /// Whether an object is a page, of the document's page tree or otherwise.
    bool isPage(std::uint32_t object) const { return isPage_[object]; }

    /// What an object other than a page of the tree refers to.
    Objects of(std::uint32_t object) const;

    /// What a page of the document, counted from 0, refers to by entries other than /Parent and
    /// /Thumb, and by /Thumb.
    Objects ofPage(std::size_t page) const { return part(2 * page); }
    Objects ofThumbnail(std::size_t page) const { return part(2 * page + 1); }

private:
    Objects part(std::size_t number) const
    {
        return {pageTargets_.data() + parts_[number], parts_[number + 1] - parts_[number]};
    }
    void findNulls();
    void findPages();
    void readChanged();
    void readPages();

    Document& document_;
    const index::ReferenceIndex& index_;
    ObjectView objects_;
    const Liveness& live_;
    std::vector<bool> isNull_;
    std::vector<bool> isPage_;
    std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> changed_;
    std::vector<std::uint32_t> pageTargets_;
    std::vector<std::size_t> parts_; // where those of pages and thumbnails begin, in turn
};

/// What the value of a dictionary's entry refers to: the reference that it is, or those in it.
std::vector<std::uint32_t> referencesInEntry(QPDFObjectHandle value);

} // namespace karvel::saving
