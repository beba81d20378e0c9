#include "VantoraHost/cli/run/Metrics.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/VantoraHost/cli/Terminal.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class Metrics : public InOwnFolder {};

TEST_F(Metrics, AreThoseOfTheRunInTheFormatThatIsReadFromFiles)
{
    scratch.write("in.pdf", support::documentOfPages(3));
    scratch.write("one.pdf", support::documentOfPages(1));
    scratch.write("run.prom", "of the run before");
    fs::create_directory("out");
    const auto answer = terminal::run(
        "run -j 0 -p 1 in.pdf one.pdf gone.pdf -d out --if-empty skip --metrics run.prom");
    EXPECT_EQ(answer.status, 1);
    const std::string text = support::readFile("run.prom");
    EXPECT_THAT(text, HasSubstr("# TYPE vantora_run_documents gauge\n"
                                "vantora_run_documents{status=\"done\"} 1\n"
                                "vantora_run_documents{status=\"planned\"} 0\n"
                                "vantora_run_documents{status=\"skipped\"} 1\n"
                                "vantora_run_documents{status=\"failed\"} 1\n"));
    EXPECT_THAT(text, HasSubstr("\nvantora_run_failed_documents{reason=\"input-missing\"} 1\n"));
    EXPECT_THAT(text, HasSubstr("\nvantora_run_pages_removed 1\n"));
    EXPECT_THAT(text, HasSubstr("\nvantora_run_bytes{when=\"after\"} " +
                                std::to_string(fs::file_size("out/in.pdf")) + "\n"));
    const std::regex line("(# (HELP|TYPE) [a-z_]+ .+|[a-z_]+(\\{[a-z]+=\"[a-z-]+\"\\})? [0-9.]+)");
    for (const std::string& one : terminal::lines(text)) {
        EXPECT_TRUE(std::regex_match(one, line)) << one;
    }
    EXPECT_EQ(text.back(), '\n');
}

TEST_F(Metrics, ThatCannotBeWrittenAreAFailureAfterTheWork)
{
    scratch.write("in.pdf", support::documentOfPages(3));
    const auto answer = terminal::run("run -p 1 in.pdf -o out.pdf --metrics gone/run.prom");
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.err, HasSubstr("gone/run.prom"));
    EXPECT_TRUE(fs::exists("out.pdf"));
}

} // namespace
