#include "KarvelPDFLibrary/instance/Buffers.h"

#include <cstring>

namespace karvel {

char* Buffers::create(int size)
{
    if (size < 0) {
        return nullptr;
    }
    // One byte more, so that an empty buffer has an address of its own too; aligned for UTF-32.
    Buffer buffer;
    buffer.capacity = static_cast<std::size_t>(size);
    buffer.storage = std::make_unique<char[]>(buffer.capacity + 1);
    char* address = buffer.storage.get();
    buffers_.emplace(address, std::move(buffer));
    return address;
}

bool Buffers::append(const char* buffer, const char* bytes, int count)
{
    const auto found = buffers_.find(buffer);
    if (found == buffers_.end() || count < 0 || (bytes == nullptr && count > 0)) {
        return false;
    }
    Buffer& target = found->second;
    const auto length = static_cast<std::size_t>(count);
    if (length > target.capacity - target.length) {
        return false;
    }
    if (length > 0) {
        std::memcpy(target.storage.get() + target.length, bytes, length);
        target.length += length;
    }
    return true;
}

bool Buffers::release(const char* buffer)
{
    return buffers_.erase(buffer) > 0;
}

std::optional<std::string_view> Buffers::bytes(const char* buffer) const
{
    const auto found = buffers_.find(buffer);
    if (found == buffers_.end()) {
        return std::nullopt;
    }
    return std::string_view(found->second.storage.get(), found->second.length);
}

} // namespace karvel
