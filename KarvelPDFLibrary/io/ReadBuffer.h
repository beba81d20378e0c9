#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <utility>

namespace karvel::io {

/// Bytes to read into. They are not set to zero first, which takes as long as reading small files.
class ReadBuffer {
public:
    ReadBuffer() = default;
    ReadBuffer(ReadBuffer&& other) noexcept
        : bytes_(std::move(other.bytes_)), size_(std::exchange(other.size_, 0))
    {
    }
    ReadBuffer& operator=(ReadBuffer&& other) noexcept
    {
        bytes_ = std::move(other.bytes_);
        size_ = std::exchange(other.size_, 0);
        return *this;
    }

    char* data() { return bytes_.get(); }
    const char* data() const { return bytes_.get(); }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }

    /// Makes room for `size` bytes, of which the first `kept` are those that are there.
    void grow(std::size_t size, std::size_t kept = 0)
    {
        std::unique_ptr<char[]> bytes(new char[size]);
        if (kept > 0) {
            std::memcpy(bytes.get(), bytes_.get(), kept);
        }
        bytes_ = std::move(bytes);
        size_ = size;
    }

private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
};

} // namespace karvel::io
