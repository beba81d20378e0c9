#pragma once

#include <optional>
#include <string>

namespace karvel {

enum class EncryptionAlgorithm : int {
    None = 0,
    Rc4Bits40 = 1,
    Rc4Bits128 = 2,
    AesBits128 = 3,
    AesBits256 = 4,
    Other = -1,
};

/// Encryption that saving shall write in place of the document's own. Passwords are in the encoding
/// that the algorithm works with: UTF-8 for AES 256 bits, else PDFDocEncoding.
struct NewEncryption {
    std::string ownerPassword;
    std::string userPassword;
    EncryptionAlgorithm algorithm = EncryptionAlgorithm::AesBits256;
    int permissionBits = -1;
    bool coversMetadata = true;
};

/// How saving encrypts: as the document was loaded, not at all, or anew.
struct EncryptionPlan {
    enum class Kind { Keep, Remove, Replace };
    Kind kind = Kind::Keep;
    std::optional<NewEncryption> replacement; // set for Replace

    /// Whether a replacement covers the XMP metadata stream.
    bool coversMetadata = true;
};

} // namespace karvel
