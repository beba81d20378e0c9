#pragma once

#include "VantoraHost/core/Error.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// What a pool of pictures and its workers tell each other: one JSON object a line, ASCII only, and
/// after the line of a picture its pixels. What a worker says is looked at before it is believed;
/// it may have been taken over by its document.
namespace vantora {

/// The longest side of a picture, in pixels.
inline constexpr int largestPicture = 4096;

/// The most pages that facts are told of at a time.
inline constexpr int mostFacts = 1000;

/// What a worker is told first. It opens this document and no other one.
struct PictureSetup {
    std::filesystem::path library; ///< the PDF library's file
    std::string input;             ///< the document's path
    std::string password;          ///< empty for none
    std::uint64_t memoryLimit = 0; ///< bytes; 0 for none
};

/// What is wanted of a page, or of pages.
struct PictureTask {
    int page = 1;  ///< the page, or the first one
    int side = 0;  ///< pixels of the picture's longer side, up to largestPicture; 0 for facts
    int pages = 0; ///< of so many pages, up to mostFacts; 0 for a picture

    bool operator==(const PictureTask& other) const
    {
        return page == other.page && side == other.side && pages == other.pages;
    }
};

/// The worker has its document, of so many pages.
struct PictureOpened {
    int pages = 0;
};

/// A page as it is told of without looking at it.
struct ShownPage {
    double width = 0; ///< points, as shown; 0 where the document doesn't tell
    double height = 0;
    std::string label; ///< UTF-8; the page's number where it has none
};

/// Consecutive pages.
struct ShownPages {
    std::vector<ShownPage> pages;
};

/// A page's picture: red, green and blue of each pixel, a byte each, row by row from the top.
struct PagePicture {
    int width = 0; ///< pixels
    int height = 0;
    std::string pixels; ///< empty as long as they haven't come
};

/// What was asked for can't be had: the document when nothing else was said before, or the page.
struct PictureFailure {
    Error error;
};

using PictureSaid = std::variant<PictureOpened, ShownPages, PagePicture, PictureFailure>;

std::string pictureSetupMessage(const PictureSetup& setup);
std::optional<PictureSetup> pictureSetupOf(std::string_view line);

std::string pictureTaskMessage(const PictureTask& task);
std::optional<PictureTask> pictureTaskOf(std::string_view line);

/// The line; that of a picture is to be followed by its pixels.
std::string pictureSaidMessage(const PictureSaid& said);

/// None for what is no such line, or what no worker could honestly say: pictures that are larger
/// than asked for, facts of more pages than asked for.
std::optional<PictureSaid> pictureSaidOf(std::string_view line, const PictureTask& asked);

/// How many bytes a picture's pixels take.
std::size_t pixelBytes(const PagePicture& picture);

} // namespace vantora
