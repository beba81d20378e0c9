#include "KarvelPDFLibrary/io/ByteSink.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

namespace karvel::io {

namespace {

constexpr std::size_t bufferSize = 256 * 1024;
constexpr std::size_t worthNoCopy = 256 * 1024;

void writeAll(int descriptor, const char* bytes, std::size_t length)
{
    while (length > 0) {
        const ssize_t count = ::write(descriptor, bytes, length);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            throw std::runtime_error(std::strerror(errno));
        }
        bytes += count;
        length -= static_cast<std::size_t>(count);
    }
}

} // namespace

void ByteSink::copy(ByteSource& source, std::int64_t offset, std::uint64_t length)
{
    constexpr std::size_t window = 256 * 1024;
    while (length > 0) {
        const bool inside = offset >= aheadOffset_ &&
                            offset < aheadOffset_ + static_cast<std::int64_t>(aheadLength_);
        if (!inside) {
            // Small parts with small gaps between them are read in one go.
            if (ahead_.empty()) {
                ahead_.grow(static_cast<std::size_t>(
                    std::min<std::int64_t>(window, std::max<std::int64_t>(source.size(), 1))));
            }
            aheadLength_ = 0;
            aheadLength_ = source.readAt(offset, ahead_.data(), ahead_.size());
            aheadOffset_ = offset;
            if (aheadLength_ == 0) {
                throw std::runtime_error("the source ends early");
            }
        }
        const auto start = static_cast<std::size_t>(offset - aheadOffset_);
        const auto count =
            static_cast<std::size_t>(std::min<std::uint64_t>(length, aheadLength_ - start));
        write(ahead_.data() + start, count);
        offset += static_cast<std::int64_t>(count);
        length -= count;
    }
}

void DescriptorSink::write(const char* bytes, std::size_t length)
{
    if (buffered_ + length > bufferSize) {
        flush();
    }
    if (length >= worthNoCopy) {
        flush();
        writeAll(descriptor_, bytes, length);
        return;
    }
    if (buffer_.size() < buffered_ + length) {
        buffer_.grow(std::min(bufferSize, std::max(2 * (buffered_ + length), std::size_t{16384})),
                     buffered_);
    }
    std::memcpy(buffer_.data() + buffered_, bytes, length);
    buffered_ += length;
}

void DescriptorSink::flush()
{
    writeAll(descriptor_, buffer_.data(), buffered_);
    buffered_ = 0;
}

void DescriptorSink::copy(ByteSource& source, std::int64_t offset, std::uint64_t length)
{
    constexpr std::uint64_t worthACall = 256 * 1024;
    constexpr std::uint64_t writtenAhead = 16 * 1024 * 1024;
    if (source.descriptor() >= 0 && length >= worthACall) {
        flush();
        off_t from = offset;
        off_t to = lseek(descriptor_, 0, SEEK_CUR);
        while (length > 0) {
            const ssize_t count =
                copy_file_range(source.descriptor(), &from, descriptor_, nullptr,
                                static_cast<std::size_t>(std::min(length, writtenAhead)), 0);
            if (count <= 0) {
                break; // not between these files, or not there any more: the other way will tell
            }
            // The disk begins now, so that less is left to wait for at the end.
            sync_file_range(descriptor_, to, count, SYNC_FILE_RANGE_WRITE);
            to += count;
            length -= static_cast<std::uint64_t>(count);
        }
        offset = from;
    }
    ByteSink::copy(source, offset, length);
}

} // namespace karvel::io
