#include "KarvelPDFLibrary/document/Version.h"

#include "KarvelPDFLibrary/saving/Save.h"
#include "KarvelPDFLibrary/security/Encryption.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;

struct Present {
    const char* name;
    const char* header;
    const char* catalogEntry;
    const char* version;
};

TEST(PresentVersion, IsTheHigherOne)
{
    const Present rows[] = {{"header only", "%PDF-1.4", "", "1.4"},
                            {"catalog higher", "%PDF-1.4", "/Version /1.6", "1.6"},
                            {"catalog lower", "%PDF-1.7", "/Version /1.4", "1.7"},
                            {"catalog second", "%PDF-1.7", "/Version /2.0", "2.0"},
                            {"catalog nonsense", "%PDF-1.7", "/Version /9.9.9.9", "1.7"},
                            {"catalog number", "%PDF-1.7", "/Version 2.0", "1.7"}};
    for (const Present& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string pdf = support::Sketch{{""}, row.catalogEntry, {}}.built();
        const std::string bytes = support::replaced(pdf, "%PDF-1.7", row.header);
        EXPECT_EQ(version(*support::opened(bytes)), row.version);
    }
}

std::string saved(Document& document, saving::ObjectStreams objectStreams)
{
    saving::SaveOptions options;
    options.objectStreams = objectStreams;
    return saving::toString(document, options).value();
}

TEST(Version, IsWrittenThoughThePresentOneIsHigher)
{
    auto document = support::opened(support::Sketch{{""}, "/Version /2.0", {}}.built());
    ASSERT_TRUE(setVersion(*document, 1, 4).has_value());
    EXPECT_EQ(version(*document), "1.4");
    EXPECT_TRUE(document->isModified());
    const std::string bytes = saved(*document, saving::ObjectStreams::None);
    EXPECT_EQ(version(*support::opened(bytes)), "1.4");
    EXPECT_EQ(bytes.substr(0, 8), "%PDF-1.4");
}

TEST(Version, IsRaisedByWhatObjectStreamsAndEncryptionNeed)
{
    auto packed = support::opened(support::documentOfPages(20));
    ASSERT_TRUE(setVersion(*packed, 1, 3).has_value());
    const std::string withStreams = saved(*packed, saving::ObjectStreams::Pack);
    EXPECT_EQ(withStreams.substr(0, 8), "%PDF-1.5");
    EXPECT_NE(withStreams.find("/ObjStm"), std::string::npos);

    for (const bool fresh : {true, false}) {
        auto document = support::opened(support::documentOfPages(1));
        if (fresh) {
            ASSERT_TRUE(security::encrypt(*document, {"o", "u"}).has_value());
        } else {
            document = support::opened(
                support::rewritten(support::documentOfPages(1), "--encrypt u o 256 --"), "u");
        }
        ASSERT_TRUE(setVersion(*document, 1, 4).has_value());
        const std::string bytes = saved(*document, saving::ObjectStreams::None);
        EXPECT_EQ(bytes.substr(0, 8), "%PDF-1.7");
        EXPECT_EQ(support::problems(bytes, "u"), "");
        EXPECT_NE(support::problems(bytes, ""), "") << "must stay encrypted";
    }
}

TEST(Version, ThatDoesNotExistIsRefused)
{
    auto document = support::opened(support::documentOfPages(1));
    for (const auto& [major, minor] : {std::pair{1, 2}, {1, 8}, {2, 1}, {0, 7}, {3, 0}}) {
        EXPECT_EQ(setVersion(*document, major, minor).error().code, ErrorCode::BadArgument);
    }
    EXPECT_EQ(version(*document), "1.7");
}

} // namespace
