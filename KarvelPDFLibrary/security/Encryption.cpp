#include "KarvelPDFLibrary/security/Encryption.h"

#include "KarvelPDFLibrary/io/WindowedInput.h"
#include "KarvelPDFLibrary/security/Permissions.h"

#include <qpdf/QPDFExc.hh>
#include <qpdf/QUtil.hh>

namespace karvel::security {

namespace {

using Kind = EncryptionPlan::Kind;

bool keepsLoaded(Document& document)
{
    return document.encryption.kind == Kind::Keep && document.isEncrypted();
}

QPDFObjectHandle dictionary(Document& document)
{
    return document.file().getTrailer().getKey("/Encrypt");
}

EncryptionAlgorithm loadedAlgorithm(Document& document)
{
    int revision = 0;
    int bits = 0;
    int version = 0;
    QPDF::encryption_method_e streams = QPDF::e_none;
    QPDF::encryption_method_e strings = QPDF::e_none;
    QPDF::encryption_method_e files = QPDF::e_none;
    document.file().isEncrypted(revision, bits, version, streams, strings, files);
    if (version >= 4) {
        switch (streams) {
        case QPDF::e_rc4:
            return EncryptionAlgorithm::Rc4Bits128;
        case QPDF::e_aes:
            return EncryptionAlgorithm::AesBits128;
        case QPDF::e_aesv3:
            return EncryptionAlgorithm::AesBits256;
        default:
            return EncryptionAlgorithm::Other;
        }
    }
    QPDFObjectHandle length = dictionary(document).getKey("/Length");
    const bool isShort = version == 1 || !length.isInteger() || length.getIntValue() <= 40;
    return isShort ? EncryptionAlgorithm::Rc4Bits40 : EncryptionAlgorithm::Rc4Bits128;
}

/// What one encoding of a password opens a source as.
Opens tryPassword(const std::shared_ptr<io::ByteSource>& source, const std::string& password)
{
    QPDF file;
    file.setSuppressWarnings(true);
    try {
        file.processInputSource(std::make_shared<io::WindowedInput>(source), password.c_str());
    } catch (const QPDFExc& exception) {
        if (exception.getErrorCode() == qpdf_e_password) {
            return Opens::Nothing;
        }
        throw;
    }
    if (!file.isEncrypted()) {
        return Opens::AsBoth;
    }
    if (!file.ownerPasswordMatched()) {
        return Opens::AsUser;
    }
    return file.userPasswordMatched() ? Opens::AsBoth : Opens::AsOwner;
}

/// Puts a password into the encoding that an algorithm works with (ISO 32000-2, 7.6.4.3).
Outcome encode(std::string& password, EncryptionAlgorithm algorithm)
{
    if (password.find('\0') != std::string::npos) {
        return fail(ErrorCode::BadArgument, "a password cannot hold the character NUL");
    }
    if (algorithm == EncryptionAlgorithm::AesBits256) {
        return {};
    }
    std::string encoded;
    if (!QUtil::utf8_to_pdf_doc(password, encoded)) {
        return fail(ErrorCode::BadArgument,
                    "a password for this algorithm can only hold characters of PDFDocEncoding");
    }
    password = std::move(encoded);
    return {};
}

Outcome needsOwner(Document& document)
{
    if (accessLevel(document) == AccessLevel::User) {
        return fail(ErrorCode::OwnerAccessNeeded,
                    document.name() + ": the owner password is needed for this");
    }
    return {};
}

} // namespace

bool isEncrypted(Document& document)
{
    return document.encryption.kind == Kind::Replace || keepsLoaded(document);
}

EncryptionAlgorithm algorithm(Document& document)
{
    if (document.encryption.kind == Kind::Replace) {
        return document.encryption.replacement->algorithm;
    }
    return keepsLoaded(document) ? loadedAlgorithm(document) : EncryptionAlgorithm::None;
}

int revision(Document& document)
{
    if (document.encryption.kind == Kind::Replace) {
        switch (document.encryption.replacement->algorithm) {
        case EncryptionAlgorithm::Rc4Bits128:
            return 3;
        case EncryptionAlgorithm::AesBits128:
            return 4;
        default:
            return 6;
        }
    }
    int revision = 0;
    int bits = 0;
    return keepsLoaded(document) && document.file().isEncrypted(revision, bits) ? revision : 0;
}

bool coversMetadata(Document& document)
{
    if (document.encryption.kind == Kind::Replace) {
        const NewEncryption& plan = *document.encryption.replacement;
        return plan.coversMetadata || plan.algorithm == EncryptionAlgorithm::Rc4Bits128;
    }
    if (!keepsLoaded(document)) {
        return false;
    }
    // Only crypt filters can leave the metadata out (ISO 32000-2, table 21).
    QPDFObjectHandle covers = dictionary(document).getKey("/EncryptMetadata");
    return revision(document) < 4 || !covers.isBool() || covers.getBoolValue();
}

std::string handlerName(Document& document)
{
    if (document.encryption.kind == Kind::Replace) {
        return "Standard";
    }
    if (!keepsLoaded(document)) {
        return {};
    }
    QPDFObjectHandle filter = dictionary(document).getKey("/Filter");
    return filter.isName() ? filter.getName().substr(1) : std::string();
}

AccessLevel accessLevel(Document& document)
{
    if (!document.isEncrypted()) {
        return AccessLevel::NotEncrypted;
    }
    const bool owner = document.raisedToOwner || document.file().ownerPasswordMatched();
    return owner ? AccessLevel::Owner : AccessLevel::User;
}

Result<Opens> checkPassword(Document& document, const std::string& password)
{
    if (!document.source()) {
        return Opens::Nothing;
    }
    try {
        for (const std::string& encoding : QUtil::possible_repaired_encodings(password)) {
            const Opens opens = tryPassword(document.source(), encoding);
            if (opens != Opens::Nothing) {
                return opens;
            }
        }
        return Opens::Nothing;
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(document.name()));
    }
}

