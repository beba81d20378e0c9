#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace karvel {

/// The byte buffers in which a caller hands strings to an instance. A buffer is named by the
/// address of its bytes and owned by the instance.
class Buffers {
public:
    /// A new empty buffer for `size` bytes; null when size is negative.
    char* create(int size);

    /// Appends bytes; false when there is no such buffer or its size would be exceeded.
    bool append(const char* buffer, const char* bytes, int count);

    /// Frees a buffer; false when there is no such buffer.
    bool release(const char* buffer);

    /// The bytes appended so far; nothing when there is no such buffer.
    std::optional<std::string_view> bytes(const char* buffer) const;

private:
    struct Buffer {
        std::unique_ptr<char[]> storage;
        std::size_t capacity = 0;
        std::size_t length = 0;
    };
    std::unordered_map<const char*, Buffer> buffers_;
};

} // namespace karvel
