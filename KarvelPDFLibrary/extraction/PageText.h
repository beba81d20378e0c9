#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/viewer/View.h"

#include <string>

namespace karvel::extraction {

/// Text layout codes of the interface.
enum class TextLayout : int { ReadingOrder = 1, Physical = 2, ContentStream = 3 };

/// A page's text in UTF-8, lines separated by line feeds. What can't be read for its fonts is a
/// warning of the document.
Result<std::string> pageText(Document& document, viewer::View& view, int page, TextLayout layout);

} // namespace karvel::extraction
