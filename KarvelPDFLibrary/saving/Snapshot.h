#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/saving/SaveOptions.h"

#include <memory>
#include <string>

namespace karvel::saving {

/// The bytes of a document at one moment and the password that opens them.
struct Snapshot {
    std::shared_ptr<io::ByteSource> source;
    std::string password;
};

/// A document's bytes as it is now, for reading them elsewhere: the original ones as long as
/// nothing was changed, else a copy in memory, encrypted as `encrypting` says (not AsPlanned, whose
/// passwords open new files). Does not count as saving, so no page is left out.
Result<Snapshot> snapshot(Document& document, Encrypting encrypting,
                          LostPages lost = LostPages::Refuse);

} // namespace karvel::saving
