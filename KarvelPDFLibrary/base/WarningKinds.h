#pragma once

namespace karvel {

/// What warnings begin with that tell what deleting pages did to a document, such as removing
/// signatures; all others tell what was found to be damaged in it.
constexpr char deletingPages[] = "deleting pages: ";

} // namespace karvel
