#include "KarvelPDFLibrary/saving/Save.h"

#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace karvel;
using namespace karvel::saving;

SaveOptions keepingEverything()
{
    SaveOptions options = support::keeping();
    options.deterministicIdentifier = true;
    return options;
}

/// Removes page 2 of 3 and saves.
std::string withoutPageTwo(const std::string& pdf, const std::string& password = {})
{
    auto document = support::opened(pdf, password);
    EXPECT_TRUE(pages::deletePages(*document, {2, 1}).has_value());
    SaveOptions options = keepingEverything();
    options.linearize = document->file().isLinearized();
    auto bytes = toString(*document, options);
    EXPECT_TRUE(bytes.has_value()) << (bytes ? std::string() : bytes.error().text);
    return bytes ? *bytes : std::string();
}

struct Form {
    const char* name;
    const char* qpdfOptions;
    const char* password;
    const char* sign; // a word that `qpdf --show-encryption --check` prints for input and output
};

TEST(Save, KeepsEveryForm)
{
    const Form rows[] = {{"plain", "--object-streams=disable", "", "not encrypted"},
                         {"object streams", "--object-streams=generate", "", "not encrypted"},
                         {"linearized", "--linearize", "", "File is linearized"},
                         {"rc4", "--allow-weak-crypto --encrypt u o 128 --print=low --", "u",
                          "print low resolution: allowed"},
                         {"aes128", "--encrypt u o 128 --use-aes=y --modify=none --", "o", "AESv2"},
                         {"aes256", "--encrypt u o 256 --extract=n --", "u", "AESv3"},
                         {"aes256 with object streams",
                          "--object-streams=generate --encrypt '' o 256 --", "", "AESv3"}};
    for (const Form& row : rows) {
        SCOPED_TRACE(row.name);
        const auto& [name, options, password, sign] = row;
        const std::string before = support::rewritten(support::documentOfPages(3), options);
        const std::string after = withoutPageTwo(before, password);
        EXPECT_EQ(support::pageTexts(after, password), support::pagesNamed({1, 3}));
        EXPECT_EQ(support::problems(after, password), "");
        const support::ScratchFolder scratch;
        for (const std::string& pdf : {before, after}) {
            const std::string told =
                support::runCommand("qpdf --show-encryption --check '--password=" +
                                    std::string(password) + "' " + scratch.write("a.pdf", pdf))
                    .output;
            EXPECT_NE(told.find(sign), std::string::npos) << told;
        }
        EXPECT_EQ(before.find("/ObjStm") != std::string::npos,
                  after.find("/ObjStm") != std::string::npos);
        EXPECT_EQ(before.substr(0, 8), after.substr(0, 8)) << "the version";
    }
}

TEST(Save, KeepsEncryptionHoweverStreamsAreTreated)
{
    const std::string pdf =
        support::rewritten(support::documentOfPages(1), "--encrypt user owner 256 --");
    for (const StreamData mode : {StreamData::Keep, StreamData::Decode, StreamData::Compress}) {
        for (const bool readable : {false, true}) {
            auto document = support::opened(pdf, "user");
            SaveOptions options;
            options.streamData = mode;
            options.readable = readable;
            const std::string saved = toString(*document, options).value_or("");
            EXPECT_EQ(support::pageTexts(saved, "owner"), support::pagesNamed({1}));
            EXPECT_NE(support::problems(saved, ""), "") << "opens without its password";
        }
    }
}

TEST(Save, IsDeterministic)
{
    const std::string pdf = support::documentOfPages(3);
    EXPECT_EQ(withoutPageTwo(pdf), withoutPageTwo(pdf));
}

TEST(Save, RenewsHalfOfTheIdentifier)
{
    support::PagedDocument file(3);
    file.builder.setTrailerEntries(
        "/ID [<00112233445566778899aabbccddeeff> <00112233445566778899aabbccddeeff>]");
    auto again = support::opened(withoutPageTwo(file.build()));
    QPDFObjectHandle identifier = again->file().getTrailer().getKey("/ID");
    EXPECT_EQ(identifier.getArrayItem(0).unparse(), "<00112233445566778899aabbccddeeff>");
    EXPECT_NE(identifier.getArrayItem(1).getStringValue(),
              identifier.getArrayItem(0).getStringValue());
}

class SavingToFile : public testing::Test {
protected:
    support::ScratchFolder scratch;
};

TEST_F(SavingToFile, MayReplaceTheInput)
{
    const std::string path = scratch.write("a.pdf", support::documentOfPages(3));
    auto document = Document::load(io::openFile(path).value(), {}).value();
    ASSERT_TRUE(pages::deletePages(*document, {1, 1}).has_value());
    ASSERT_TRUE(toFile(*document, path, keepingEverything()).has_value());
    EXPECT_EQ(support::pageTexts(support::readFile(path)), support::pagesNamed({2, 3}));
}

