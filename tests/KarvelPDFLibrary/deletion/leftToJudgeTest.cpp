#include "KarvelPDFLibrary/deletion/Synchronize.h"
#include "KarvelPDFLibrary/document/Document.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::string>;

/// What a document of two pages has, and what is noted when the first one goes.
struct Case {
    const char* name;
    support::Sketch sketch;
    Texts noted;
};

const std::string widget = "<< /Type /Annot /Subtype /Widget /Rect [0 0 9 9] ";

const std::vector<Case> cases = {
    {"nothing", {{"", ""}, "", {}}, {}},
    {"files",
     {{"", ""},
      "/Names << /EmbeddedFiles << /Names [(a) @file (b) @file] >> >>",
      {{"file", "<< /Type /Filespec /F (f) >>"}}},
     {"2 attached files"}},
    {"metadata",
     {{"", ""}, "/Metadata @xmp", {{"xmp", "/Type /Metadata /Subtype /XML|<x/>"}}},
     {"the document's XMP metadata"}},
    {"scripts",
     {{"", ""},
      "/OpenAction @script /AA << /WC @script /DS << /S /GoTo >> >> "
      "/Names << /JavaScript << /Names [(a) @script] >> >>",
      {{"script", "<< /S /JavaScript /JS (app.alert) >>"}}},
     {"3 scripts of the document"}},
    {"titles_of_threads_that_stay",
     {{"/B [@b1]", "/B [@b2]"},
      "/Threads [@t1 @t2 @t3]",
      {{"t1", "<< /F @b1 /I << /Title (gone) >> >>"},
       {"b1", "<< /T @t1 /N @b1 /V @b1 /P @p1 /R [0 0 9 9] >>"},
       {"t2", "<< /F @b2 /I << /Title (stays) >> >>"},
       {"b2", "<< /T @t2 /N @b2 /V @b2 /P @p2 /R [0 0 9 9] >>"},
       {"t3", "<< /F @b3 /I << /Author (untitled) >> >>"},
       {"b3", "<< /T @t3 /N @b3 /V @b3 /P @p2 /R [0 0 9 9] >>"}}},
     {"the titles of 1 article thread"}},
    {"values_of_fields_on_both_pages",
     {{"/Annots [@w1 @v1 @e1]", "/Annots [@w2 @e2]"},
      "/AcroForm << /Fields [@shared @v1 @empty] >>",
      {{"shared", "<< /FT /Tx /T (shared) /V (said) /Kids [@w1 @w2] >>"},
       {"w1", widget + "/Parent @shared /P @p1 >>"},
       {"w2", widget + "/Parent @shared /P @p2 >>"},
       {"v1", widget + "/FT /Tx /T (alone) /V (goes) /P @p1 >>"},
       {"empty", "<< /FT /Tx /T (empty) /Kids [@e1 @e2] >>"},
       {"e1", widget + "/Parent @empty /P @p1 >>"},
       {"e2", widget + "/Parent @empty /P @p2 >>"}}},
     {"the values of 1 form field that removed pages showed, too"}},
};

class LeftToJudge : public testing::TestWithParam<Case> {};

TEST_P(LeftToJudge, IsNotedOnce)
{
    auto document = support::opened(GetParam().sketch.built());
    document->removePages({1, 1});
    ASSERT_TRUE(karvel::deletion::synchronize(*document).has_value());
    Texts noted = GetParam().noted;
    for (std::string& text : noted) {
        text.insert(0, "left to judge: ");
    }
    EXPECT_EQ(document->warnings(), noted);
}

INSTANTIATE_TEST_SUITE_P(Cases, LeftToJudge, testing::ValuesIn(cases),
                         [](const auto& info) { return info.param.name; });

TEST(LeftToJudgeOfInformation, IsWhatDescribesTheDocument)
{
    const std::pair<const char*, Texts> rows[] = {
        {"", {}},
        {"/Producer (p) /Creator (c) /Author (a) /CreationDate (D:2020) /Title ()", {}},
        {"/Title (t) /Subject (s) /Producer (p)",
         {"left to judge: the document's information: Subject, Title"}},
        {"/Title (t) /Company (c) /SECRETKEY (k)",
         {"left to judge: the document's information: Title, 2 further texts"}},
    };
    for (const auto& [information, noted] : rows) {
        support::PagedDocument sketch(2);
        const int number = sketch.builder.add(std::string("<< ") + information + " >>");
        sketch.builder.setTrailerEntries("/Info " + support::PdfBuilder::reference(number));
        auto document = support::opened(sketch.build());
        document->removePages({1, 1});
        ASSERT_TRUE(karvel::deletion::synchronize(*document).has_value());
        EXPECT_EQ(document->warnings(), noted) << information;
    }
}

} // namespace
