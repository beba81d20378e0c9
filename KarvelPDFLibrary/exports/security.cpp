#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/security/Encryption.h"
#include "KarvelPDFLibrary/security/Permissions.h"
#include "exports.h"

using namespace karvel;
using boundary::onDocument;

int KPLIsEncrypted(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) -> Result<int> {
            return security::isEncrypted(document);
        });
    });
}

int KPLEncryptionAlgorithm(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) -> Result<int> {
            return static_cast<int>(security::algorithm(document));
        });
    });
}

int KPLEncryptionRevision(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(
            self, [](Document& document) -> Result<int> { return security::revision(document); });
    });
}

int KPLIsMetadataEncrypted(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) -> Result<int> {
            return security::coversMetadata(document);
        });
    });
}

wchar_t* KPLSecurityHandlerName(int instance)
{
    return boundary::wideString(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) -> Result<std::string> {
            return security::handlerName(document);
        });
    });
}

int KPLAccessLevel(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) -> Result<int> {
            return static_cast<int>(security::accessLevel(document));
        });
    });
}

int KPLPermissionBits(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) -> Result<int> {
            return security::permissionBits(document);
        });
    });
}

int KPLHasPermission(int instance, int permission)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) -> Result<int> {
            if (permission < 1 || permission > security::permissionCount) {
                return fail(ErrorCode::BadArgument, "the permission must be 1 to 8");
            }
            return security::isPermitted(document, static_cast<security::Permission>(permission));
        });
    });
}

int KPLComposePermissionBits(int instance, int printing, int modifying, int copying, int annotating,
                             int formFilling, int accessibility, int assembling,
                             int fullQualityPrinting)
{
    return boundary::integer(instance, [&](Instance&) -> Result<int> {
        const int switches[] = {printing,    modifying,     copying,    annotating,
                                formFilling, accessibility, assembling, fullQualityPrinting};
        bool allowed[security::permissionCount] = {};
        for (int i = 0; i < security::permissionCount; ++i) {
            if (switches[i] != 0 && switches[i] != 1) {
                return fail(ErrorCode::BadArgument, "each permission must be 0 or 1");
            }
            allowed[i] = switches[i] == 1;
        }
        return security::composePermissionBits(allowed);
    });
}

int KPLCheckPassword(int instance, const wchar_t* password)
{
    return boundary::integer(instance, [&](Instance& self) {
        const std::string tried = boundary::takeWide(self, password);
        return onDocument(self, [&](Document& document) -> Result<int> {
            return security::checkPassword(document, tried).map([](security::Opens opens) {
                return static_cast<int>(opens);
            });
        });
    });
}

int KPLEncryptDocument(int instance, const wchar_t* ownerPassword, const wchar_t* userPassword,
                       int algorithm, int permissionBits)
{
    return boundary::integer(instance, [&](Instance& self) {
        NewEncryption plan;
        plan.ownerPassword = boundary::takeWide(self, ownerPassword);
        plan.userPassword = boundary::takeWide(self, userPassword);
        plan.algorithm = static_cast<EncryptionAlgorithm>(algorithm);
        plan.permissionBits = permissionBits;
        return onDocument(self,
                          [&](Document& document) { return security::encrypt(document, plan); });
    });
}

int KPLSetMetadataEncryption(int instance, int enabled)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) -> Outcome {
            if (enabled != 0 && enabled != 1) {
                return fail(ErrorCode::BadArgument, "the value must be 0 or 1");
            }
            security::setMetadataEncryption(document, enabled == 1);
            return {};
        });
    });
}

int KPLRaiseAccessLevel(int instance, const wchar_t* ownerPassword)
{
    return boundary::integer(instance, [&](Instance& self) {
        const std::string password = boundary::takeWide(self, ownerPassword);
        return onDocument(self, [&](Document& document) {
            return security::raiseAccessLevel(document, password);
        });
    });
}

int KPLRemoveEncryption(int instance)
{
    return boundary::integer(
        instance, [](Instance& self) { return onDocument(self, security::removeEncryption); });
}
