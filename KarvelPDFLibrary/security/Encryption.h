#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>

namespace karvel::security {

// What saving now would write.

bool isEncrypted(Document& document);
EncryptionAlgorithm algorithm(Document& document);

/// The revision of the standard security handler, 2 to 6; 0 when saving would not encrypt.
int revision(Document& document);

/// Whether the encryption covers the XMP metadata stream.
bool coversMetadata(Document& document);

/// The name of the security handler; empty when saving would not encrypt.
std::string handlerName(Document& document);

// What the document was opened with.

enum class AccessLevel : int { NotEncrypted = 0, User = 1, Owner = 2 };
AccessLevel accessLevel(Document& document);

/// Gives owner access; fails when the password is not the owner's.
Outcome raiseAccessLevel(Document& document, const std::string& ownerPassword);

/// What a password (UTF-8) opens the document's original data as. Data that is not encrypted opens
/// as both with any password; a document without original data opens as nothing.
enum class Opens : int { Nothing = 0, AsUser = 1, AsOwner = 2, AsBoth = 3 };
Result<Opens> checkPassword(Document& document, const std::string& password);

// What saving shall do. Both need owner access.

/// Makes saving encrypt the document; /P is written with the reserved bits as they must be.
Outcome encrypt(Document& document, NewEncryption encryption);
Outcome removeEncryption(Document& document);

/// Whether encrypt()'s encryption covers the XMP metadata stream.
void setMetadataEncryption(Document& document, bool covers);

} // namespace karvel::security
