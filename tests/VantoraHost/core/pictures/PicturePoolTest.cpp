#include "VantoraHost/core/pictures/PicturePool.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>

namespace {

namespace fs = std::filesystem;
using namespace vantora;
using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::StartsWith;

constexpr int side = 200;

PictureWish picture(PicturedDocument document, int page)
{
    return {document, PictureTask{page, side, 0}};
}

PictureWish facts(PicturedDocument document, int first, int pages)
{
    return {document, PictureTask{first, 0, pages}};
}

class PicturePoolTest : public testing::Test {
protected:
    PicturePoolTest() { ::signal(SIGPIPE, SIG_IGN); }

    PictureSettings settings(const char* program)
    {
        PictureSettings made;
        made.program = program;
        made.library = PDF_LIBRARY;
        made.workers = 1;
        made.timeout = 1min;
        made.now = [this] { return time; };
        return made;
    }

    /// One answer for each wish, in the order in which they come.
    std::vector<PictureAnswer> answers(PicturePool& pool, const std::vector<PictureWish>& wishes)
    {
        pool.wish(wishes);
        std::vector<PictureAnswer> all;
        while (all.size() < wishes.size()) {
            for (PictureAnswer& answer : pool.wait(never.get())) {
                all.push_back(std::move(answer));
            }
        }
        return all;
    }

    static std::string textOf(const PictureAnswer& answer)
    {
        if (!answer.what) {
            return (answer.ofDocument ? "document: " : "page: ") + answer.what.error().sentence;
        }
        if (const auto* made = std::get_if<PagePicture>(&*answer.what)) {
            return std::to_string(made->width) + " x " + std::to_string(made->height);
        }
        if (const auto* told = std::get_if<ShownPages>(&*answer.what)) {
            std::string labels;
            for (const ShownPage& page : told->pages) {
                labels += page.label + " ";
            }
            return labels;
        }
        return std::to_string(std::get<PictureOpened>(*answer.what).pages) + " pages";
    }

    static std::vector<std::string> textsOf(const std::vector<PictureAnswer>& answers)
    {
        std::vector<std::string> texts;
        for (const PictureAnswer& answer : answers) {
            texts.push_back(textOf(answer));
        }
        return texts;
    }

    std::chrono::steady_clock::time_point time{};
    support::ScratchFolder scratch;
    /// Both ends of a pipe to which nothing is written.
    std::pair<karvel::io::FileDescriptor, karvel::io::FileDescriptor> silence = newPipe();
    const karvel::io::FileDescriptor& never = silence.first;

    static std::pair<karvel::io::FileDescriptor, karvel::io::FileDescriptor> newPipe()
    {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        return {karvel::io::FileDescriptor(ends[0]), karvel::io::FileDescriptor(ends[1])};
    }
};

/// Workers that don't do what they should; a script stands in for them.
class BadPictureWorker : public PicturePoolTest {
protected:
    BadPictureWorker()
    {
        waits = scratch.path("waits");
        ::setenv("FAKE_PICTURES_WAIT", waits.c_str(), 1);
    }

    /// Hours pass while a worker does nothing any more, as a file says that it makes, and else
    /// none.
    PictureSettings badSettings()
    {
        PictureSettings made = settings(FAKE_PICTURES_PROGRAM);
        made.now = [this] {
            if (fs::remove(waits)) {
                time += 1h;
            }
            return time;
        };
        return made;
    }

