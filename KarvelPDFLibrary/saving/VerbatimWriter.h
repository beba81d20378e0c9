#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/io/OutputFile.h"
#include "KarvelPDFLibrary/saving/Liveness.h"
#include "KarvelPDFLibrary/saving/SaveOptions.h"

#include <string>

namespace karvel::saving {

/// Why a document cannot be saved by copying what was not changed, linearised where the options ask
/// for it; empty when it can.
std::string whyNotVerbatim(Document& document, const SaveOptions& options);

/// Saves a document by copying, byte for byte, the objects that were not changed and are still
/// used, and writing the changed ones anew under their numbers. The document must be synchronized
/// and whyNotVerbatim() empty. Throws what reading and writing throw.
void writeVerbatim(Document& document, const Liveness& live, io::ByteSink& sink,
                   const SaveOptions& options);

} // namespace karvel::saving
