#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel::security {

/// Operations that an encryption dictionary permits or not, by the codes of the interface.
enum class Permission : int {
    Printing = 1,
    Modifying = 2,
    Copying = 3,
    Annotating = 4,
    FormFilling = 5,
    Accessibility = 6,
    Assembling = 7,
    FullQualityPrinting = 8,
};
constexpr int permissionCount = 8;

/// The permission value that saving now would write; -1 (everything) when there is no encryption.
int permissionBits(Document& document);

/// Whether the password that the document was opened with, or proved later, allows an operation.
bool isPermitted(Document& document, Permission permission);

/// The permission value in which the operations that are set in `allowed`, in the order of their
/// codes, are allowed.
int composePermissionBits(const bool (&allowed)[permissionCount]);

/// A permission value with the reserved bits as the encryption of an algorithm writes them.
int writtenPermissionBits(int bits, EncryptionAlgorithm algorithm);

} // namespace karvel::security