// As hosts do that hold files open rather than trust their paths.
TEST_F(SavingToFile, GoesFromAndToOpenFiles)
{
    const std::string input = scratch.write("a.pdf", support::documentOfPages(300));
    const std::string output = scratch.write("b.pdf", std::string(1000000, 'x'));
    const io::FileDescriptor from(open(input.c_str(), O_RDONLY));
    const io::FileDescriptor to(open(output.c_str(), O_WRONLY));
    std::filesystem::rename(input, scratch.path("moved.pdf"));
    for (const char* folder : {"/dev/fd/", "/proc/self/fd/"}) {
        auto source = io::openFile(folder + std::to_string(from.get())).value();
        auto document = Document::load(std::move(source), {}).value();
        ASSERT_TRUE(pages::deletePages(*document, {1, 298}).has_value());
        const std::string named = folder + std::to_string(to.get());
        ASSERT_TRUE(toFile(*document, named, keepingEverything()).has_value());
        EXPECT_EQ(support::pageTexts(support::readFile(output)), support::pagesNamed({299, 300}));
    }
    auto document = Document::load(io::openFile(scratch.path("moved.pdf")).value(), {}).value();
    const Outcome unwritable = toFile(*document, io::pathOf(from.get()), keepingEverything());
    ASSERT_FALSE(unwritable.has_value());
    EXPECT_EQ(unwritable.error().code, ErrorCode::FileNotWritable);
}

TEST_F(SavingToFile, KeepsPrivateWhatWasPrivate)
{
    const std::string input = scratch.write("a.pdf", support::documentOfPages(3));
    ASSERT_EQ(chmod(input.c_str(), 0600), 0);
    auto document = Document::load(io::openFile(input).value(), {}).value();
    ASSERT_TRUE(toFile(*document, scratch.path("b.pdf"), keepingEverything()).has_value());
    EXPECT_EQ(std::filesystem::status(scratch.path("b.pdf")).permissions(),
              std::filesystem::perms(0600));
}

TEST_F(SavingToFile, FailsWhenTheInputChangedMeanwhile)
{
    const std::string bytes = support::documentOfPages(300);
    for (const bool shorter : {true, false}) {
        const std::string path = scratch.write("a.pdf", bytes);
        auto document = Document::load(io::openFile(path).value(), {}).value();
        ASSERT_TRUE(pages::deletePages(*document, {1, 1}).has_value());
        if (shorter) {
            ASSERT_EQ(truncate(path.c_str(), 1000), 0);
        } else {
            scratch.write("a.pdf", std::string(bytes.size(), 'x'));
            std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() +
                                                       std::chrono::hours(1));
        }
        const Outcome status = toFile(*document, scratch.path("out.pdf"), keepingEverything());
        ASSERT_FALSE(status.has_value());
        EXPECT_EQ(status.error().code, ErrorCode::FileNotReadable);
        EXPECT_FALSE(std::filesystem::exists(scratch.path("out.pdf")));
    }
}

struct Damage {
    const char* name;
    std::string bytes;
    bool repairable;
};

TEST(DamagedFiles, AreRepairedOrRefusedButNeverBlanked)
{
    const std::string intact = support::documentOfPages(3);
    const std::size_t table = intact.find("xref\n");
    const Damage rows[] = {
        {"without cross-reference table", intact.substr(0, table), true},
        {"table cut but trailer there", std::string(intact).erase(table, 60), true},
        {"wrong startxref", support::replaced(intact, "startxref\n", "startxref\n99"), true},
        {"content stream lost", support::replaced(intact, "4 0 obj", "4 0 xxx"), false},
        {"empty", "", false},
        {"text", "Dear Sir or Madam,\n", false},
        {"zeros", std::string(5000, '\0'), false}};
    for (const Damage& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = Document::load(io::fromMemory(row.bytes), {});
        Outcome status;
        std::string bytes;
        if (document) {
            ASSERT_TRUE(pages::deletePages(**document, {2, 1}).has_value());
            auto written = toString(**document, keepingEverything());
            status = written ? Outcome() : Outcome(tl::unexpected<Error>(written.error()));
            bytes = written.value_or("");
        } else {
            status = tl::unexpected<Error>(document.error());
        }
        EXPECT_EQ(status.has_value(), row.repairable) << (status ? bytes : status.error().text);
        if (status) {
            EXPECT_EQ(support::pageTexts(bytes), support::pagesNamed({1, 3}));
            EXPECT_EQ(support::problems(bytes), "");
            EXPECT_FALSE((*document)->warnings().empty());
        } else {
            EXPECT_EQ(status.error().code, ErrorCode::NotPdf);
        }
    }
}

} // namespace
