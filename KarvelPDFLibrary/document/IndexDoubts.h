#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>

namespace karvel {

/// Asks libqpdf what it makes of everything that the index of a damaged file is not sure of. What
/// libqpdf reads otherwise than it stands in the file counts as changed from then on, at libqpdf's
/// value. Says why the index can't be used: something is damaged in another way, or lost; empty
/// when it can.
std::string settleIndexDoubts(Document& document, const index::ReferenceIndex& index);

/// Lets libqpdf rebuild the table of a file in which objects are not where it says, and says
/// whether what is read of the file then is the same whatever was read of it before: of all other
/// objects both tables say the same. True as well where the table is right.
bool settleWrongOffsets(Document& document);

} // namespace karvel
