#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"

namespace karvel::deletion {

/// Whether a page that remains lists an object in resources of its own and names it in its content,
/// where its text and that of its content tell so. False when they don't, or not for sure. Takes
/// nothing from libqpdf, which need not open a document in which pages merely share fonts.
bool drawsPlainly(Removal& removal, int page, int object);

} // namespace karvel::deletion
