#include "KarvelPDFLibrary/io/WindowedInput.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace karvel::io {

namespace {

constexpr size_t smallestWindow = 16 * 1024; // objects read here and there
constexpr size_t largestWindow = 512 * 1024; // streams copied, files scanned

bool isEndOfLine(char ch)
{
    return ch == '\r' || ch == '\n';
}

} // namespace

WindowedInput::WindowedInput(std::shared_ptr<ByteSource> source)
    : source_(std::move(source)), nextWindow_(smallestWindow)
{
}

bool WindowedInput::fill()
{
    const bool inside = position_ >= windowStart_ &&
                        position_ - windowStart_ < static_cast<qpdf_offset_t>(windowLength_);
    if (inside) {
        return true;
    }
    if (position_ < 0 || position_ >= source_->size()) {
        return false;
    }
    const bool goesOn =
        windowLength_ > 0 && position_ == windowStart_ + static_cast<qpdf_offset_t>(windowLength_);
    nextWindow_ = goesOn ? std::min(nextWindow_ * 2, largestWindow) : smallestWindow;
    if (window_.size() < nextWindow_) {
        window_.grow(nextWindow_);
    }
    windowLength_ = 0; // nothing is valid should reading throw
    windowLength_ = source_->readAt(position_, window_.data(), nextWindow_);
    windowStart_ = position_;
    return windowLength_ > 0;
}

qpdf_offset_t WindowedInput::findAndSkipNextEOL()
{
    while (fill()) {
        const char* begin = window_.data() + (position_ - windowStart_);
        const char* end = window_.data() + windowLength_;
        const char* found = std::find_if(begin, end, isEndOfLine);
        position_ += found - begin;
        if (found == end) {
            continue;
        }
        const qpdf_offset_t endOfLine = position_;
        while (fill() && isEndOfLine(window_.data()[position_ - windowStart_])) {
            ++position_;
        }
        return endOfLine;
    }
    return position_;
}

std::string const& WindowedInput::getName() const
{
    return source_->name();
}

qpdf_offset_t WindowedInput::tell()
{
    return position_;
}

void WindowedInput::seek(qpdf_offset_t offset, int whence)
{
    const qpdf_offset_t base = whence == SEEK_SET   ? 0
                               : whence == SEEK_CUR ? position_
                                                    : static_cast<qpdf_offset_t>(source_->size());
    if (base + offset < 0) {
        throw std::runtime_error(getName() + ": seek before the beginning");
    }
    position_ = base + offset;
}

void WindowedInput::rewind()
{
    position_ = 0;
}

size_t WindowedInput::read(char* buffer, size_t length)
{
    last_offset = position_;
    size_t done = 0;
    while (done < length && fill()) {
        const auto start = static_cast<size_t>(position_ - windowStart_);
        const size_t count = std::min(length - done, windowLength_ - start);
        std::memcpy(buffer + done, window_.data() + start, count);
        done += count;
        position_ += static_cast<qpdf_offset_t>(count);
    }
    return done;
}

void WindowedInput::unreadCh(char)
{
    if (position_ > 0) {
        --position_;
    }
}

} // namespace karvel::io