Outcome raiseAccessLevel(Document& document, const std::string& ownerPassword)
{
    if (accessLevel(document) != AccessLevel::User) {
        return {};
    }
    const Result<Opens> opens = checkPassword(document, ownerPassword);
    if (!opens) {
        return tl::unexpected<Error>(opens.error());
    }
    if (*opens != Opens::AsOwner && *opens != Opens::AsBoth) {
        return fail(ErrorCode::WrongPassword, document.name() + ": not the owner password");
    }
    document.raisedToOwner = true;
    return {};
}

Outcome encrypt(Document& document, NewEncryption encryption)
{
    if (encryption.algorithm != EncryptionAlgorithm::Rc4Bits128 &&
        encryption.algorithm != EncryptionAlgorithm::AesBits128 &&
        encryption.algorithm != EncryptionAlgorithm::AesBits256) {
        return fail(ErrorCode::BadArgument,
                    "the algorithm must be 2 (RC4 128 bits), 3 (AES 128 bits) or 4 (AES 256 bits)");
    }
    for (std::string* password : {&encryption.ownerPassword, &encryption.userPassword}) {
        if (Outcome status = encode(*password, encryption.algorithm); !status) {
            return status;
        }
    }
    if (Outcome status = needsOwner(document); !status) {
        return status;
    }
    encryption.permissionBits =
        writtenPermissionBits(encryption.permissionBits, encryption.algorithm);
    encryption.coversMetadata = document.encryption.coversMetadata;
    document.encryption.kind = Kind::Replace;
    document.encryption.replacement = std::move(encryption);
    document.changes().recordSetting();
    return {};
}

Outcome removeEncryption(Document& document)
{
    if (Outcome status = needsOwner(document); !status) {
        return status;
    }
    if (isEncrypted(document)) {
        document.encryption.kind = Kind::Remove;
        document.encryption.replacement.reset();
        document.changes().recordSetting();
    }
    return {};
}

void setMetadataEncryption(Document& document, bool covers)
{
    EncryptionPlan& plan = document.encryption;
    plan.coversMetadata = covers;
    if (plan.replacement && plan.replacement->coversMetadata != covers) {
        plan.replacement->coversMetadata = covers;
        document.changes().recordSetting();
    }
}

} // namespace karvel::security
