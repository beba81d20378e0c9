#include "VantoraApp/CActionUtils.h"

#include <QtGui/QIcon>
#include <QtWidgets/QLabel>
#include <QtWidgets/QTextBrowser>

#include <gtest/gtest.h>

namespace {

class HelpPane : public testing::Test {
protected:
    HelpPane() { CActionUtils::SetTargetLabels(&section, &pane); }
    ~HelpPane() override { CActionUtils::SetTargetLabels(nullptr, nullptr); }

    QLabel section;
    QTextBrowser pane;
};

TEST_F(HelpPane, ShowsSectionAndTextInTheWidgetsThatWereNamed)
{
    CActionUtils::SetCurrentSection("Pages");
    CActionUtils::SetHelpHtml("<p>Some <b>bold</b> text</p>");
    EXPECT_EQ(section.text(), "Pages");
    EXPECT_EQ(pane.toPlainText(), "Some bold text");
    CActionUtils::SetHelpHtml("a < b, no tags");
    EXPECT_EQ(pane.toPlainText(), "a < b, no tags");
}

TEST_F(HelpPane, MovesToOtherWidgets)
{
    QLabel otherSection;
    QTextEdit otherPane;
    CActionUtils::SetTargetLabels(&otherSection, &otherPane);
    CActionUtils::SetCurrentSection("after");
    CActionUtils::SetHelpHtml("after");
    EXPECT_EQ(section.text(), "");
    EXPECT_EQ(otherSection.text(), "after");
    EXPECT_EQ(otherPane.toPlainText(), "after");
}

TEST_F(HelpPane, DoesNothingWithoutWidgets)
{
    CActionUtils::SetTargetLabels(nullptr, &pane);
    CActionUtils::SetCurrentSection("section");
    CActionUtils::SetHelpHtml("text");
    EXPECT_EQ(pane.toPlainText(), "text");
    CActionUtils::SetTargetLabels(&section, nullptr);
    CActionUtils::SetCurrentSection("section");
    CActionUtils::SetHelpHtml("lost");
    CActionUtils::SetHelp("declared_utf8.html");
    EXPECT_EQ(section.text(), "section");
    EXPECT_EQ(pane.toPlainText(), "text");
}

TEST_F(HelpPane, IsClearedByAPageThatIsMissing)
{
    for (const char* name : {"missing.html", "", ".."}) {
        CActionUtils::SetHelpHtml("before");
        CActionUtils::SetHelp(name);
        EXPECT_EQ(pane.toPlainText(), "") << name;
    }
}

struct CharsetRow {
    const char* page;
    const char* text; ///< UTF-8
};

// The pages are resources of this program.
TEST_F(HelpPane, ReadsAPageInItsCharacterSet)
{
    const CharsetRow rows[] = {
        {"declared_utf8.html", "\u00E4\u20AC"},    {"declared_windows1251.html", "\u0434\u0430"},
        {"utf16_mark.html", "\u00E4\u20AC"},       {"utf8_mark.html", "\u00E4\u20AC"},
        {"undeclared.html", "\u00E4\u00C3\u00A4"},
    };
    for (const CharsetRow& row : rows) {
        CActionUtils::SetHelp(row.page);
        EXPECT_EQ(pane.toPlainText(), QString::fromUtf8(row.text)) << row.page;
    }
}

TEST(ToolIcon, IsReadByItsFileName)
{
    EXPECT_EQ(CActionUtils::GetIconForTool("tool.png").availableSizes(),
              QList<QSize>({QSize(16, 16)}));
    EXPECT_TRUE(CActionUtils::GetIconForTool("missing.png").pixmap(16, 16).isNull());
}

} // namespace
