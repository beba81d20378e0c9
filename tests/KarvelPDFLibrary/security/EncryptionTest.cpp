#include "KarvelPDFLibrary/security/Encryption.h"

#include "KarvelPDFLibrary/saving/Save.h"
#include "KarvelPDFLibrary/security/Permissions.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <gtest/gtest.h>

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

class LoadedEncryption : public testing::TestWithParam<Loaded> {};

TEST_P(LoadedEncryption, IsReported)
{
    const Loaded& row = GetParam();
    auto document = support::opened(encryptedBy(row.qpdfOptions), "u");
    EXPECT_TRUE(isEncrypted(*document));
    EXPECT_EQ(algorithm(*document), row.algorithm);
    EXPECT_EQ(revision(*document), row.revision);
    EXPECT_EQ(coversMetadata(*document), row.coversMetadata);
    EXPECT_EQ(handlerName(*document), "Standard");
    EXPECT_EQ(accessLevel(*document), AccessLevel::User);
}

INSTANTIATE_TEST_SUITE_P(
    Security, LoadedEncryption,
    testing::Values(Loaded{"rc4_40_bits", "u o 40", EncryptionAlgorithm::Rc4Bits40, 2, true},
                    Loaded{"rc4_128_bits", "u o 128", EncryptionAlgorithm::Rc4Bits128, 3, true},
                    Loaded{"rc4_crypt_filters", "u o 128 --force-V4 --cleartext-metadata",
                           EncryptionAlgorithm::Rc4Bits128, 4, false},
                    Loaded{"aes_128_bits", "u o 128 --use-aes=y", EncryptionAlgorithm::AesBits128,
                           4, true},
                    Loaded{"aes_256_bits_revision_5", "u o 256 --force-R5",
                           EncryptionAlgorithm::AesBits256, 5, true},
                    Loaded{"aes_256_bits", "u o 256 --cleartext-metadata",
                           EncryptionAlgorithm::AesBits256, 6, false}),
    [](const auto& info) { return info.param.name; });

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

class Passwords : public testing::TestWithParam<Attempt> {};

TEST_P(Passwords, AreChecked)
{
    auto document = support::opened(encryptedBy(GetParam().qpdfOptions), "u");
    ASSERT_TRUE(document);
    EXPECT_EQ(checkPassword(*document, GetParam().password).value(), GetParam().opens);
}

INSTANTIATE_TEST_SUITE_P(
    Security, Passwords,
    testing::Values(Attempt{"user", "u o 256", "u", Opens::AsUser},
                    Attempt{"owner", "u o 256", "o", Opens::AsOwner},
                    Attempt{"wrong", "u o 256", "x", Opens::Nothing},
                    Attempt{"wrong_and_not_ascii", "u o 256", "x\xc3\xa9", Opens::Nothing},
                    Attempt{"empty", "u o 128", "", Opens::Nothing},
                    Attempt{"same_for_both", "u u 128", "u", Opens::AsBoth},
                    Attempt{"in_another_encoding", "u '\xc3\xa9' 128", "\xc3\xa9", Opens::AsOwner}),
    [](const auto& info) { return info.param.name; });

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

struct Restriction {
    const char* name;
    const char* qpdfOptions;
    std::vector<int> permitted;
};

class Permissions : public testing::TestWithParam<Restriction> {};

TEST_P(Permissions, AreThoseOfTheUserPassword)
{
    auto document = support::opened(encryptedBy(GetParam().qpdfOptions), "u");
    std::vector<int> permitted;
    for (int code = 1; code <= permissionCount; ++code) {
        if (isPermitted(*document, static_cast<Permission>(code))) {
            permitted.push_back(code);
        }
    }
    EXPECT_EQ(permitted, GetParam().permitted);
    auto owner = support::opened(encryptedBy(GetParam().qpdfOptions), "o");
    EXPECT_TRUE(isPermitted(*owner, Permission::Modifying));
}

INSTANTIATE_TEST_SUITE_P(
    Security, Permissions,
    testing::Values(Restriction{"everything", "u o 256", {1, 2, 3, 4, 5, 6, 7, 8}},
                    Restriction{"no_printing", "u o 256 --print=none", {2, 3, 4, 5, 6, 7}},
                    Restriction{"low_printing", "u o 256 --print=low", {1, 2, 3, 4, 5, 6, 7}},
                    Restriction{"no_changes", "u o 256 --modify=none", {1, 3, 6, 8}},
                    Restriction{"forms_only", "u o 256 --modify=form", {1, 3, 5, 6, 7, 8}},
                    Restriction{"no_copying", "u o 256 --extract=n", {1, 2, 4, 5, 6, 7, 8}},
                    Restriction{
                        "no_accessibility", "u o 128 --accessibility=n", {1, 2, 3, 4, 5, 7, 8}},
                    Restriction{"early_revision", "u o 40 --annotate=n --modify=n", {1, 3, 6, 8}}),
    [](const auto& info) { return info.param.name; });

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

class NewEncryptions : public testing::TestWithParam<Choice> {};

TEST_P(NewEncryptions, AreWritten)
{
    const Choice& row = GetParam();
    auto document = support::opened(support::documentOfPages(2));
    setMetadataEncryption(*document, row.coversMetadata);
    const int bits = composePermissionBits({true, false, false, true, true, true, false, false});
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

INSTANTIATE_TEST_SUITE_P(
    Security, NewEncryptions,
    testing::Values(Choice{"rc4", EncryptionAlgorithm::Rc4Bits128, "R = 3", true},
                    Choice{"aes_128", EncryptionAlgorithm::AesBits128, "AESv2", false},
                    Choice{"aes_256", EncryptionAlgorithm::AesBits256, "AESv3", true},
                    Choice{"aes_256_clear_metadata", EncryptionAlgorithm::AesBits256, "AESv3",
                           false}),
    [](const auto& info) { return info.param.name; });

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
