#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/io/OutputFile.h"
#include "KarvelPDFLibrary/saving/Liveness.h"
#include "KarvelPDFLibrary/saving/SaveOptions.h"

namespace karvel::saving {

/// Larger documents cannot be written linearised: hint tables have 32 bits for where things are.
constexpr std::int64_t mostLinearizedBytes = 4'000'000'000;

/// Makes a document's objects fit for linearisation, of which its content stays what it is: pages
/// get what they inherit for their own, and the outline a number. Before Liveness is found.
void prepareForLinearizing(Document& document);

/// Saves a document in linearised form (LinearOrder), copying what was not changed as it stands but
/// for the numbers in references. As for writeVerbatim(), the document must be synchronized, and
/// prepared. Throws what reading and writing throw.
void writeLinearized(Document& document, const Liveness& live, io::ByteSink& sink,
                     const SaveOptions& options);

} // namespace karvel::saving
