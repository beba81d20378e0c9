#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>

namespace karvel::content {

/// All of a page's content streams, decoded and joined with line feeds.
Result<std::string> pageContent(Document& document, int page);

/// Where content goes that is added to a page.
enum class Position { Under = 1, Over = 2 };

/// Adds operators under or over the content that a page has, shielded from it by q and Q. Fails
/// with BadSyntax for a text that is not content, or that ends inside of an object or a state that
/// it began. Other pages that share the page's streams stay as they are.
Outcome addPageContent(Document& document, int page, const std::string& content, Position position);

} // namespace karvel::content
