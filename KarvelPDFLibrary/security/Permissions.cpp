#include "KarvelPDFLibrary/security/Permissions.h"

#include "KarvelPDFLibrary/security/Encryption.h"

namespace karvel::security {

namespace {

/// The bits of /P in the order of the permission codes (ISO 32000-2, table 22), counted from 1.
constexpr int bitOf[permissionCount] = {3, 4, 5, 6, 9, 10, 11, 12};

/// The operations to which revision 2, which has no bits above 6, counts the later ones.
constexpr int earlyBitOf[permissionCount] = {3, 4, 5, 6, 6, 5, 4, 3};

/// Reserved bits that must be 1: 7, 8 and 13 to 32.
constexpr unsigned reservedBits = 0xFFFFF0C0U;

bool isSet(int bits, int bit)
{
    return ((static_cast<unsigned>(bits) >> (bit - 1)) & 1U) != 0;
}

} // namespace

int permissionBits(Document& document)
{
    const EncryptionPlan& plan = document.encryption;
    if (plan.kind == EncryptionPlan::Kind::Replace) {
        return plan.replacement->permissionBits;
    }
    int revision = 0;
    int bits = -1;
    if (plan.kind == EncryptionPlan::Kind::Keep && document.file().isEncrypted(revision, bits)) {
        return bits;
    }
    return -1;
}

bool isPermitted(Document& document, Permission permission)
{
    int revision = 0;
    int bits = 0;
    if (!document.file().isEncrypted(revision, bits) ||
        accessLevel(document) == AccessLevel::Owner) {
        return true;
    }
    const int index = static_cast<int>(permission) - 1;
    if (revision < 3) {
        return isSet(bits, earlyBitOf[index]);
    }
    if (isSet(bits, bitOf[index])) {
        return permission != Permission::FullQualityPrinting || isSet(bits, bitOf[0]);
    }
    // Bit 6 permits filling in fields too; bit 9 does so "even if bit 6 is clear".
    return permission == Permission::FormFilling && isSet(bits, 6);
}

int composePermissionBits(const bool (&allowed)[permissionCount])
{
    unsigned bits = reservedBits;
    for (int i = 0; i < permissionCount; ++i) {
        if (allowed[i]) {
            bits |= 1U << (bitOf[i] - 1);
        }
    }
    return static_cast<int>(bits);
}

int writtenPermissionBits(int bits, EncryptionAlgorithm algorithm)
{
    unsigned operations = 0;
    for (const int bit : bitOf) {
        operations |= 1U << (bit - 1);
    }
    unsigned written = (static_cast<unsigned>(bits) & operations) | reservedBits;
    if (algorithm != EncryptionAlgorithm::Rc4Bits128) {
        written |= 1U << (bitOf[static_cast<int>(Permission::Accessibility) - 1] - 1);
    }
    return static_cast<int>(written);
}

} // namespace karvel::security
