#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

namespace vantora::verification {

/// A document as poppler shows it. Pages count from 1.
class Viewed {
public:
    virtual ~Viewed() = default;
    virtual int pages() const = 0;
    /// UTF-8; nothing when the page can't be shown.
    virtual std::optional<std::string> text(int page) const = 0;

    /// A page's pixels at 50 dpi, with its size; fewer of a page that is larger than any sheet.
    struct Picture {
        int width = 0;
        int height = 0;
        std::string pixels;
        bool operator==(const Picture& other) const
        {
            return width == other.width && height == other.height && pixels == other.pixels;
        }
    };
    virtual std::optional<Picture> picture(int page) const = 0;
};

/// Null when poppler can't open it. The bytes must outlive the result.
std::unique_ptr<Viewed> view(const std::string& bytes, const std::string& password);

} // namespace vantora::verification
