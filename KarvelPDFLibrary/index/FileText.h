#pragma once

#include "KarvelPDFLibrary/io/ByteSource.h"
#include "KarvelPDFLibrary/io/ReadBuffer.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace karvel::index {

/// The text of a file from some offset on, read ahead while offsets grow: what a pass in file order
/// needs, without reading what it steps over.
class FileText {
public:
    explicit FileText(io::ByteSource& source) : source_(source) {}

    /// Makes the text begin at a file offset, with `needed` bytes where the file has as many; false
    /// when the offset is at or past the end of the file.
    bool open(std::uint64_t offset, std::size_t needed)
    {
        const auto size = static_cast<std::uint64_t>(source_.size());
        if (offset >= size) {
            return false;
        }
        needed = static_cast<std::size_t>(std::min<std::uint64_t>(needed, size - offset));
        const bool inside = offset >= bufferOffset_ && offset - bufferOffset_ + needed <= length_;
        if (!inside) {
            // Reading goes on nearby: read far ahead. It was a jump: it may be one again.
            const bool near = offset >= bufferOffset_ && offset <= bufferOffset_ + length_ + nearby;
            ahead_ = near ? std::min(ahead_ * 2, mostAhead) : leastAhead;
            load(offset, std::max(needed, ahead_));
        }
        begin_ = static_cast<std::size_t>(offset - bufferOffset_);
        return true;
    }

    /// Makes the text at least `length` bytes long; false when the file ends before.
    bool require(std::size_t length)
    {
        if (view().size() >= length) {
            return true;
        }
        const std::uint64_t at = offset();
        open(at, length);
        return view().size() >= length;
    }

    /// Makes the text longer, twice as long at least; false at the end of the file.
    bool extend()
    {
        const std::size_t before = view().size();
        load(offset(), std::max(leastAhead, 2 * before));
        begin_ = 0;
        return view().size() > before;
    }

    std::string_view view() const { return {buffer_.data() + begin_, length_ - begin_}; }

    /// The file offset at which the text begins.
    std::uint64_t offset() const { return bufferOffset_ + begin_; }

private:
    static constexpr std::size_t leastAhead = 4 * 1024;
    static constexpr std::size_t mostAhead = 256 * 1024;
    static constexpr std::uint64_t nearby = 4 * 1024;

    void load(std::uint64_t offset, std::size_t length)
    {
        if (buffer_.size() < length) {
            buffer_.grow(length);
        }
        bufferOffset_ = offset;
        begin_ = 0;
        length_ = 0;
        length_ = source_.readAt(static_cast<std::int64_t>(offset), buffer_.data(), length);
    }

    io::ByteSource& source_;
    io::ReadBuffer buffer_;
    std::uint64_t bufferOffset_ = 0;
    std::size_t begin_ = 0;
    std::size_t length_ = 0;
    std::size_t ahead_ = leastAhead;
};

} // namespace karvel::index
