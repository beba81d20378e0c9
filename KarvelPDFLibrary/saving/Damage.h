#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/saving/SaveOptions.h"

namespace karvel::saving {

/// Before a document is written: fails when a page that remains can't be read, or when readers that
/// count the pages of its damaged tree otherwise would not agree about which pages went. Where the
/// caller wished so, such pages are taken out instead, each with a warning, and the doubt is one.
/// Damage in pages that went is no reason to fail.
Outcome settleLostPages(Document& document, LostPages lost);

/// When all that is written was read: fails when the content of a page was lost to damage of the
/// file. libqpdf replaces what it cannot read by null or by an empty stream, which would make a
/// blank page. Where the caller wished so, each is a warning instead.
Outcome settleLostContent(Document& document, LostPages lost);

} // namespace karvel::saving
