#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel::attachments {

/// The number of files that the catalog's name tree of embedded files lists.
int count(Document& document);

} // namespace karvel::attachments
