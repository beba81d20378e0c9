#pragma once

#include "KarvelPDFLibrary/io/ByteSource.h"

#include <string>

namespace karvel {

/// What a file's bytes tell of an encryption, whatever its trailer says.
struct EncryptionTraces {
    /// Whether there is any sign of one: a security handler, a crypt filter, recipients, or
    /// password data in one dictionary (ISO 32000-2, 7.6).
    bool any = false;

    /// The last whole encryption dictionary of a kind that can be deciphered, as a trailer has it:
    /// "12 0 R", or the dictionary itself. Empty when there is none.
    std::string dictionary;

    /// The number of the object that the dictionary is; 0 when it is none.
    int object = 0;

    /// The revision of the security handler that the dictionary names.
    int revision = 0;

    /// The last file identifier, "[<61> <62>]"; empty when there is none. Up to revision 4 the key
    /// is made from it.
    std::string identifier;
};

/// Goes over all bytes of a file.
EncryptionTraces tracesOfEncryption(io::ByteSource& source);

} // namespace karvel
