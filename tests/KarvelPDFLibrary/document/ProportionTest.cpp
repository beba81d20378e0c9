#include "KarvelPDFLibrary/document/Document.h"

#include <gmock/gmock.h>

#include <qpdf/Pl_Flate.hh>
#include <qpdf/Pl_String.hh>

namespace {

using namespace karvel;

std::string repeated(const std::string& text, int times)
{
    std::string all;
    all.reserve(text.size() * static_cast<std::size_t>(times));
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

std::string deflated(const std::string& data)
{
    std::string all;
    Pl_String collect("deflated", nullptr, all);
    Pl_Flate deflate("deflate", &collect, Pl_Flate::a_deflate);
    deflate.write(reinterpret_cast<const unsigned char*>(data.data()), data.size());
    deflate.finish();
    return all;
}

std::string stream(const std::string& keys, const std::string& data)
{
    return "<< " + keys + " /Length " + std::to_string(data.size()) + " >>\nstream\n" + data +
           "\nendstream";
}

/// A file of one page; what is added comes before its newest cross-reference table.
class File {
public:
    explicit File(const std::string& kids = "3 0 R", const std::string& inPage = "")
    {
        object("<< /Type /Catalog /Pages 2 0 R >>");
        object("<< /Type /Pages /Kids [" + kids + "] /Count 1 >>");
        object("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 99 99] " + inPage + " >>");
    }

    /// Adds an object that no table names, and returns where it is.
    std::size_t add(const std::string& value)
    {
        const std::size_t at = text_.size();
        text_ += "9 0 obj\n" + value + "\nendobj\n";
        return at;
    }

    /// Adds a table, as the newest, and returns where it is.
    std::size_t table(const std::string& inTrailer)
    {
        newest_ = text_.size();
        char line[32];
        text_ += "xref\n0 4\n0000000000 65535 f \n";
        for (const std::size_t offset : offsets_) {
            std::snprintf(line, sizeof line, "%010zu 00000 n \n", offset);
            text_ += line;
        }
        text_ += "trailer\n<< /Size 4 /Root 1 0 R " + inTrailer + " >>\n";
        return newest_;
    }

    std::string ended() const
    {
        return text_ + "startxref\n" + std::to_string(newest_) + "\n%%EOF\n";
    }

private:
    void object(const std::string& value)
    {
        offsets_.push_back(text_.size());
        text_ += std::to_string(offsets_.size()) + " 0 obj\n" + value + "\nendobj\n";
    }

    std::string text_ = "%PDF-1.7\n";
    std::vector<std::size_t> offsets_;
    std::size_t newest_ = 0;
};

std::string withKids(const std::string& kids, const std::string& inPage = "")
{
    File file(kids, inPage);
    file.table("");
    return file.ended();
}

std::string crossReferenceStream(const std::string& entry, int entries, int said, int filters = 1)
{
    std::string data = repeated(entry, entries);
    for (int i = 0; i < filters; ++i) {
        data = deflated(data);
    }
    return stream("/Type /XRef /W [1 1 1] /Index [10 " + std::to_string(said) + "] /Size " +
                      std::to_string(said + 10) + " /Root 1 0 R /Filter [" +
                      repeated("/FlateDecode ", filters) + "]",
                  data);
}

std::string withOlderSection(const std::string& section)
{
    File file;
    const std::size_t at = file.add(section);
    file.table("/Prev " + std::to_string(at));
    return file.ended();
}

/// Tables of which each names the same stream beside it.
std::string withSharedStream(int tables, int entries)
{
    File file;
    const std::string beside =
        "/XRefStm " +
        std::to_string(file.add(crossReferenceStream(std::string("\0\0\0", 3), entries, entries)));
    std::size_t older = file.table("");
    for (int i = 0; i < tables; ++i) {
        older = file.table(beside + " /Prev " + std::to_string(older));
    }
    return file.ended();
}

/// A catalog and more in an object stream.
std::string withObjectStream(const std::string& more)
{
    const std::string catalog = "<< /Type /Catalog /Pages 2 0 R >> ";
    const std::string pages = "<< /Type /Pages /Kids [3 0 R] /Count 1 >> ";
    const std::string page = "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 99 99] >> ";
    const std::string header = "1 0 2 " + std::to_string(catalog.size()) + " 3 " +
                               std::to_string(catalog.size() + pages.size()) + " ";
    std::string file = "%PDF-1.7\n";
    const auto objects = static_cast<char>(file.size());
    file += "4 0 obj\n" +
            stream("/Type /ObjStm /N 3 /First " + std::to_string(header.size()) +
                       " /Filter /FlateDecode",
                   deflated(header + catalog + pages + page + more)) +
            "\nendobj\n";
    const std::string places = {0, 0, 0, 2, 4, 0, 2, 4, 1, 2, 4, 2, 1, objects, 0};
    return file + "5 0 obj\n" + stream("/Type /XRef /W [1 1 1] /Size 5 /Root 1 0 R", places) +
           "\nendobj\nstartxref\n" + std::to_string(file.size()) + "\n%%EOF\n";
}

const std::string freeEntry(3, '\0');
const std::string usedEntry = {1, 9, 0};

constexpr const char* tooManyPages = "lists the same pages again more often";
constexpr const char* tooManyEntries = "more entries than a file of its size";
constexpr const char* tooMuchData = "decodes to more than a file of its size";

/// What a document may cost is held against its size: what speaks of more than it can mean is
/// refused before any table is made for it.
struct Claim {
    const char* name;
    std::string file;
    int pages;         ///< where it can be opened
    const char* error; ///< else a part of the error
};

std::vector<Claim> claims()
{
    return {
        {"a page listed five thousand times", withKids(repeated("3 0 R ", 5000)), 5000, nullptr},
        {"a page listed a hundred thousand times", withKids(repeated("3 0 R ", 100'000)), 0,
         tooManyPages},
        {"a large page listed ten times",
         withKids(repeated("3 0 R ", 10), "/X (" + std::string(200'000, 'x') + ")"), 10, nullptr},
        {"a large page listed a thousand times",
         withKids(repeated("3 0 R ", 1000), "/X (" + std::string(200'000, 'x') + ")"), 0,
         tooManyPages},
        {"an older section of half a million free entries",
         withOlderSection(crossReferenceStream(freeEntry, 500'000, 500'000)), 1, nullptr},
        {"an older section of too many free entries",
         withOlderSection(crossReferenceStream(freeEntry, 10'000'000, 10'000'000)), 0,
         tooManyEntries},
        {"an older section of one and a half million objects at one place",
         withOlderSection(crossReferenceStream(usedEntry, 1'500'000, 1'500'000)), 0,
         tooManyEntries},
        {"as many behind two filters",
         withOlderSection(crossReferenceStream(usedEntry, 1'500'000, 1'500'000, 2)), 0,
         tooManyEntries},
        {"data that go on after the one entry",
         withOlderSection(crossReferenceStream(freeEntry, 15'000'000, 1)), 0, tooManyEntries},
        {"a stream beside ten tables", withSharedStream(10, 100'000), 1, nullptr},
        {"a stream beside a hundred tables", withSharedStream(100, 100'000), 0, tooManyEntries},
        {"an object stream of a little more", withObjectStream(std::string(1'000'000, ' ')), 1,
         nullptr},
        {"an object stream of very much more", withObjectStream(std::string(9'000'000, ' ')), 0,
         tooMuchData},
    };
}

TEST(Documents, AreOfTheirSizeOrRefused)
{
    for (const Claim& claim : claims()) {
        SCOPED_TRACE(claim.name);
        const auto document = Document::load(io::fromMemory(claim.file), {});
        if (claim.error == nullptr) {
            ASSERT_TRUE(document.has_value()) << document.error().text;
            EXPECT_EQ((*document)->pageCount(), claim.pages);
            EXPECT_FALSE((*document)->wasReconstructed());
            continue;
        }
        ASSERT_FALSE(document.has_value());
        EXPECT_EQ(document.error().code, ErrorCode::NotPdf);
        EXPECT_THAT(document.error().text, testing::HasSubstr(claim.error));
    }
}

} // namespace
