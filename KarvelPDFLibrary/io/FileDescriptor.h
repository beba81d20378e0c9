#pragma once

#include <unistd.h>
#include <utility>

namespace karvel::io {

/// Owns an open file descriptor.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : descriptor_(std::exchange(other.descriptor_, -1))
    {
    }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor()
    {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }

    explicit operator bool() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }

    /// Closes now; false when the system reports that written data was lost.
    bool close() { return ::close(std::exchange(descriptor_, -1)) == 0; }

private:
    int descriptor_ = -1;
};

} // namespace karvel::io
