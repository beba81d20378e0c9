#pragma once

#include "KarvelPDFLibrary/index/CrossReferenceReader.h"
#include "KarvelPDFLibrary/index/DecodedStreams.h"

#include <memory>
#include <qpdf/QPDF.hh>

namespace karvel::index {

/// What is in the object streams of a whole file that is not encrypted: an index of it, and the
/// streams, all of which are plain. They must last as long as the file is read. Or nothing.
struct StreamMembers {
    const ReferenceIndex* index = nullptr;
    DecodedStreams* streams = nullptr;
};

/// Has libqpdf open a file whose cross-reference data are known. What it would spend most of the
/// time on, reading tables line by line, is done already: it gets all entries in one binary stream,
/// and then has the same table and trailer as if it had read the file's own.
///
/// Asked for one member of an object stream, libqpdf would build all of them. So members that are
/// known stand apart for it, behind the end of the file, where each reads as an object of its own;
/// its table then says that no object is in a stream. Throws what opening throws.
void openWithKnownReferences(QPDF& file, std::shared_ptr<io::ByteSource> source,
                             const CrossReferences& read, const StreamMembers& members);

} // namespace karvel::index
