#include "VantoraHost/core/DescriptorText.h"

#include <unistd.h>

#include <cerrno>

namespace vantora {

tl::expected<std::string, int> textOf(int descriptor, std::size_t most,
                                      const std::function<bool()>& cancelled)
{
    constexpr std::size_t piece = 1 << 16;
    std::string text;
    std::size_t length = 0;
    while (length <= most) {
        if (text.size() - length < piece) {
            text.resize(text.size() * 2 + piece);
        }
        const ssize_t got = ::read(descriptor, text.data() + length, text.size() - length);
        const int why = got < 0 ? errno : 0;
        if (cancelled()) {
            return tl::unexpected<int>(EINTR);
        }
        if (why != 0 && why != EINTR) {
            return tl::unexpected<int>(why);
        }
        if (got == 0) {
            break;
        }
        length += got > 0 ? static_cast<std::size_t>(got) : 0;
    }
    text.resize(length);
    return text;
}

bool writeText(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return true;
}

} // namespace vantora
