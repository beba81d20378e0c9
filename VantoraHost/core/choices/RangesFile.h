#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

namespace vantora {

/// What a list of ranges says of one document.
struct DocumentRange {
    std::string path;     ///< as it stands there, in any bytes but NUL
    std::string range;    ///< pages such as "1,4-6"; empty for none
    std::size_t line = 0; ///< where it begins in the text, from 1
};

/// The most that a list of ranges may hold, so that no text takes memory without end.
inline constexpr std::size_t longestRangesText = 64 * 1024 * 1024; ///< in bytes
inline constexpr std::size_t mostDocumentRanges = 1'000'000;
inline constexpr std::size_t longestDocumentRange = 1024 * 1024; ///< in bytes

/// Reads a list of ranges: a line a document, its path and its range with a tab or, where the first
/// line has none, a comma between them. Either may stand in quotes, as in CSV (RFC 4180), and has
/// to where it holds a separator, a line's end or a quote at its beginning. A first line whose
/// second field is "range", "ranges" or "pages" is a header. Empty lines say nothing. The error is
/// a sentence that begins with the line which is wrong: that it isn't so, that its range is none,
/// that a path is missing, or that it stands in two lines alike.
tl::expected<std::vector<DocumentRange>, std::string> documentRangesOf(std::string_view text);

/// A path as the first field of such a line, in quotes where they are needed.
std::string rangesField(std::string_view path);

/// The line for a document, which documentRangesOf reads; with a tab and the line's end.
std::string rangesLine(std::string_view path, std::string_view range);

} // namespace vantora
