#include "VantoraHost/desktop/run/ReportPage.h"
#include "VantoraHost/desktop/run/ReportSaver.h"
#include "tests/VantoraHost/desktop/OpenWindow.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace {

using namespace vantora;
using namespace vantora::desktop;
using testing::HasSubstr;
using testing::Not;

ReportContent contentWith(const QString& text)
{
    ReportRow row;
    row.name = row.path = row.outcome = row.pages = row.size = row.output = text;
    row.removed = 1;
    row.whyNoPicture = text;
    return {text, text, {row}};
}

TEST(ReportPage, ShowsWhateverNamesHoldAsText)
{
    const struct {
        const char* name;
        const char* text;
        const char* shown;
    } rows[] = {
        {"a script", "<script>alert(1)</script>", "&lt;script&gt;alert(1)&lt;/script&gt;"},
        {"an end of an attribute", "\" onload=\"x", "&quot; onload=&quot;x"},
        {"an entity", "&lt;b&gt;", "&amp;lt;b&amp;gt;"},
        {"a comment", "<!-- -->", "&lt;!-- --&gt;"},
        {"a mark of texts with arguments", "%1 %2 %3", "%1 %2 %3"},
    };
    for (const auto& row : rows) {
        const std::string html = reportHtml(contentWith(row.text));
        EXPECT_THAT(html, HasSubstr(std::string("<h1 class=\"title\">") + row.shown)) << row.name;
        EXPECT_THAT(html, HasSubstr(std::string("class=\"path\">") + row.shown)) << row.name;
        EXPECT_THAT(html, HasSubstr(std::string("No picture: ") + row.shown)) << row.name;
        if (row.text != std::string(row.shown)) {
            EXPECT_THAT(html, Not(HasSubstr(row.text))) << row.name;
        }
    }
}

TEST(ReportPage, StandsAloneRunsNothingAndFollowsLightAndDark)
{
    ReportContent content = contentWith("a");
    content.rows[0].whyNoPicture.clear();
    content.rows[0].removed = 1200;
    content.rows[0].pictures = {{3, QByteArray("jpeg")}, {7, QByteArray()}};
    const QString html = QString::fromStdString(reportHtml(content));
    EXPECT_TRUE(html.contains("content=\"default-src 'none'; img-src data:;"));
    EXPECT_TRUE(html.contains("prefers-color-scheme: dark"));
    EXPECT_TRUE(html.contains("@media print"));
    EXPECT_TRUE(html.contains("<img alt=\"page 3\" src=\"data:image/jpeg;base64,anBlZw==\">"));
    EXPECT_FALSE(html.contains("page 7")) << "there is no picture of it";
    EXPECT_TRUE(html.contains("1199 page")) << "it is said how many are left out";
    for (const char* loading : {"<script", "http:", "https:", "<link", "@import", "url("}) {
        EXPECT_FALSE(html.contains(loading)) << loading;
    }
}

class SavedReport : public OpenWindow {
protected:
    SavedReport()
        : pictures({BUILT_PROGRAM, installation().library}),
          saver(bench().results, pictures,
                [this](const std::string& input) { return bench().passwordFor(input); })
    {
        QObject::connect(&saver, &ReportSaver::noted,
                         [this](const QString& sentence) { said = sentence.toStdString(); });
    }

    void addAndRun(int place)
    {
        add({write("a.pdf", support::documentOfPages(40)),
             write("b & c.pdf", support::documentOfPages(3)),
             write("d.pdf", support::documentOfPages(2))});
        bench().markForAll("2-40");
        choose("placeCombo", place);
        waitForPlan("42 ");
        waitForRun();
    }

    std::string file() const { return scratch.path("report.html"); }

    QString save(ExistingText existing = ExistingText::Refuse)
    {
        said.clear();
        saver.saveHtml(QString::fromStdString(file()), existing, "A run");
        wait([&] { return said.rfind("The report is saved as", 0) == 0 || !saver.isBusy(); });
        return QString::fromStdString(support::readFile(file()));
    }

    static int picturesIn(const QString& html)
    {
        static const QRegularExpression picture("src=\"data:image/jpeg;base64,([^\"]+)\"");
        int count = 0;
        for (auto found = picture.globalMatch(html); found.hasNext(); ++count) {
            const QImage image = QImage::fromData(
                QByteArray::fromBase64(found.next().captured(1).toLatin1()), "JPG");
            EXPECT_EQ(std::max(image.width(), image.height()), ReportPictures::side);
        }
        return count;
    }

    Pictures pictures;
    ReportSaver saver;
    std::string said;
};

constexpr int bounded = static_cast<int>(ReportPictures::mostOfADocument);

TEST_F(SavedReport, ShowsThePagesThatWentUpToANumberAndIsForItsUserAlone)
{
    addAndRun(0);
    const QString html = save();
    EXPECT_EQ(picturesIn(html), bounded + 2 + 1);
    EXPECT_TRUE(html.contains("b &amp; c.pdf"));
    EXPECT_FALSE(html.contains("page 40")) << "only the first ones of a long document";
    EXPECT_TRUE(html.contains("15 page")) << "the others are counted";
    EXPECT_TRUE(html.contains("3 document(s) done"));
    struct stat status = {};
    ASSERT_EQ(::stat(file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
}

TEST_F(SavedReport, ShowsNoPageOfAnythingButTheOriginal)
{
    addAndRun(0);
    write("b & c.pdf", support::documentOfPages(9));
    std::filesystem::remove(scratch.path("in/d.pdf"));
    const QString html = save();
    EXPECT_EQ(picturesIn(html), bounded);
    EXPECT_EQ(html.count("No picture: the original is not there any more as it was."), 2);
}

TEST_F(SavedReport, ShowsWhatWasReplacedInItsPlaceFromTheBackup)
{
    addAndRun(2);
    EXPECT_EQ(pagesOf("in/d.pdf"), 1);
    EXPECT_EQ(picturesIn(save()), bounded + 2 + 1);
    std::filesystem::remove(scratch.path("in/d.pdf.bak"));
    const QString html = save(ExistingText::Replace);
    EXPECT_EQ(picturesIn(html), bounded + 2);
    EXPECT_EQ(html.count("No picture: "), 1);
}

TEST_F(SavedReport, TakesThePlaceOfNoFileUnlessThatWasAsked)
{
    addAndRun(0);
    scratch.write("report.html", "mine");
    EXPECT_EQ(save(), "mine");
    EXPECT_THAT(said, HasSubstr("The report is not saved: "));
    EXPECT_THAT(save(ExistingText::Replace).toStdString(), HasSubstr("<!DOCTYPE html>"));
}

TEST_F(SavedReport, IsAlsoTheLinesByWhichTheRunCanBeUndone)
{
    addAndRun(0);
    const std::string lines = scratch.path("report.jsonl");
    saver.saveJson(QString::fromStdString(lines), ExistingText::Refuse, bench().report());
    wait([&] { return !said.empty(); });
    EXPECT_EQ(support::readFile(lines), support::readFile(bench().report()));
    const auto undo = RunUndo::read({lines});
    ASSERT_TRUE(undo) << undo.error().sentence;
    EXPECT_EQ(undo->count(), 3U);
}

} // namespace
