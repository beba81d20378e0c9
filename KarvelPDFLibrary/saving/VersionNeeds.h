#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/saving/SaveOptions.h"

#include <qpdf/PDFVersion.hh>
#include <string>

namespace karvel::saving {

/// The version to write for a document whose version was set: that one, or the lowest that its
/// encryption and object streams need. libqpdf would leave those out instead, without a word.
PDFVersion versionToWrite(Document& document, const SaveOptions& options,
                          const EncryptionPlan& encryption);

/// Whether objects of a document that was read are in object streams.
bool hasObjectStreams(Document& document);

/// The same as libqpdf sees it, for which they may stand apart.
bool readsObjectStreams(QPDF& file);

/// The version for the header of a document that is copied: its own, or the one that streams of
/// cross-references need, which hybrid files have beside a table for older readers.
std::string versionToCopy(Document& document);

} // namespace karvel::saving
