#include "VantoraHost/core/choices/LibraryFacts.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/documents/PdfLibrary.h"
#include "tests/support/Sketch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// What the library tells about pages, through the binding.
namespace {

using namespace vantora;
using testing::ElementsAre;

/// A font whose glyphs have numbers only, which pages 6 and 7 name and page 6 uses.
const char* const unreadableFont =
    "<< /Type /Font /Subtype /Type3 /FontBBox [0 0 1 1] /FontMatrix [1 0 0 1 0 0] /FirstChar 65 "
    "/LastChar 65 /Widths [1] /CharProcs << /g1 @glyph >> "
    "/Encoding << /Differences [65 /g1] >> >>";

class Facts : public testing::Test {
protected:
    static std::vector<std::string> outlineOf(KarvelPDFLibraryCPDylibCPP1311& library)
    {
        std::vector<std::string> shown;
        const auto entries = LibraryFacts(library, "a.pdf").outline();
        EXPECT_TRUE(entries) << (entries ? "" : entries.error().sentence);
        for (const OutlineEntry& entry : entries.value_or(std::vector<OutlineEntry>())) {
            shown.push_back(std::to_string(entry.level) + " " +
                            QString::fromStdWString(entry.title).toStdString() + " " +
                            std::to_string(entry.page));
        }
        return shown;
    }

    std::unique_ptr<KarvelPDFLibraryCPDylibCPP1311> library =
        std::move(loadPdfLibrary(PDF_LIBRARY).value());
};

TEST_F(Facts, OfTheOutlineAreWhereItsEntriesLead)
{
    // Each leads where its title says, one after the other on one level.
    const std::pair<const char*, const char*> entries[] = {
        {"page 2", "/Dest [@p2 /Fit]"},
        {"page 3", "/A << /S /GoTo /D [@p3 /XYZ 0 0 0] >>"},
        {"page 4", "/Dest (named)"},
        {"page 1", "/A << /S /GoTo /D /old >>"},
        {"page 3", "/Dest [2 /Fit]"},
        {"page 2", "/Dest [@element /Fit]"},
        {"page 4", "/Dest [@p4 /Fit] /A << /S /GoTo /D [@p1 /Fit] >>"},
        {"page 0", "/Dest (unknown)"},
        {"page 0", "/Dest [4 /Fit]"},
        {"page 0", "/Dest [-1 /Fit]"},
        {"page 0", "/Dest []"},
        {"page 0", "/Dest [@outline /Fit]"},
        {"page 0", "/A << /S /URI /URI (https://example.com) >>"},
        {"page 0", "/A << /S /GoToR /F (b.pdf) /D [0 /Fit] >>"},
        {"page 0", ""},
    };
    support::Sketch sketch{
        {"", "", "", ""},
        "/Outlines @outline /Dests << /old << /D [@p1 /Fit] >> >> "
        "/Names << /Dests << /Kids [<< /Names [(named) << /D [@p4 /Fit] >>] >>] >> >>",
        {{"outline", "<< /First @e0 >>"}, {"element", "<< /S /P /Pg @p2 >>"}}};
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < std::size(entries); ++i) {
        const std::string next =
            i + 1 < std::size(entries) ? " /Next @e" + std::to_string(i + 1) : "";
        sketch.objects.emplace_back("e" + std::to_string(i),
                                    "<< /Parent @outline /Title (" + std::string(entries[i].first) +
                                        ") " + entries[i].second + next + " >>");
        expected.push_back(std::string("1 ") + entries[i].first + " " + entries[i].first[5]);
    }
    ASSERT_NE(library->LoadFromString(sketch.built(), L""), 0);
    EXPECT_EQ(outlineOf(*library), expected);
}

TEST_F(Facts, OfTheOutlineFollowThePagesThatAreLeft)
{
    ASSERT_NE(
        library->LoadFromString(
            support::Sketch{{"", "", "", ""},
                            "/Outlines @outline",
                            {{"outline", "<< /First @a /Last @c >>"},
                             {"a", "<< /Title (A) /Parent @outline /Dest [@p3 /Fit] /First @b "
                                   "/Last @b /Next @c >>"},
                             {"b", "<< /Title (B) /Parent @a /Dest [@p4 /Fit] >>"},
                             {"c", "<< /Title (C) /Parent @outline /Dest [@p1 /Fit] >>"}}}
                .built(),
            L""),
        0);
    EXPECT_THAT(outlineOf(*library), ElementsAre("1 A 3", "2 B 4", "1 C 1"));
    ASSERT_EQ(library->DeletePages(2, 1), 1);
    EXPECT_THAT(outlineOf(*library), ElementsAre("1 A 2", "2 B 3", "1 C 1"));
    ASSERT_EQ(library->DeletePages(2, 1), 1);
    EXPECT_THAT(outlineOf(*library), testing::Contains("1 C 1"));
    library->ClearLastError();
    EXPECT_EQ(library->GetOutlinePage(12345), 0);
    EXPECT_EQ(library->LastErrorCode(), 3) << "no such handle";
}

TEST_F(Facts, OfPagesAreWhatTheyShow)
{
    const std::string pdf = support::Sketch{
        {"/Contents @drawing", "/Contents @nothing", "/Contents @colour", "/Contents @drawing",
         "/Contents @same", "/Contents @glyphs /Resources << /Font << /G @font >> >>",
         "/Contents @drawing /Resources << /Font << /G @font >> >>"},
        "",
        {{"drawing", "|0 0 50 60 re f"},
         {"same", "|0 0 50 60 re f  "},
         {"nothing", "|q Q"},
         {"colour", "|1 0 0 rg 0 0 50 60 re f"},
         {"glyphs", "|BT /G 20 Tf 50 50 Td (A) Tj ET"},
         {"glyph", "|1 0 d0 0 0 1 1 re f"},
         {"font",
          unreadableFont}}}.built();
    ASSERT_NE(library->LoadFromString(pdf, L""), 0);
    LibraryFacts facts(*library, "a.pdf");
    const auto answers = [&](auto&& question) {
        std::string text;
        for (int page = 1; page <= facts.count(); ++page) {
            text += std::to_string(static_cast<int>(question(page).value())) + " ";
        }
        return text;
    };
    EXPECT_EQ(answers([&](int page) { return facts.isBlank(page, false); }), "0 1 0 0 0 0 0 ");
    EXPECT_EQ(answers([&](int page) { return facts.isBlank(page, true); }), "0 1 0 0 0 0 0 ");
    EXPECT_EQ(answers([&](int page) { return facts.hasColour(page); }), "0 0 1 0 0 0 0 ");
    EXPECT_EQ(answers([&](int page) { return facts.duplicateOf(page); }), "0 0 0 1 1 0 1 ");
    EXPECT_EQ(facts.noise(2).value(), 0);
    EXPECT_NEAR(facts.noise(1).value(), 100.0 * 50 * 60 / 612 / 792, 0.1);
    EXPECT_THAT(facts.remarks(), testing::IsEmpty());
    for (int page = 1; page <= facts.count(); ++page) {
        ASSERT_TRUE(facts.text(page));
    }
    EXPECT_THAT(facts.remarks(),
                testing::ElementsAre(testing::StartsWith("text of pages 6 can't be read")));
    EXPECT_FALSE(facts.isBlank(8, false));
}

} // namespace
