#include "KarvelPDFLibrary/security/Encryption.h"

#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "KarvelPDFLibrary/security/Permissions.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <gtest/gtest.h>
#include <qpdf/QPDF.hh>

namespace {

using namespace karvel;
using namespace karvel::security;

std::string encryptedBy(const std::string& qpdfOptions)
{
    return support::rewritten(support::documentOfPages(2),
                              "--allow-weak-crypto --encrypt " + qpdfOptions + " --");
}

std::string shownEncryption(const std::string& pdf, const std::string& password)
{
    const support::ScratchFolder scratch;
    return support::runCommand("qpdf --show-encryption '--password=" + password + "' " +
                               scratch.write("in.pdf", pdf))
        .output;
}

struct Loaded {
    const char* name;
    const char* qpdfOptions;
    EncryptionAlgorithm algorithm;
    int revision;
    bool coversMetadata;
};

TEST(LoadedEncryption, IsReported)
{
    const Loaded rows[] = {
        {"rc4 40 bits", "u o 40", EncryptionAlgorithm::Rc4Bits40, 2, true},
        {"rc4 128 bits", "u o 128", EncryptionAlgorithm::Rc4Bits128, 3, true},
        {"rc4 crypt filters", "u o 128 --force-V4 --cleartext-metadata",
         EncryptionAlgorithm::Rc4Bits128, 4, false},
        {"aes 128 bits", "u o 128 --use-aes=y", EncryptionAlgorithm::AesBits128, 4, true},
        {"aes 256 bits revision 5", "u o 256 --force-R5", EncryptionAlgorithm::AesBits256, 5, true},
        {"aes 256 bits", "u o 256 --cleartext-metadata", EncryptionAlgorithm::AesBits256, 6,
         false}};
    for (const Loaded& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = support::opened(encryptedBy(row.qpdfOptions), "u");
        EXPECT_TRUE(isEncrypted(*document));
        EXPECT_EQ(algorithm(*document), row.algorithm);
        EXPECT_EQ(revision(*document), row.revision);
        EXPECT_EQ(coversMetadata(*document), row.coversMetadata);
        EXPECT_EQ(handlerName(*document), "Standard");
        EXPECT_EQ(accessLevel(*document), AccessLevel::User);
    }
}

TEST(Security, OfADocumentThatIsNotEncrypted)
{
    auto document = support::opened(support::documentOfPages(1));
    EXPECT_FALSE(isEncrypted(*document));
    EXPECT_EQ(algorithm(*document), EncryptionAlgorithm::None);
    EXPECT_EQ(revision(*document), 0);
    EXPECT_FALSE(coversMetadata(*document));
    EXPECT_EQ(handlerName(*document), "");
    EXPECT_EQ(accessLevel(*document), AccessLevel::NotEncrypted);
    EXPECT_EQ(permissionBits(*document), -1);
    EXPECT_TRUE(isPermitted(*document, Permission::Modifying));
}

struct Attempt {
    const char* name;
    const char* qpdfOptions;
    const char* password;
    Opens opens;
};

TEST(Passwords, AreChecked)
{
    const Attempt rows[] = {
        {"user", "u o 256", "u", Opens::AsUser},
        {"owner", "u o 256", "o", Opens::AsOwner},
        {"wrong", "u o 256", "x", Opens::Nothing},
        {"wrong and not ascii", "u o 256", "x\xc3\xa9", Opens::Nothing},
        {"empty", "u o 128", "", Opens::Nothing},
        {"same for both", "u u 128", "u", Opens::AsBoth},
        {"in another encoding", "u '\xc3\xa9' 128", "\xc3\xa9", Opens::AsOwner}};
    for (const Attempt& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = support::opened(encryptedBy(row.qpdfOptions), "u");
        ASSERT_TRUE(document);
        EXPECT_EQ(checkPassword(*document, row.password).value(), row.opens);
    }
}

TEST(Security, WrongPasswordsOpenNothingInAnyEncoding)
{
    const auto source = io::fromMemory(encryptedBy("u o 256"));
    for (const char* password : {"", "x", "x\xc3\xa9", "\xff"}) {
        const auto document = Document::load(source, {password, true});
        ASSERT_FALSE(document.has_value()) << password;
        EXPECT_EQ(document.error().code, ErrorCode::WrongPassword);
    }
}

TEST(Security, RaisingTheAccessLevelNeedsTheOwnerPassword)
{
    auto document = support::opened(encryptedBy("u o 256 --modify=none"), "u");
    EXPECT_FALSE(isPermitted(*document, Permission::Modifying));
    EXPECT_EQ(raiseAccessLevel(*document, "u").error().code, ErrorCode::WrongPassword);
    EXPECT_EQ(removeEncryption(*document).error().code, ErrorCode::OwnerAccessNeeded);
    EXPECT_EQ(encrypt(*document, {}).error().code, ErrorCode::OwnerAccessNeeded);
    ASSERT_TRUE(raiseAccessLevel(*document, "o").has_value());
    EXPECT_EQ(accessLevel(*document), AccessLevel::Owner);
    EXPECT_TRUE(isPermitted(*document, Permission::Modifying));
    EXPECT_TRUE(removeEncryption(*document).has_value());
}

/// A document whose passwords were made without a file identifier, with another entry for it. No
/// string and no stream is enciphered, so that only the passwords tell.
std::string protectedWithoutIdentifier(const std::string& entry)
{
    constexpr int permissions = -4;
    std::string owner;
    std::string user;
    QPDF::compute_encryption_O_U("u", "o", 4, 4, 16, permissions, true, "", owner, user);
    support::PagedDocument file(2);
    const int encryption = file.builder.add(
        "<< /Filter /Standard /V 4 /R 4 /Length 128 /P " + std::to_string(permissions) +
        " /CF << >> /StmF /Identity /StrF /Identity /O " +
        QPDFObjectHandle::newString(owner).unparseBinary() + " /U " +
        QPDFObjectHandle::newString(user).unparseBinary() + " >>");
    file.builder.setTrailerEntries("/Encrypt " + support::PdfBuilder::reference(encryption) + " " +
                                   entry);
    return file.build();
}

TEST(Security, PasswordsHoldWithoutAProperFileIdentifier)
{
    for (const char* entry : {"", "/ID [<61>]", "/ID [1 2]", "/ID [<> <61>]"}) {
        SCOPED_TRACE(entry);
        const std::string pdf = protectedWithoutIdentifier(entry);
        for (const auto way : {saving::Way::CopyUnchanged, saving::Way::Rewrite}) {
            auto document = support::opened(pdf, "u");
            ASSERT_TRUE(document);
            ASSERT_TRUE(pages::deletePages(*document, {1, 1}).has_value());
            const std::string left = support::savedIn(*document, way);
            for (const char* password : {"u", "o"}) {
                EXPECT_EQ(support::problems(left, password), "");
                EXPECT_EQ(support::pageTexts(left, password), std::vector<std::string>{"Page 2"});
            }
        }
    }
}

struct Restriction {
    const char* name;
    const char* qpdfOptions;
    std::vector<int> permitted;
};

TEST(Permissions, AreThoseOfTheUserPassword)
{
    const Restriction rows[] = {
        {"everything", "u o 256", {1, 2, 3, 4, 5, 6, 7, 8}},
        {"no printing", "u o 256 --print=none", {2, 3, 4, 5, 6, 7}},
        {"low printing", "u o 256 --print=low", {1, 2, 3, 4, 5, 6, 7}},
        {"no changes", "u o 256 --modify=none", {1, 3, 6, 8}},
        {"forms only", "u o 256 --modify=form", {1, 3, 5, 6, 7, 8}},
        {"filling in by the bit for annotating", "u o 128 --form=n", {1, 2, 3, 4, 5, 6, 7, 8}},
        {"no copying", "u o 256 --extract=n", {1, 2, 4, 5, 6, 7, 8}},
        {"no accessibility", "u o 128 --accessibility=n", {1, 2, 3, 4, 5, 7, 8}},
        {"early revision", "u o 40 --annotate=n --modify=n", {1, 3, 6, 8}}};
    for (const Restriction& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = support::opened(encryptedBy(row.qpdfOptions), "u");
        std::vector<int> permitted;
        for (int code = 1; code <= permissionCount; ++code) {
            if (isPermitted(*document, static_cast<Permission>(code))) {
                permitted.push_back(code);
            }
        }
        EXPECT_EQ(permitted, row.permitted);
        auto owner = support::opened(encryptedBy(row.qpdfOptions), "o");
        EXPECT_TRUE(isPermitted(*owner, Permission::Modifying));
    }
}

TEST(Security, ComposesWhatTheEncryptionDictionaryHolds)
{
    EXPECT_EQ(composePermissionBits({true, true, true, true, true, true, true, true}), -4);
    EXPECT_EQ(composePermissionBits({}), -3904);
    // As qpdf writes it for the same permissions.
    auto document = support::opened(encryptedBy("u o 128 --extract=n --print=low"), "u");
    EXPECT_EQ(composePermissionBits({true, true, false, true, true, true, true, false}),
              permissionBits(*document));
}

struct Choice {
    const char* name;
    EncryptionAlgorithm algorithm;
    const char* sign; // in qpdf's account of the encryption
    bool coversMetadata;
};

TEST(NewEncryptions, AreWritten)
{
    const Choice rows[] = {
        {"rc4", EncryptionAlgorithm::Rc4Bits128, "R = 3", true},
        {"aes 128", EncryptionAlgorithm::AesBits128, "AESv2", false},
        {"aes 256", EncryptionAlgorithm::AesBits256, "AESv3", true},
        {"aes 256 clear metadata", EncryptionAlgorithm::AesBits256, "AESv3", false}};
    for (const Choice& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = support::opened(support::documentOfPages(2));
        setMetadataEncryption(*document, row.coversMetadata);
        const int bits =
            composePermissionBits({true, false, false, true, true, true, false, false});
        ASSERT_TRUE(encrypt(*document, {"owner", "\xc3\xa9", row.algorithm, bits}).has_value());
        EXPECT_TRUE(document->isModified());
        EXPECT_EQ(algorithm(*document), row.algorithm);
        const int reported = permissionBits(*document);
        const auto bytes = saving::toString(*document, {});
        ASSERT_TRUE(bytes.has_value());

        const std::string told = shownEncryption(*bytes, "\xc3\xa9");
        EXPECT_NE(told.find(row.sign), std::string::npos) << told;
        EXPECT_NE(told.find("P = " + std::to_string(reported)), std::string::npos) << told;
        EXPECT_EQ(support::pageTexts(*bytes, "owner"), support::pagesNamed({1, 2}));
        EXPECT_EQ(support::pageTexts(*bytes, "wrong").front().substr(0, 7), "Command");
        auto again = support::opened(*bytes, "\xc3\xa9");
        EXPECT_EQ(coversMetadata(*again), coversMetadata(*document));
        EXPECT_FALSE(isPermitted(*again, Permission::Copying));
    }
}

TEST(Security, PasswordsMustFitTheAlgorithm)
{
    auto document = support::opened(support::documentOfPages(1));
    const char* greek = "\xce\xb1";
    EXPECT_EQ(encrypt(*document, {greek, "", EncryptionAlgorithm::AesBits128}).error().code,
              ErrorCode::BadArgument);
    EXPECT_EQ(encrypt(*document, {greek, "", EncryptionAlgorithm::Rc4Bits40}).error().code,
              ErrorCode::BadArgument);
    EXPECT_FALSE(isEncrypted(*document));
    EXPECT_TRUE(encrypt(*document, {greek, "", EncryptionAlgorithm::AesBits256}).has_value());
}

TEST(Security, RemovedEncryptionIsNotWritten)
{
    auto document = support::opened(encryptedBy("u o 256"), "o");
    ASSERT_TRUE(removeEncryption(*document).has_value());
    EXPECT_FALSE(isEncrypted(*document));
    const auto bytes = saving::toString(*document, {});
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(support::pageTexts(*bytes), support::pagesNamed({1, 2}));
    EXPECT_EQ(shownEncryption(*bytes, "").find("File is not encrypted"), 0U);
}

} // namespace
