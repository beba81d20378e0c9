#pragma once

#include <optional>
#include <string>
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

    /// Whoever it is handed to closes it.
    int release() { return std::exchange(descriptor_, -1); }

    /// Closes now; false when the system reports that written data was lost.
    bool close() { return ::close(std::exchange(descriptor_, -1)) == 0; }

private:
    int descriptor_ = -1;
};

/// How a path names an open descriptor, as the system does: "/dev/fd/7".
std::string pathOf(int descriptor);

/// The descriptor that such a path, or "/proc/self/fd/7", names; none when it is another path.
std::optional<int> descriptorNamed(const std::string& path);

} // namespace karvel::io
