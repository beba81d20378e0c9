#include "tests/VantoraHost/cli/Terminal.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QJsonArray>

#include <filesystem>
#include <numeric>

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

/// A folder with documents of 20 pages, of which the 19th is damaged in one way or another.
class DamagedDesk : public InOwnFolder {
protected:
    DamagedDesk()
    {
        support::PagedDocument file(20);
        const std::string whole = file.build();
        const std::string page = "\n" + std::to_string(file.pages[18]) + " 0 ";
        const std::string content = "\n" + std::to_string(file.pages[18] - 1) + " 0 ";
        scratch.write("whole.pdf", whole);
        scratch.write("page.pdf", support::replaced(whole, page + "obj", page + "xxx"));
        scratch.write("content.pdf", support::replaced(whole, content + "obj", content + "xxx"));
    }

    /// The numbers 1 to 20 without some.
    static std::vector<std::string> pagesBut(const std::vector<int>& gone)
    {
        std::vector<int> numbers;
        for (int page = 1; page <= 20; ++page) {
            if (std::find(gone.begin(), gone.end(), page) == gone.end()) {
                numbers.push_back(page);
            }
        }
        return support::pagesNamed(numbers);
    }
};

TEST_F(DamagedDesk, GivesDocumentsWithoutThePageThatIsDamaged)
{
    for (const char* name : {"page", "content"}) {
        const std::string file = name + std::string(".pdf");
        const auto answer = terminal::run("run --pages 19 " + file + " -o out-" + file);
        EXPECT_EQ(answer.status, 0) << answer.err;
        EXPECT_THAT(answer.out, HasSubstr("1 of 20 pages removed (19), 19 left"));
        EXPECT_EQ(support::pageTexts(support::readFile("out-" + file)), pagesBut({19}));
    }
}

TEST_F(DamagedDesk, IsRefusedWhereTheDamagedPageStaysWithALineThatNamesTheWayOut)
{
    for (const auto& [file, sentence] :
         {std::pair("page.pdf", "damaged: page 19 cannot be recovered; "),
          std::pair("content.pdf", "damaged: the content of page 19 cannot be recovered; ")}) {
        for (const char* more : {" -o out.pdf", " --dry-run", " -o out.pdf --json"}) {
            const auto answer = terminal::run("run --pages 2 " + std::string(file) + more);
            EXPECT_EQ(answer.status, 1);
            EXPECT_THAT(terminal::lines(answer.err).back(),
                        testing::AllOf(HasSubstr(file + std::string(": ") + sentence),
                                       HasSubstr("--salvage")));
            EXPECT_FALSE(fs::exists("out.pdf"));
        }
    }
    const auto json = terminal::objects(terminal::run("run -p 2 page.pdf -o o.pdf --json").out);
    EXPECT_EQ(json.front()["errors"].toArray().at(0).toObject()["reason"].toString(),
              "pages-damaged");
}

/// What is kept of a document that is damaged in one way, and what is said of the rest.
struct Kept {
    const char* file;
    std::vector<int> missing;
    bool isBlank; ///< page 19, whose content is lost
    const char* loss;
};

TEST_F(DamagedDesk, GivesWhatCanBeKeptAndSaysSoByThePage)
{
    for (const Kept& row :
         {Kept{"page.pdf", {2, 19}, false, "it cannot be read, and is left out"},
          Kept{"content.pdf", {2}, true, "content that cannot be read is missing"}}) {
        SCOPED_TRACE(row.file);
        for (const std::string jobs : {"0", "1"}) {
            fs::remove("out.pdf");
            const auto answer = terminal::run("run --salvage --pages 2 -j " + jobs + " " +
                                              std::string(row.file) + " -o out.pdf --json");
            EXPECT_EQ(answer.status, 3) << answer.err;
            EXPECT_THAT(answer.err, HasSubstr("warning: " + std::string(row.file) +
                                              ": lost of page 19: " + row.loss));
            std::vector<std::string> texts = pagesBut(row.missing);
            if (row.isBlank) {
                texts[17] = "";
            }
            EXPECT_EQ(support::pageTexts(support::readFile("out.pdf")), texts);
            const auto json = terminal::objects(answer.out);
            const QJsonObject loss = json.front()["losses"].toArray().at(0).toObject();
            EXPECT_EQ(loss["page"].toInt(), 19);
            EXPECT_EQ(loss["text"].toString().toStdString(), row.loss);
            EXPECT_EQ(json.front()["pages_after"].toInt(), static_cast<int>(texts.size()));
            EXPECT_EQ(json.back()["summary"].toObject()["with_losses"].toInt(), 1);
        }
    }
}

TEST_F(DamagedDesk, IsVerifiedWithoutWhatIsLost)
{
    const struct {
        const char* file;
        const char* pages;
        int status;
    } rows[] = {{"page.pdf", "2", 3},    {"page.pdf", "20", 3},    {"page.pdf", "18-20", 0},
                {"content.pdf", "2", 3}, {"content.pdf", "20", 3}, {"content.pdf", "19", 0}};
    for (const auto& [file, pages, status] : rows) {
        SCOPED_TRACE(std::string(file) + " without " + pages);
        const auto answer = terminal::run("run --salvage --verify --overwrite -o out.pdf -p " +
                                          std::string(pages) + " " + file);
        EXPECT_EQ(answer.status, status) << answer.err;
        EXPECT_THAT(answer.out, HasSubstr("; verified"));
    }
}

TEST_F(DamagedDesk, EndsInTheStatusOfWhatIsWorst)
{
    const struct {
        const char* documents;
        int status;
    } rows[] = {{"whole.pdf", 0}, {"whole.pdf page.pdf", 3}, {"page.pdf gone.pdf", 1}};
    for (const auto& [documents, status] : rows) {
        const auto answer = terminal::run("run --salvage -p 2 --dry-run " + std::string(documents));
        EXPECT_EQ(answer.status, status) << answer.err;
    }
}

TEST_F(DamagedDesk, IsDoneAgainByARunThatAllowsLossesOnly)
{
    fs::create_directory("out");
    const std::string command =
        "run -p 2 whole.pdf page.pdf -d out --report run.jsonl --resume run.jsonl";
    EXPECT_EQ(terminal::run(command).status, 1);
    const auto salvaged = terminal::run(command + " --salvage");
    EXPECT_EQ(salvaged.status, 3);
    EXPECT_THAT(salvaged.err, HasSubstr("1 of 2 documents are done by the report"));
    const auto again = terminal::run(command + " --salvage");
    EXPECT_EQ(again.status, 0);
    EXPECT_THAT(again.err, HasSubstr("2 of 2 documents are done by the report"));
    const auto strict = terminal::run(command + " --overwrite");
    EXPECT_EQ(strict.status, 1);
    EXPECT_THAT(strict.err, HasSubstr("1 by other steps"));
}

} // namespace
