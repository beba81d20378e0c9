#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"

namespace karvel::deletion {

/// Takes the actions that lead to removed pages out of what stands under a key of a dictionary: an
/// action with its /Next chain (ISO 32000-2, 12.6.2) or, as /Dest and /OpenAction allow, a plain
/// destination. The rest of the chain moves up; the key goes when nothing is left. `owner` is the
/// indirect object in which the dictionary stands. Returns whether anything was taken out.
bool pruneActions(Removal& removal, const QPDFObjectHandle& owner, QPDFObjectHandle dictionary,
                  const std::string& key);

/// The same for every trigger of the dictionary's /AA.
bool pruneAdditionalActions(Removal& removal, const QPDFObjectHandle& owner,
                            QPDFObjectHandle dictionary);

} // namespace karvel::deletion
