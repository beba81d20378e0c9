#pragma once

#include "KarvelPDFLibrary/index/DictionaryText.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace karvel::index {

/// A stream whose data can be had without libqpdf: not filtered or by /FlateDecode alone, without
/// parameters, and with a length that stands in its dictionary.
struct PlainStream {
    DictionaryText dictionary;
    std::string_view bytes; // as they stand in the file
    bool isFiltered = false;

    /// Reads the text of an object from its value up to its end, which must last as long as the
    /// result. Nothing for any other stream, and where anything does not read plainly.
    static std::optional<PlainStream> read(std::string_view text);

    /// What the bytes stand for. Throws as inflated() does.
    std::string data(std::size_t most) const;
};

} // namespace karvel::index
