#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/saving/SaveOptions.h"

#include <qpdf/PDFVersion.hh>

namespace karvel::saving {

/// The version to write for a document whose version was set: that one, or the lowest that its
/// encryption and object streams need. libqpdf would leave those out instead, without a word.
PDFVersion versionToWrite(Document& document, const SaveOptions& options,
                          const EncryptionPlan& encryption);

} // namespace karvel::saving
