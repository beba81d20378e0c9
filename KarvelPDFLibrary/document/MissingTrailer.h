#pragma once

#include "KarvelPDFLibrary/document/LostEncryption.h"
#include "KarvelPDFLibrary/io/ByteSource.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace karvel {

/// A damaged file that lost its trailer, as a source that ends with one: the last catalog in the
/// file is looked for and named as the root. Null when there is no catalog, or when the file keeps
/// its objects in streams, whose trailer says more than that. Only for files without a trace of
/// encryption.
std::shared_ptr<io::ByteSource> withTrailerAdded(const std::shared_ptr<io::ByteSource>& source);

/// The same for a file that was encrypted, with a trailer that holds instead of any in the file.
/// Null as well when the traces have no dictionary.
std::shared_ptr<io::ByteSource> withTrailerAdded(const std::shared_ptr<io::ByteSource>& source,
                                                 const EncryptionTraces& traces);

/// A file that breaks off within a stream, as a source that ends this stream, so that what is there
/// of its data can be kept. Null for other files.
std::shared_ptr<io::ByteSource> withStreamEnded(const std::shared_ptr<io::ByteSource>& source);

/// The number and generation of the object whose dictionary a position lies in, given the text
/// before it: "12 0 R".
std::optional<std::string> objectAround(std::string_view before);

} // namespace karvel
