#include "tests/VantoraHost/cli/Terminal.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraApp/settings/SettingsFile.h"
#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>

// The program at its watch, and what may happen meanwhile. Whatever is waited for is something that
// it says.
namespace {

namespace fs = std::filesystem;
using karvel::io::FileDescriptor;
using support::documentOfPages;
using support::pagesNamed;
using support::pageTexts;
using testing::HasSubstr;
using Names = std::set<std::string>;

/// Returns once a process stands still.
void isStopped(pid_t process)
{
    const std::string file = "/proc/" + std::to_string(process) + "/stat";
    for (std::string state; state != "T";) {
        const std::string all = support::readFile(file);
        state = all.substr(all.rfind(')') + 2, 1);
    }
}

/// The program, started; what it says comes line by line. It ends with the test.
class Program {
public:
    explicit Program(const std::string& line, const char* actions = nullptr, rlim_t largestFile = 0)
    {
        int ends[2] = {};
        if (::pipe2(ends, O_CLOEXEC) != 0) {
            return;
        }
        said_ = FileDescriptor(ends[0]);
        const FileDescriptor says(ends[1]);
        std::vector<std::string> words = terminal::words(line);
        words.insert(words.begin(), BUILT_PROGRAM);
        std::vector<char*> arguments;
        for (std::string& word : words) {
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
        process_ = ::fork();
        if (process_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
                ::signal(number, SIG_DFL);
            }
            ::signal(SIGXFSZ, SIG_IGN);
            if (largestFile > 0) {
                const rlimit limit = {largestFile, RLIM_INFINITY};
                ::setrlimit(RLIMIT_FSIZE, &limit);
            }
            ::dup2(says.get(), STDOUT_FILENO);
            ::dup2(says.get(), STDERR_FILENO);
            if (actions) {
                ::setenv("VANTORA_ACTIONS_PATH", actions, 1);
            }
            ::execv(arguments.front(), arguments.data());
            ::_exit(127);
        }
    }
    ~Program() { end(SIGKILL); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Waits for a line that holds a text; empty, and a failure, when it ends before.
    std::string lineWith(const std::string& text)
    {
        for (std::string line; next(line);) {
            all_ += line + "\n";
            if (line.find(text) != std::string::npos) {
                return line;
            }
        }
        ADD_FAILURE() << "no line with \"" << text << "\" in:\n" << all_;
        return {};
    }

    /// Waits for so many documents to be done.
    void documentsDone(int count)
    {
        for (int done = 0; done < count; ++done) {
            if (lineWith(" -> ").empty()) {
                return;
            }
        }
    }

    /// Lets its files grow from now on.
    void liftLimit() const
    {
        const rlimit limit = {RLIM_INFINITY, RLIM_INFINITY};
        EXPECT_EQ(::prlimit(process_, RLIMIT_FSIZE, &limit, nullptr), 0);
    }

    /// Lets it do nothing while `work` is done.
    void asleepDuring(const std::function<void()>& work) const
    {
        ::kill(process_, SIGSTOP);
        isStopped(process_);
        work();
        ::kill(process_, SIGCONT);
    }

    /// Ends it, and returns its exit status when it and its workers are gone.
    int end(int signal)
    {
        if (process_ <= 0) {
            return -1;
        }
        ::kill(process_, signal);
        for (std::string line; next(line);) {
            all_ += line + "\n";
        }
        int status = 0;
        ::waitpid(process_, &status, 0);
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

    const std::string& all() const { return all_; }

private:
    bool next(std::string& line)
    {
        for (;;) {
            if (const auto end = buffer_.find('\n'); end != std::string::npos) {
                line = buffer_.substr(0, end);
                buffer_.erase(0, end + 1);
                return true;
            }
            char piece[4096];
            const ssize_t count = ::read(said_.get(), piece, sizeof piece);
            if (count <= 0 && errno != EINTR) {
                return false;
            }
            buffer_.append(piece, count > 0 ? static_cast<std::size_t>(count) : 0);
        }
    }

    pid_t process_ = -1;
    FileDescriptor said_;
    std::string buffer_;
    std::string all_;
};

class Watch : public InOwnFolder {
protected:
    Watch()
    {
        for (const char* folder : {"in", "out", "aside"}) {
            fs::create_directory(folder);
        }
    }

    /// Puts a document into the watched folder at once.
    void bring(const std::string& name, int pages) const
    {
        scratch.write("coming", documentOfPages(pages));
        fs::rename("coming", "in/" + name);
    }

    /// How often the report has each document as done.
    static std::map<std::string, int> timesDone(const std::string& report = "report")
    {
        std::map<std::string, int> times;
        for (const QJsonObject& line : terminal::objects(support::readFile(report))) {
            EXPECT_NE(line["status"], "failed") << line["input"].toString().toStdString();
            if (line["status"] == "done") {
                ++times[fs::path(line["input"].toString().toStdString()).filename()];
            }
        }
        return times;
    }

    static Names namesIn(const std::string& folder)
    {
        Names names;
        for (const auto& entry : fs::directory_iterator(folder)) {
            names.insert(entry.path().filename());
        }
        return names;
    }

    /// Returns once nobody writes the report any more, not even a worker that is about to be gone.
    static void reportIsFree()
    {
        const FileDescriptor report(::open("report", O_RDONLY | O_CLOEXEC));
        EXPECT_EQ(::flock(report.get(), LOCK_EX), 0);
    }

    const std::string plain = "watch in -d out -p 1 --report report --settle 0 -j 2 ";
};

TEST_F(Watch, TakesDocumentsOnceTheyAreWhole)
{
    Program program(plain);
    program.lineWith("watching");
    const std::string document = documentOfPages(5);
    std::ofstream slow("in/slow.pdf", std::ios::binary);
    slow << document.substr(0, 200) << std::flush;
    bring("a.pdf", 3);
    EXPECT_THAT(program.lineWith(" -> "), HasSubstr("a.pdf: 1 of 3 pages"));
    slow << document.substr(200) << std::flush;
    bring("b.pdf", 4);
    EXPECT_THAT(program.lineWith(" -> "), HasSubstr("b.pdf: 1 of 4 pages"));
    slow.close();
    EXPECT_THAT(program.lineWith(" -> "), HasSubstr("slow.pdf: 1 of 5 pages"));
    scratch.write("linked.pdf", documentOfPages(6));
    fs::create_hard_link("linked.pdf", "in/linked.pdf");
    EXPECT_THAT(program.lineWith(" -> "), HasSubstr("linked.pdf: 1 of 6 pages"));
    EXPECT_EQ(program.end(SIGTERM), 130);
    EXPECT_THAT(program.all(), HasSubstr("stopped: 4 documents done, 0 failed"));
    EXPECT_EQ(namesIn("out"), (Names{"a.pdf", "b.pdf", "slow.pdf", "linked.pdf"}));
}

TEST_F(Watch, ListsFoldersWhereAskedTo)
{
    Program program(plain + "--poll 1");
    program.lineWith("by listing it now and then");
    bring("a.pdf", 3);
    EXPECT_THAT(program.lineWith(" -> "), HasSubstr("a.pdf: 1 of 3 pages"));
    EXPECT_EQ(program.end(SIGINT), 130);
}

TEST_F(Watch, KeepsOthersFromItsReport)
{
    Program first(plain);
    first.lineWith("watching");
    Program second(plain);
    second.lineWith("another run is writing this report");
    EXPECT_EQ(second.end(0), 1);
    EXPECT_EQ(first.end(SIGHUP), 130);
}

/// A worker that stands still at a document of two pages, and says so through a pipe.
class WatchStandingStill : public Watch {
protected:
    WatchStandingStill()
    {
        EXPECT_EQ(::mkfifo("out/log", 0600), 0);
        log = FileDescriptor(::open("out/log", O_RDWR | O_CLOEXEC));
    }

    std::string options(const char* work) const
    {
        EXPECT_TRUE(WriteSettingsFile(
            "steps.tsf", {{"ToolSettings",
                           QVariantMap{{"ActionName", "Delete Pages"},
                                       {"byPageRangeTextEdit", "1"},
                                       {"log", "out/log"},
                                       {"processes", "out/processes"},
                                       {"work", QString(work) + " at a document of 2 pages"}}}}));
        return "watch in -d out --report report --settle 0 --rename --settings steps.tsf";
    }

    void isAtWork() const
    {
        std::string said;
        while (said.find("work") == std::string::npos) {
            char piece[64];
            const ssize_t count = ::read(log.get(), piece, sizeof piece);
            ASSERT_GT(count, 0);
            said.append(piece, static_cast<std::size_t>(count));
        }
    }

    /// The process of the worker, which writes its line after the program's own.
    static pid_t workersProcess()
    {
        std::string text;
        while (std::count(text.begin(), text.end(), '\n') < 2) {
            text = support::readFile("out/processes");
        }
        return std::stoi(terminal::lines(text)[1]);
    }

    FileDescriptor log;
};

TEST_F(WatchStandingStill, DoesAVersionThatComesWhileTheOneBeforeIsDone)
{
    Program program(options("be stopped"), SCRIPTED_KNOWN_ACTION_FOLDER);
    program.lineWith("watching");
    bring("a.pdf", 2);
    isAtWork();
    bring("a.pdf", 3);
    const pid_t worker = workersProcess();
    isStopped(worker);
    EXPECT_EQ(::kill(worker, SIGCONT), 0);
    EXPECT_THAT(program.lineWith(" -> "), HasSubstr("out/a.pdf: 1 of 2 pages"));
    EXPECT_THAT(program.lineWith(" -> "), HasSubstr("out/a (1).pdf: 1 of 3 pages"));
    EXPECT_EQ(program.end(SIGTERM), 130);
    EXPECT_EQ(timesDone()["a.pdf"], 2);
}

TEST_F(WatchStandingStill, EndsAtOnceAndGoesOnTheNextTime)
{
    for (const int signal : {SIGTERM, SIGKILL}) {
        bring("a.pdf", 2);
        {
            Program program(options("hang"), SCRIPTED_KNOWN_ACTION_FOLDER);
            isAtWork();
            EXPECT_EQ(program.end(signal), signal == SIGKILL ? 128 + SIGKILL : 130);
        }
        reportIsFree();
        EXPECT_EQ(namesIn("in"), Names{"a.pdf"});
        EXPECT_EQ(timesDone()["a.pdf"], signal == SIGTERM ? 0 : 1);
        Program next(plain + "--once --done aside --rename");
        next.lineWith(": 1 of 2 pages");
        EXPECT_EQ(next.end(0), 0) << next.all();
    }
    EXPECT_EQ(namesIn("aside"), (Names{"a.pdf", "a (1).pdf"}));
    EXPECT_EQ(namesIn("out"), (Names{"a.pdf", "a (1).pdf", "log", "processes"}));
}

TEST_F(Watch, FollowsAFolderThatIsGoneAndBack)
{
    Program program(plain);
    bring("a.pdf", 3);
    program.documentsDone(1);
    fs::rename("in", "away");
    program.lineWith("is not there any more");
    fs::create_directory("in");
    program.lineWith("is there again");
    bring("b.pdf", 3);
    EXPECT_THAT(program.lineWith(" -> "), HasSubstr("b.pdf"));
    fs::remove_all("in");
    program.lineWith("is not there any more");
    fs::rename("away", "in");
    program.lineWith("is there again");
    bring("c.pdf", 3);
    EXPECT_THAT(program.lineWith(" -> "), HasSubstr("c.pdf")) << "the first one is done already";
    program.end(SIGTERM);
    EXPECT_EQ(timesDone(), (std::map<std::string, int>{{"a.pdf", 1}, {"b.pdf", 1}, {"c.pdf", 1}}));
}

TEST_F(Watch, WaitsUntilItsPlaceForOutputsIsBack)
{
    Program program(plain + "--failed aside");
    program.lineWith("watching");
    fs::remove("out");
    bring("a.pdf", 3);
    bring("b.pdf", 3);
    program.lineWith("for that to pass");
    fs::create_directory("out");
    program.documentsDone(2);
    program.end(SIGTERM);
    EXPECT_EQ(namesIn("out"), (Names{"a.pdf", "b.pdf"}));
    EXPECT_TRUE(fs::is_empty("aside"));
}

TEST_F(Watch, WaitsUntilThereIsRoomForOutputs)
{
    Program program(plain + "--failed aside", nullptr, 32'768);
    program.lineWith("watching");
    bring("big.pdf", 400);
    EXPECT_THAT(program.lineWith("error: "), HasSubstr("File too large"));
    program.lineWith("1 document waits for that to pass");
    bring("small.pdf", 3);
    EXPECT_THAT(program.lineWith(" -> "), HasSubstr("small.pdf")) << "others aren't kept from it";
    program.liftLimit();
    EXPECT_THAT(program.lineWith(" -> "), HasSubstr("big.pdf: 1 of 400 pages"));
    program.end(SIGTERM);
    EXPECT_EQ(namesIn("out"), (Names{"big.pdf", "small.pdf"})) << "temporary files?";
    EXPECT_TRUE(fs::is_empty("aside"));
}

TEST_F(Watch, ListsTheFolderWhenMoreHappenedThanTheSystemTells)
{
    Program program(plain);
    program.lineWith("watching");
    const int most = std::stoi(support::readFile("/proc/sys/fs/inotify/max_queued_events"));
    program.asleepDuring([&] {
        for (int i = 0; i <= most; ++i) { // two in turn, since one alone would be told of once
            const FileDescriptor file(
                ::open(i % 2 == 0 ? "in/x" : "in/y", O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        }
        bring("a.pdf", 3);
    });
    EXPECT_THAT(program.lineWith(" -> "), HasSubstr("a.pdf: 1 of 3 pages"));
    EXPECT_EQ(program.end(SIGTERM), 130);
}

TEST_F(Watch, LosesNothingAndDoesNothingTwiceWhenItIsKilled)
{
    constexpr int documents = 60;
    Names all;
    for (int i = 0; i < documents; ++i) {
        all.insert("d" + std::to_string(i) + ".pdf");
        bring("d" + std::to_string(i) + ".pdf", 2 + i % 5);
    }
    for (const int after : {0, 1, 7, 2, 0, 11}) {
        Program program(plain + "--done aside");
        program.lineWith("watching");
        program.documentsDone(after);
        EXPECT_EQ(program.end(SIGKILL), 128 + SIGKILL);
        reportIsFree();
    }
    Program program(plain + "--done aside --once");
    EXPECT_EQ(program.end(0), 0) << program.all();
    EXPECT_EQ(namesIn("out"), all) << "temporary files?";
    EXPECT_EQ(namesIn("aside"), all);
    EXPECT_TRUE(fs::is_empty("in"));
    for (const auto& [name, times] : timesDone()) {
        EXPECT_EQ(times, 1) << name;
    }
    for (const std::string& name : all) {
        EXPECT_EQ(support::problems(support::readFile("out/" + name)), "") << name;
    }
}

TEST_F(Watch, DoesAThousandDocumentsThatComeAtOnce)
{
    constexpr int documents = 1000;
    fs::create_directory("coming");
    for (int i = 0; i < documents; ++i) {
        scratch.write("coming/" + std::to_string(i) + ".pdf", documentOfPages(2));
    }
    Program program(plain);
    program.lineWith("watching");
    for (int i = 0; i < documents; ++i) {
        const std::string name = std::to_string(i) + ".pdf";
        fs::rename("coming/" + name, "in/" + name);
    }
    program.documentsDone(documents);
    EXPECT_EQ(program.end(SIGTERM), 130);
    const auto times = timesDone();
    EXPECT_EQ(times.size(), static_cast<std::size_t>(documents));
    for (const auto& [name, count] : times) {
        EXPECT_EQ(count, 1) << name;
    }
    EXPECT_EQ(namesIn("out").size(), static_cast<std::size_t>(documents));
}

} // namespace
