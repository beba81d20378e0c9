#include "tests/VantoraHost/cli/Terminal.h"

#include "VantoraApp/settings/SettingsFile.h"
#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/VantoraHost/plugins/Escapes.h"
#include "tests/support/PdfBuilder.h"

#include <linux/landlock.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QtCore/QJsonArray>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <set>

// What a worker can still do once a document has taken it over.
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::HasSubstr;

/// Those that only the rules for files hold back, which older systems lack.
const std::set<std::string> waysThroughFiles = {"change a file's mode",
                                                "cut a file off",
                                                "link to a file",
                                                "list a folder",
                                                "make a file",
                                                "make a folder",
                                                "move a file",
                                                "open the terminal",
                                                "read a file",
                                                "remove a file",
                                                "remove a folder",
                                                "write a file",
                                                "read the run's environment",
                                                "read the run's memory",
                                                "write the run's memory"};

bool filesAreRestricted()
{
    return ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) >= 1;
}

class Escapes : public InOwnFolder {
protected:
    Escapes()
    {
        fs::create_directory("out");
        std::string inputs;
        for (std::size_t i = 0; i < names.size(); ++i) {
            const std::string number = std::to_string(100 + i) + ".pdf";
            scratch.write(number, support::documentOfPages(static_cast<int>(i) + 2));
            inputs += " " + number;
            fs::create_directories("foreign/" + names[i] + "/empty");
            scratch.write("foreign/" + names[i] + "/file", names[i]);
        }
        EXPECT_TRUE(WriteSettingsFile("scripted.tsf",
                                      {{"ToolSettings", QVariantMap{{"ActionName", "Delete Pages"},
                                                                    {"byPageRangeTextEdit", "1"},
                                                                    {"log", "out/log"},
                                                                    {"work", "try to escape"}}}}));
        scratch.write("try", "VANTORA_ACTIONS_PATH=" SCRIPTED_KNOWN_ACTION_FOLDER
                             " exec " BUILT_PROGRAM
                             " run -d out -j 2 --report reports --settings scripted.tsf" +
                                 inputs);
    }

    /// What became of the way of each name.
    std::map<std::string, std::string> results() const
    {
        std::map<std::string, std::string> found;
        const auto log = terminal::lines(support::readFile("out/log"));
        for (const QJsonObject& report : terminal::objects(support::readFile("reports"))) {
            const std::string input = report["input"].toString().toStdString();
            const std::string& name = names[std::stoul(input) - 100];
            const std::string text =
                report["errors"].toArray()[0].toObject()["text"].toString().toStdString();
            found[name] = text.find("Bad system call") != std::string::npos ? "ends the worker"
                          : std::find(log.begin(), log.end(), "held: " + name) != log.end()
                              ? "is refused"
                              : "LEADS OUT " + text;
        }
        return found;
    }

    const std::vector<std::string> names = escapes::names();
};

TEST_F(Escapes, LeadNowhere)
{
    const auto run = support::runCommand("script -qec 'sh try' /dev/null");
    const auto found = results();
    ASSERT_EQ(found.size(), names.size()) << run.output;
    for (const auto& [name, result] : found) {
        std::cout << name << ": " << result << '\n';
        if (filesAreRestricted() || waysThroughFiles.count(name) == 0) {
            EXPECT_THAT(result, testing::AnyOf("ends the worker", "is refused")) << name;
            EXPECT_EQ(support::readFile("foreign/" + name + "/file"), name);
            EXPECT_TRUE(fs::is_empty("foreign/" + name + "/empty"));
        }
    }
}

} // namespace
