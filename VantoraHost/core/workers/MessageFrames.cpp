#include "VantoraHost/core/workers/MessageFrames.h"

#include <cstdint>
#include <cstring>

namespace vantora {

namespace {

using Length = std::uint32_t;

std::optional<Length> lengthIn(std::string_view received)
{
    Length length = 0;
    if (received.size() < sizeof length) {
        return std::nullopt;
    }
    std::memcpy(&length, received.data(), sizeof length);
    return length;
}

} // namespace

std::string framed(std::string_view message)
{
    const auto length = static_cast<Length>(message.size());
    std::string frame(reinterpret_cast<const char*>(&length), sizeof length);
    return frame.append(message);
}

std::optional<std::string> takeMessage(std::string_view& received)
{
    const auto length = lengthIn(received);
    if (!length || received.size() - sizeof *length < *length) {
        return std::nullopt;
    }
    std::string message(received.substr(sizeof *length, *length));
    received.remove_prefix(sizeof *length + *length);
    return message;
}

bool isTooLong(std::string_view received)
{
    return lengthIn(received).value_or(0) > longestMessage;
}

} // namespace vantora
