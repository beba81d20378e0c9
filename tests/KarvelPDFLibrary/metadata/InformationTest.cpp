#include "KarvelPDFLibrary/metadata/Information.h"

#include "KarvelPDFLibrary/metadata/Identifier.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;
using namespace karvel::metadata;

std::unique_ptr<Document> withTrailer(const std::string& entries)
{
    support::PagedDocument file(1);
    file.builder.setTrailerEntries(entries);
    return support::opened(file.build());
}

TEST(Information, IsReadInEveryEncodingAndType)
{
    auto document = withTrailer("/Info << /Title (plain) /Author <FEFF03B103B2> "
                                "/Subject <EFBBBFC3A9> /Keywords /Name /Creator 5 /Producer [1] "
                                "/CreationDate (D:20240229120305+01'00') /ModDate (soon) >>");
    const std::vector<std::string> expected = {
        "plain", "\xce\xb1\xce\xb2", "\xc3\xa9", "Name", "2024-02-29T12:03:05+01:00", "soon", "5",
        ""};
    for (int code = 1; code <= entryCount; ++code) {
        EXPECT_EQ(information(*document, static_cast<Entry>(code)),
                  expected[static_cast<std::size_t>(code) - 1]);
    }
    EXPECT_EQ(customInformation(*document, "CreationDate"), "D:20240229120305+01'00'");
    EXPECT_EQ(customInformation(*document, "Absent"), "");
    EXPECT_EQ(informationKeys(*document).size(), 8U);
}

TEST(Information, ThatIsWrittenIsWhatOthersRead)
{
    auto document = support::opened(support::documentOfPages(1));
    const std::string title = "Tr\xc3\xa4ume \xe2\x80\x93 \xf0\x9f\x93\x84";
    ASSERT_TRUE(setInformation(*document, Entry::Title, title).has_value());
    ASSERT_TRUE(setInformation(*document, Entry::ModDate, "2024-02-29T12:03:05Z").has_value());
    ASSERT_TRUE(setInformation(*document, Entry::CreationDate, "D:2023").has_value());
    ASSERT_TRUE(setCustomInformation(*document, "My key/1", "My value").has_value());
    ASSERT_TRUE(setTrapped(*document, Trapped::False).has_value());
    const support::ScratchFolder scratch;
    const std::string path = scratch.write("a.pdf", saving::toString(*document, {}).value_or(""));
    const std::string told =
        support::runCommand("TZ=UTC pdfinfo -isodates -custom " + path).output +
        support::runCommand("TZ=UTC pdfinfo -isodates " + path).output;
    for (const std::string& line :
         {"Title:           " + title, std::string("ModDate:         2024-02-29T12:03:05Z"),
          std::string("CreationDate:    2023-01-01"), std::string("My value")}) {
        EXPECT_NE(told.find(line), std::string::npos) << line << "\n" << told;
    }
    auto again = support::opened(support::readFile(path));
    EXPECT_EQ(trapped(*again), Trapped::False);
    EXPECT_EQ(customInformation(*again, "My key/1"), "My value");
}

TEST(Information, WithoutANumberOfItsOwnIsChangedToo)
{
    auto document = withTrailer("/Info << /Title (old) /Author (me) >>");
    ASSERT_TRUE(setInformation(*document, Entry::Title, "new").has_value());
    auto again = support::opened(saving::toString(*document, {}).value_or(""));
    EXPECT_EQ(information(*again, Entry::Title), "new");
    EXPECT_EQ(information(*again, Entry::Author), "me");
}

TEST(Information, IsRemoved)
{
    auto document = withTrailer("/Info << /Title (old) /Author (me) /Mine (x) >>");
    EXPECT_TRUE(setInformation(*document, Entry::Title, "").has_value());
    EXPECT_TRUE(removeCustomInformation(*document, "Mine").has_value());
    EXPECT_EQ(removeCustomInformation(*document, "Mine").error().code, ErrorCode::NotFound);
    EXPECT_EQ(informationKeys(*document), std::vector<std::string>{"Author"});
    removeInformation(*document);
    EXPECT_TRUE(informationKeys(*document).empty());
    auto again = support::opened(saving::toString(*document, {}).value_or(""));
    EXPECT_EQ(information(*again, Entry::Author), "");
}

TEST(Information, ThatMakesNoSenseIsRefusedAndChangesNothing)
{
    auto document = withTrailer("/Info 7");
    const auto refused = {
        setInformation(*document, Entry::ModDate, "yesterday"),
        setInformationDate(*document, Entry::ModDate, {2023, 2, 29, 0, 0, 0, 0}),
        setInformationDate(*document, Entry::ModDate, {2023, 2, 28, 0, 0, 0, 1440}),
        setInformationDate(*document, Entry::Title, {2023, 2, 28, 0, 0, 0, 0}),
        setCustomInformation(*document, "", "x"),
        setCustomInformation(*document, std::string("a\0b", 3), "x"),
        setCustomInformation(*document, "a#41", "x"),
    };
    for (const Outcome& status : refused) {
        ASSERT_FALSE(status.has_value());
        EXPECT_EQ(status.error().code, ErrorCode::BadArgument);
    }
    EXPECT_FALSE(document->isModified());
    EXPECT_TRUE(informationKeys(*document).empty());
}

struct TrappedRow {
    const char* name;
    const char* entry;
    Trapped state;
};

TEST(TrappedStates, AreRead)
{
    const TrappedRow rows[] = {{"absent", "", Trapped::Unknown},
                               {"yes", "/Trapped /True", Trapped::True},
                               {"no", "/Trapped /False", Trapped::False},
                               {"unknown", "/Trapped /Unknown", Trapped::Unknown},
                               {"boolean", "/Trapped true", Trapped::True}};
    for (const TrappedRow& row : rows) {
        SCOPED_TRACE(row.name);
        auto document = withTrailer(std::string("/Info << ") + row.entry + " >>");
        EXPECT_EQ(trapped(*document), row.state);
    }
}

TEST(Identifier, HasTwoHalves)
{
    auto document = withTrailer("/ID [<00ff> (AB)]");
    EXPECT_EQ(fileIdentifier(*document, IdentifierPart::Permanent), "00ff");
    EXPECT_EQ(fileIdentifier(*document, IdentifierPart::Changing), "4142");
    EXPECT_EQ(fileIdentifier(*withTrailer("/ID [7]"), IdentifierPart::Permanent), "");
    EXPECT_EQ(fileIdentifier(*withTrailer("/ID [7]"), IdentifierPart::Changing), "");
    EXPECT_EQ(fileIdentifier(*withTrailer(""), IdentifierPart::Permanent), "");
}

} // namespace