    fs::path waits;
};

TEST_F(BadPictureWorker, CostsThePageThatItWasAtAndNoOther)
{
    const char* const ended = "page: the worker process that was at it ended: ";
    const char* const nonsense = "page: the worker process that was at it gave an answer that "
                                 "makes no sense";
    const std::map<std::string, std::string> rows = {
        {"crashes over page 2", ended + std::string("Segmentation fault")},
        {"is killed over page 2", ended + std::string("Killed")},
        {"hangs over page 2", "page: it took longer than 60 seconds"},
        {"hangs within page 2", "page: it took longer than 60 seconds"},
        {"makes a picture wider than asked for", nonsense},
        {"makes one without pixels", nonsense},
        {"tells facts instead", nonsense},
        {"cannot draw page 2", "page: it is odd"},
    };
    for (const auto& [how, second] : rows) {
        SCOPED_TRACE(how);
        PicturePool pool(badSettings());
        pool.open(7, how, {});
        EXPECT_EQ(textsOf(answers(pool, {picture(7, 1), picture(7, 2), picture(7, 3)})),
                  (std::vector<std::string>{"2 x 1", second, "2 x 1"}));
    }
}

TEST_F(BadPictureWorker, CostsTheDocumentThatItDoesNotOpen)
{
    const std::map<std::string, std::string> rows = {
        {"refuses", "document: damaged beyond repair"},
        {"crashes before it opens",
         "document: the worker process that was at it ended: Segmentation fault"},
        {"hangs before it opens", "document: it took longer than 60 seconds"},
        {"prints garbage",
         "document: the worker process that was at it gave an answer that makes no sense"},
        {"leaves at once", "document: the worker process that was at it ended: exit status 3"},
    };
    for (const auto& [how, every] : rows) {
        SCOPED_TRACE(how);
        PicturePool pool(badSettings());
        pool.open(1, how, {});
        pool.open(2, "good", {});
        EXPECT_EQ(textsOf(answers(pool, {{1, {}}, picture(1, 1), {2, {}}})),
                  (std::vector<std::string>{every, every, "3 pages"}));
    }
}

TEST_F(BadPictureWorker, IsNotBelievedMorePagesThanItWasAskedFor)
{
    PicturePool pool(badSettings());
    pool.open(1, "tells facts of too many", {});
    EXPECT_THAT(textsOf(answers(pool, {facts(1, 1, 2)})),
                testing::ElementsAre(HasSubstr("makes no sense")));
}

TEST_F(BadPictureWorker, IsTriedAgainWhenItsDocumentIsAnother)
{
    PicturePool pool(badSettings());
    pool.open(1, "refuses", {});
    ASSERT_EQ(textsOf(answers(pool, {{1, {}}})).front(), "document: damaged beyond repair");
    pool.open(1, "good", {});
    EXPECT_EQ(textsOf(answers(pool, {{1, {}}})).front(), "3 pages");
}

TEST_F(BadPictureWorker, DoesNotKeepOthersWaitingOnceNobodyWantsItsPictureAnyMore)
{
    PicturePool pool(settings(FAKE_PICTURES_PROGRAM)); // no hours pass by themselves
    pool.open(1, "hangs over page 2", {});
    pool.open(2, "good", {});
    ASSERT_EQ(textsOf(answers(pool, {picture(1, 1)})).front(), "2 x 1");
    const auto woken = newPipe();
    ASSERT_EQ(::write(woken.second.get(), "!", 1), 1);
    pool.wish({picture(1, 2)});
    while (!fs::exists(waits)) {
        pool.wait(woken.first.get());
    }
    time += 2s; // which is within the time limit
    EXPECT_EQ(textsOf(answers(pool, {picture(2, 1)})).front(), "2 x 1");
}

TEST_F(BadPictureWorker, IsNotStartedForADocumentThatIsClosed)
{
    PicturePool pool(badSettings());
    pool.open(1, "good", {});
    pool.open(2, "good", {});
    pool.close(1);
    pool.wish({picture(1, 1), picture(2, 1)});
    const auto all = pool.wait(never.get());
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(all.front().wish, picture(2, 1));
}

/// The real workers.
using Pictures = PicturePoolTest;

TEST_F(Pictures, AreDoneInTheOrderOfTheWishesThatTakeTheirPlace)
{
    PicturePool pool(settings(BUILT_PROGRAM));
    pool.open(1, scratch.write("in.pdf", support::documentOfPages(5)), {});
    pool.wish({picture(1, 1), picture(1, 2)});
    const auto all = answers(pool, {picture(1, 5), facts(1, 4, 10), picture(1, 3), {1, {}}});
    const std::vector<std::string> texts = textsOf(all);
    // The page count is known as soon as the document is open.
    EXPECT_EQ(texts, (std::vector<std::string>{"5 pages", "155 x 200", "4 5 ", "155 x 200"}));
    EXPECT_EQ(all[1].wish, picture(1, 5));
}

TEST_F(Pictures, ShowWhatIsOnThePage)
{
    PicturePool pool(settings(BUILT_PROGRAM));
    pool.open(1, scratch.write("in.pdf", support::documentOfPages(1)), {});
    const auto all = answers(pool, {picture(1, 1)});
    const auto& made = std::get<PagePicture>(all.front().what.value());
    ASSERT_EQ(made.pixels.size(), pixelBytes(made));
    EXPECT_EQ(made.pixels.front(), '\xff') << "the corner is paper";
    EXPECT_NE(made.pixels.find_first_not_of('\xff'), std::string::npos) << "and there is a text";
}

TEST_F(Pictures, SayWhyADocumentHasNone)
{
    const std::string encrypted =
        scratch.write("locked.pdf", support::rewritten(support::documentOfPages(2),
                                                       "--encrypt secret owner 256 --"));
    struct Row {
        const char* name;
        std::string input;
        const char* password;
        const char* says;
    };
    const Row rows[] = {
        {"what is no PDF", scratch.write("x.pdf", "Dear Sir"), "", "document: is no PDF"},
        {"what is empty", scratch.write("e.pdf", ""), "", "document: is empty"},
        {"what is not there", scratch.path("not.pdf"), "", "document: "},
        {"a pipe",
         [&] {
             const std::string path = scratch.path("pipe.pdf");
             EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0);
             return path;
         }(),
         "", "document: "},
        {"a locked one", encrypted, "", "document: is encrypted and needs a password"},
        {"a wrong password", encrypted, "guess", "document: the password given does not open it"},
        {"the right password", encrypted, "secret", "2 pages"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PicturePool pool(settings(BUILT_PROGRAM));
        pool.open(1, row.input, row.password);
        EXPECT_THAT(textsOf(answers(pool, {{1, {}}})), testing::ElementsAre(StartsWith(row.says)));
    }
}

TEST_F(Pictures, GoOnAfterAPageThatIsNotThere)
{
    PicturePool pool(settings(BUILT_PROGRAM));
    pool.open(1, scratch.write("in.pdf", support::documentOfPages(2)), {});
    EXPECT_THAT(textsOf(answers(pool, {picture(1, 3), picture(1, 2)})),
                testing::ElementsAre(StartsWith("page: "), "155 x 200"));
}

#ifndef VANTORA_SANITIZED // which reserves terabytes, so that nothing is limited there
TEST_F(Pictures, MayTakeAsMuchMemoryAsIsAllowedAndNoMore)
{
    PictureSettings small = settings(BUILT_PROGRAM);
    small.memoryLimit = 32'000'000;
    PicturePool pool(small);
    pool.open(1, scratch.write("in.pdf", support::documentOfPages(2)), {});
    const PictureWish large = {1, PictureTask{1, largestPicture, 0}};
    EXPECT_THAT(textsOf(answers(pool, {picture(1, 1), large, picture(1, 2)})),
                testing::ElementsAre("155 x 200", StartsWith("page: "), "155 x 200"));
}
#endif

TEST_F(Pictures, ComeFromProcessesThatMayDoNothingElse)
{
    PicturePool pool(settings(BUILT_PROGRAM));
    pool.open(1, scratch.write("in.pdf", support::documentOfPages(1)), {});
    answers(pool, {picture(1, 1)});
    std::ifstream children("/proc/self/task/" + std::to_string(::getpid()) + "/children");
    int worker = 0;
    ASSERT_TRUE(children >> worker);
    std::ifstream status("/proc/" + std::to_string(worker) + "/status");
    const std::string text((std::istreambuf_iterator<char>(status)), {});
    EXPECT_THAT(text, HasSubstr("Seccomp:\t2")) << "filtered calls";
    EXPECT_THAT(text, HasSubstr("NoNewPrivs:\t1"));
}

} // namespace
