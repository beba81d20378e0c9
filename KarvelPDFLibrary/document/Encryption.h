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

/// Encryption that saving shall write in place of the document's own. Passwords are UTF-8.
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
};

} // namespace karvel
