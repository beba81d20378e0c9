#pragma once

#include "KarvelPDFLibrary/index/DecodedStreams.h"
#include "KarvelPDFLibrary/index/FileText.h"
#include "KarvelPDFLibrary/index/ReferenceIndex.h"

#include <string_view>

namespace karvel::index {

/// Reads values of single objects as they are written in the file. Fastest for objects that lie one
/// after the other.
class ValueTexts {
public:
    ValueTexts(DecodedStreams& streams, const ReferenceIndex& index, io::ByteSource& source)
        : streams_(streams), index_(index), text_(source)
    {
    }

    /// A text that begins with the value of an object of the index and goes on after it, as a
    /// ValueScanner needs it; valid until the next call. Empty when the source does not give it
    /// any more.
    std::string_view from(std::uint32_t number);

private:
    std::string_view fromMember(const IndexedObject& object);

    DecodedStreams& streams_;
    const ReferenceIndex& index_;
    FileText text_;
    std::uint32_t container_ = 0; // the number of the object stream that is at hand
    DecodedStreams::Stream stream_;
};

} // namespace karvel::index
