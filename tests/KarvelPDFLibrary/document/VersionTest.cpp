#include "KarvelPDFLibrary/document/Version.h"

#include "KarvelPDFLibrary/saving/Save.h"
#include "KarvelPDFLibrary/security/Encryption.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;

struct Present {
    const char* name;
    const char* header;
    const char* catalogEntry;
    const char* version;
};

class PresentVersion : public testing::TestWithParam<Present> {};

TEST_P(PresentVersion, IsTheHigherOne)
{
    support::PagedDocument file(1);
    file.catalogEntries = GetParam().catalogEntry;
    std::string bytes = file.build();
    bytes.replace(0, 8, GetParam().header);
    EXPECT_EQ(version(*support::opened(bytes)), GetParam().version);
}

INSTANTIATE_TEST_SUITE_P(
    Version, PresentVersion,
    testing::Values(Present{"header_only", "%PDF-1.4", "", "1.4"},
                    Present{"catalog_higher", "%PDF-1.4", "/Version /1.6", "1.6"},
                    Present{"catalog_lower", "%PDF-1.7", "/Version /1.4", "1.7"},
                    Present{"catalog_second", "%PDF-1.7", "/Version /2.0", "2.0"},
                    Present{"catalog_nonsense", "%PDF-1.7", "/Version /9.9.9.9", "1.7"},
                    Present{"catalog_number", "%PDF-1.7", "/Version 2.0", "1.7"}),
    [](const auto& info) { return info.param.name; });

std::string saved(Document& document, saving::ObjectStreams objectStreams)
{
    saving::SaveOptions options;
    options.objectStreams = objectStreams;
    return saving::toString(document, options).value();
}

TEST(Version, IsWrittenThoughThePresentOneIsHigher)
{
    support::PagedDocument file(1);
    file.catalogEntries = "/Version /2.0";
    auto document = support::opened(file.build());
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
