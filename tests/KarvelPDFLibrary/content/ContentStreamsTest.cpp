#include "KarvelPDFLibrary/content/ContentStreams.h"

#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;

/// Three pages: all share a heading, pages 1 and 2 share their whole content.
std::string sharingDocument()
{
    return support::Sketch{
        {"/Contents [@heading @both]", "/Contents [@heading @both]", "/Contents [@heading @alone]"},
        "",
        {{"heading", "|BT /F1 9 Tf 72 760 Td (Heading) Tj ET"},
         {"both", "|" + support::showText("Both")},
         {"alone", "|" + support::showText("Alone")}}}
        .built();
}

std::size_t occurrences(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) {
        ++count;
    }
    return count;
}

TEST(ContentStreams, StaySharedUntilOwnOnesWereAskedFor)
{
    auto document = support::opened(sharingDocument());
    ASSERT_TRUE(content::ownStreams(*document, 1).has_value());
    EXPECT_FALSE(document->isModified());
}

TEST(ContentStreams, ChangeForOnePageOnly)
{
    auto document = support::opened(sharingDocument());
    content::removeSharedStreams(*document);
    ASSERT_TRUE(content::ownStreams(*document, 2).has_value());
    QPDFObjectHandle body = document->page(2).getKey("/Contents").getArrayItem(1);
    document->changes().edit(body).replaceStreamData(
        support::showText("Changed"), QPDFObjectHandle::newNull(), QPDFObjectHandle::newNull());
    const std::string bytes = support::savedIn(*document);
    EXPECT_EQ(support::pageTexts(bytes),
              (std::vector<std::string>{"Heading  Both", "Heading  Changed", "Heading  Alone"}));
    EXPECT_EQ(support::problems(bytes), "");
    EXPECT_EQ(occurrences(bytes, "(Heading)"), 1U) << "what was not changed is stored once";
}

TEST(ContentStreams, AreStoredOnceWhenNothingWasChanged)
{
    const std::string before = sharingDocument();
    auto document = support::opened(before);
    content::removeSharedStreams(*document);
    for (int page = 1; page <= 3; ++page) {
        ASSERT_TRUE(content::ownStreams(*document, page).has_value());
    }
    QPDFObjectHandle first = document->page(1).getKey("/Contents").getArrayItem(1);
    QPDFObjectHandle second = document->page(2).getKey("/Contents").getArrayItem(1);
    EXPECT_NE(first.getObjectID(), second.getObjectID());
    const std::string bytes = support::savedIn(*document);
    EXPECT_EQ(occurrences(bytes, "(Both)"), 1U);
    EXPECT_EQ(occurrences(bytes, "endobj"), occurrences(before, "endobj"));
    EXPECT_EQ(support::pageTexts(bytes),
              (std::vector<std::string>{"Heading  Both", "Heading  Both", "Heading  Alone"}));
}

TEST(ContentStreams, SurviveTheDeletionOfAPageThatSharesThem)
{
    auto document = support::opened(sharingDocument());
    content::removeSharedStreams(*document);
    ASSERT_TRUE(pages::deletePages(*document, {1, 1}).has_value());
    EXPECT_EQ(support::pageTexts(support::savedIn(*document)),
              (std::vector<std::string>{"Heading  Both", "Heading  Alone"}));
}

/// A stream whose data cannot be read.
class Unreadable final : public QPDFObjectHandle::StreamDataProvider {
public:
    Unreadable() : StreamDataProvider(true) {}
    bool provideStreamData(QPDFObjGen const&, Pipeline*, bool, bool) override { return false; }
};

TEST(ContentStreams, FailWhereTheSharedContentCannotBeRead)
{
    auto document = support::opened(sharingDocument());
    content::removeSharedStreams(*document);
    ASSERT_TRUE(content::ownStreams(*document, 1).has_value());
    const QPDFObjectHandle null = QPDFObjectHandle::newNull();
    document->page(2)
        .getKey("/Contents")
        .getArrayItem(1)
        .replaceStreamData(std::make_shared<Unreadable>(), null, null);
    QPDFObjectHandle own = document->page(1).getKey("/Contents").getArrayItem(1);
    EXPECT_THROW(own.getRawStreamData(), std::exception);
    EXPECT_FALSE(saving::toString(*document, {}).has_value());
}

} // namespace
