#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "KarvelPDFLibrary/security/Encryption.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <gtest/gtest.h>
#include <qpdf/QPDF.hh>
#include <regex>

namespace {

using namespace karvel;

std::string encryptedBy(const std::string& qpdfOptions)
{
    return support::rewritten(support::documentOfPages(3),
                              "--allow-weak-crypto --encrypt " + qpdfOptions + " --");
}

std::string withoutTrailer(const std::string& pdf)
{
    return pdf.substr(0, pdf.rfind("\nxref\n") + 1);
}

std::string withTrailerWordDamaged(const std::string& pdf)
{
    return support::replaced(pdf, "\ntrailer ", "\ntra1ler ");
}

std::string withEncryptLeadingNowhere(const std::string& pdf)
{
    return std::regex_replace(pdf, std::regex("/Encrypt \\d+ 0 R"), "/Encrypt 99 0 R");
}

std::string withEncryptMisspeltAndNoTable(const std::string& pdf)
{
    return support::replaced(support::replaced(pdf, "/Encrypt ", "/Encrxpt "), "startxref\n",
                             "startxref\n99");
}

std::string withoutDictionary(const std::string& pdf)
{
    const std::size_t filter = pdf.find("/Filter /Standard");
    const std::size_t object = pdf.rfind(" 0 obj", filter);
    return withEncryptMisspeltAndNoTable(std::string(pdf).replace(object, 6, " x xxx"));
}

struct Cipher {
    const char* name;
    const char* qpdfOptions;
    bool needsIdentifier;
};

const Cipher ciphers[] = {{"rc4 40 bits", "40", true},
                          {"rc4 128 bits", "128 --use-aes=n", true},
                          {"rc4 crypt filters", "128 --force-V4", true},
                          {"aes 128 bits", "128 --use-aes=y", true},
                          {"aes 256 bits", "256", false}};

struct Loss {
    const char* name;
    std::string (*change)(const std::string& pdf);
    bool losesIdentifier;
    bool losesDictionary;
};

const Loss losses[] = {
    {"file cut off before its table", withoutTrailer, true, false},
    {"keyword of the trailer damaged", withTrailerWordDamaged, false, false},
    {"entry leads nowhere", withEncryptLeadingNowhere, false, false},
    {"entry misspelt and table lost", withEncryptMisspeltAndNoTable, false, false},
    {"dictionary has no number and is nowhere referred to", withoutDictionary, false, true}};

/// What becomes of a document that lost a page under a password: the texts of the pages that are
/// left, or the failure's code.
std::string outcome(const std::string& pdf, const std::string& password)
{
    auto document = Document::load(io::fromMemory(pdf), {password, true});
    if (!document) {
        EXPECT_EQ(document.error().text.find("data in memory: "), 0U) << document.error().text;
        return "code " + std::to_string(static_cast<int>(document.error().code));
    }
    EXPECT_TRUE((*document)->wasReconstructed());
    EXPECT_TRUE(pages::deletePages(**document, {2, 1}).has_value());
    const auto bytes = saving::toString(**document, {});
    EXPECT_TRUE(bytes.has_value());
    std::string texts = security::isEncrypted(**document) ? "encrypted:" : "open:";
    for (const std::string& text : support::pageTexts(*bytes, password)) {
        texts += " " + text;
    }
    return texts + support::problems(*bytes, password);
}

TEST(LostEncryption, IsFoundOrTheDocumentIsRefused)
{
    for (const Cipher& cipher : ciphers) {
        for (const Loss& loss : losses) {
            for (const char* password : {"", "u"}) {
                SCOPED_TRACE(std::string(cipher.name) + ", " + loss.name + ", password '" +
                             password + "'");
                const std::string pdf =
                    encryptedBy("'" + std::string(password) + "' o " + cipher.qpdfOptions);
                const std::string damaged = loss.change(pdf);
                const bool lost =
                    loss.losesDictionary || (loss.losesIdentifier && cipher.needsIdentifier);
                EXPECT_EQ(outcome(damaged, password), lost ? "code 7" : "encrypted: Page 1 Page 3");
                EXPECT_EQ(outcome(damaged, "x"), lost ? "code 7" : "code 8");
            }
        }
    }
}

struct Sign {
    const char* name;
    const char* object;
    bool refused;
};

TEST(LostTrailers, AreNotMadeUpWhereAnythingLooksEncrypted)
{
    const Sign rows[] = {
        {"standard handler", "<< /Filter /Standard >>", true},
        {"standard handler in an unusual spelling", "<< /F#69lter\n%\n/St#61ndard >>", true},
        {"method of a crypt filter", "<< /CF << /X << /CFM /AESV2 >> >> >>", true},
        {"method by reference", "<< /CFM 1 0 R >>", true},
        {"filter for streams", "<< /StmF /X >>", true},
        {"filter for strings", "<< /StrF /X >>", true},
        {"recipients", "<< /Recipients [(x)] >>", true},
        {"password data", "<< /O (0123456789) /R 2 /U <3031> >>", true},
        {"a whole dictionary that fits nothing",
         "<< /Filter /Standard /V 1 /R 2 /P -4 /O (01234567890123456789012345678901) /U "
         "(01234567890123456789012345678901) >>",
         true},
        {"trailer that is none", "<< /Encrypt 1 0 R >>", true},
        {"attributes of structure", "<< /O /Table /Summary (x) /S /Standard >>", false},
        {"role map", "<< /Standard /P /O /P >>", false},
        {"number format", "<< /U (in) /O /S >>", false},
        {"password data in two objects", "<< /O (x) >>\nendobj\n99 0 obj\n<< /U (x) >>", false},
        {"names in a text", "(CFM StmF Recipients Standard)", false}};
    for (const Sign& row : rows) {
        SCOPED_TRACE(row.name);
        support::PagedDocument file(3);
        file.builder.add(row.object);
        const std::string pdf = file.build();
        EXPECT_EQ(outcome(pdf.substr(0, pdf.rfind("xref\n", pdf.rfind("trailer"))), ""),
                  row.refused ? "code 7" : "open: Page 1 Page 3");
        const bool openAsItIs = row.refused && Document::load(io::fromMemory(pdf), {});
        EXPECT_EQ(openAsItIs, row.refused) << "with its trailer it says that it isn't encrypted";
    }
}

struct Filter {
    const char* name;
    const char* qpdfOptions;
    const char* from;
    const char* to;
    bool opens;
};

TEST(CryptFilters, ThatAreNotKnownAreRefused)
{
    const Filter rows[] = {
        {"rc4", "128 --force-V4", "/CFM /V2", "/CFM /V7", false},
        {"aes 128 bits", "128 --use-aes=y", "/CFM /AESV2", "/CFM /AESV9", false},
        {"aes 256 bits", "256", "/CFM /AESV3", "/CFM /AESV4", false},
        {"handled by nobody", "256", "/CFM /AESV3", "/CFM /None ", false},
        {"without method", "256", "/CFM /AESV3", "/CFX /AESV3", false},
        {"streams by a filter that is not there", "256", "/StmF /StdCF", "/StmF /StdCX", false},
        {"strings by a filter that is not there", "256", "/StrF /StdCF", "/StrF /StdCX", false},
        {"files by a filter that is not there", "256", "/StrF /StdCF", "/EFF /StdCX ", false},
        {"streams by an object that is not there", "256", "/StmF /StdCF", "/StmF 99 0 R ", false},
        {"as it is", "256", "/StmF /StdCF", "/StmF /StdCF", true}};
    for (const Filter& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string pdf = support::replaced(
            encryptedBy("'' o " + std::string(row.qpdfOptions)), row.from, row.to);
        const auto document = Document::load(io::fromMemory(pdf), {});
        EXPECT_EQ(document.has_value(), row.opens);
        if (!document) {
            EXPECT_EQ(document.error().code, ErrorCode::EncryptionUnsupported);
            EXPECT_NE(document.error().text.find("crypt filter"), std::string::npos);
        }
    }
}

TEST(CryptFilters, OfSingleStreamsMustBeKnown)
{
    const std::pair<const char*, bool> rows[] = {
        {"/Filter /Crypt", true},
        {"/Filter [/Crypt] /DecodeParms [<< /Name /Identity >>]", true},
        {"/Filter [/Crypt] /DecodeParms [<< /Name /StdCF >>]", true},
        {"/Filter [/Crypt] /DecodeParms [<< /Name /Secret >>]", false},
        {"/Filter [/C#72ypt] /DecodeParms [<< /Name /Secret >>]", false},
        {"/Filter /Crypt /DecodeParms << /Name /Secret >>", false}};
    for (const auto& [entries, opens] : rows) {
        for (const char* before : {"", " "}) { // which makes the file unfit for an index
            SCOPED_TRACE(before + std::string(entries));
            std::string owner;
            std::string user;
            QPDF::compute_encryption_O_U("", "o", 4, 4, 16, -4, true, "", owner, user);
            support::PagedDocument file(1);
            const int encryption = file.builder.add(
                "<< /Filter /Standard /V 4 /R 4 /Length 128 /P -4 /CF << /StdCF << /CFM /AESV2 >> "
                ">> /StmF /Identity /StrF /Identity /O " +
                QPDFObjectHandle::newString(owner).unparseBinary() + " /U " +
                QPDFObjectHandle::newString(user).unparseBinary() + " >>");
            file.builder.addStream("0123456789abcdef0123456789abcdef", entries);
            file.builder.setTrailerEntries("/Encrypt " +
                                           support::PdfBuilder::reference(encryption));
            const auto document = Document::load(io::fromMemory(before + file.build()), {});
            ASSERT_EQ(document.has_value(), opens);
            if (!opens) {
                EXPECT_EQ(document.error().code, ErrorCode::EncryptionUnsupported);
            }
        }
    }
}

} // namespace
