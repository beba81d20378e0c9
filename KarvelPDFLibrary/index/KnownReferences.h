#pragma once

#include "KarvelPDFLibrary/index/CrossReferenceReader.h"

#include <memory>
#include <qpdf/QPDF.hh>

namespace karvel::index {

/// Has libqpdf open a file whose cross-reference data are known. What it would spend most of the
/// time on, reading tables line by line, is done already: it gets all entries in one binary stream,
/// and then has the same table and trailer as if it had read the file's own. Throws what opening
/// throws.
void openWithKnownReferences(QPDF& file, std::shared_ptr<io::ByteSource> source,
                             const CrossReferences& read);

} // namespace karvel::index
