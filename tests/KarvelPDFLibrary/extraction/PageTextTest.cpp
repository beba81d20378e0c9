#include "KarvelPDFLibrary/extraction/PageText.h"

#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;
using namespace karvel::extraction;

std::unique_ptr<Document> withContent(const std::string& content, const std::string& entries = {})
{
    return support::opened(
        support::Sketch{{"/Contents @content " + entries}, "", {{"content", "|" + content}}}
            .built());
}

std::string text(Document& document, TextLayout layout, int page = 1)
{
    viewer::View view;
    const auto result = pageText(document, view, page, layout);
    EXPECT_TRUE(result.has_value()) << (result ? std::string() : result.error().text);
    return result.value_or("");
}

TEST(PageText, FollowsTheLayout)
{
    // The lower line is painted first; the second column is far to the right.
    auto document = withContent("BT /F1 12 Tf 72 600 Td (below) Tj ET "
                                "BT /F1 12 Tf 72 700 Td (above) Tj ET "
                                "BT /F1 12 Tf 400 700 Td (right) Tj ET");
    EXPECT_EQ(text(*document, TextLayout::ContentStream), "below\nabove right");
    const std::string physical = text(*document, TextLayout::Physical);
    EXPECT_NE(physical.find("above   "), std::string::npos) << physical;
    EXPECT_LT(physical.find("right"), physical.find("below"));
    EXPECT_LT(text(*document, TextLayout::ReadingOrder).find("above"),
              text(*document, TextLayout::ReadingOrder).find("below"));
}

struct Row {
    const char* name;
    const char* entries;
};

TEST(PagesInEveryPosition, ShowAllTheirText)
{
    const Row rows[] = {{"upright", ""},
                        {"turned", "/Rotate 90"},
                        {"upside down", "/Rotate 180"},
                        {"turned back", "/Rotate 270"},
                        {"moved", "/CropBox [5 2 612 800]"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto document =
            withContent("BT /F1 12 Tf 10 785 Td (top) Tj ET BT /F1 12 Tf 580 5 Td (end) Tj "
                        "ET",
                        row.entries);
        for (const TextLayout layout :
             {TextLayout::ReadingOrder, TextLayout::Physical, TextLayout::ContentStream}) {
            const std::string found = text(*document, layout);
            EXPECT_NE(found.find("top"), std::string::npos) << found;
            EXPECT_NE(found.find("end"), std::string::npos) << found;
        }
    }
}

TEST(PageText, IsThatOfTheDocumentAsItIsNow)
{
    for (const bool inFile : {false, true}) {
        const support::ScratchFolder scratch;
        const std::string pdf =
            support::rewritten(support::documentOfPages(3), "--encrypt secret owner 256 --");
        const auto source =
            inFile ? io::openFile(scratch.write("a.pdf", pdf)).value() : io::fromMemory(pdf);
        auto document = Document::load(source, {"secret", true}).value();
        viewer::View view;
        const auto second = [&] {
            return pageText(*document, view, 2, TextLayout::ReadingOrder).value_or("none");
        };
        EXPECT_EQ(second(), "Page 2");
        if (inFile) {
            scratch.write("b.pdf", "no PDF");
            ASSERT_EQ(rename(scratch.path("b.pdf").c_str(), scratch.path("a.pdf").c_str()), 0);
            EXPECT_EQ(second(), "Page 2") << "of the file that was opened";
        }
        ASSERT_TRUE(pages::deletePages(*document, PageRun{1, 1}).has_value());
        EXPECT_EQ(second(), "Page 3");
        EXPECT_TRUE(document->isModified()) << "looking is no saving";
        EXPECT_EQ(pageText(*document, view, 3, TextLayout::Physical).error().code,
                  ErrorCode::BadPageList);
    }
}

TEST(PageText, OfDamagedContentIsNoCrashAndNoOutput)
{
    auto document = withContent("BT /F1 12 Tf (unfinished");
    testing::internal::CaptureStderr();
    text(*document, TextLayout::ReadingOrder);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

} // namespace
