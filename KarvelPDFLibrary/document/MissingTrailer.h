#pragma once

#include "KarvelPDFLibrary/io/ByteSource.h"

#include <memory>

namespace karvel {

/// A damaged file that lost its trailer, as a source that ends with one: the last catalog in the
/// file is looked for and named as the root. Null when there is no catalog, or when it says that
/// the file was encrypted or keeps its objects in streams, whose trailer says more than that.
std::shared_ptr<io::ByteSource> withTrailerAdded(const std::shared_ptr<io::ByteSource>& source);

} // namespace karvel
