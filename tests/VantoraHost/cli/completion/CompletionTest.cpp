#include "VantoraApp/CActionUtils.h"
#include "VantoraHost/core/Error.h"
#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/VantoraHost/cli/Terminal.h"
#include "tests/support/ScratchHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

using Offers = testing::Matcher<std::vector<std::string>>;

/// A person who is typing.
class Typing : public InOwnFolder {
protected:
    Typing()
    {
        for (const char* list : {"My list", "Other", "a\nb"}) {
            QVariantMap step = {{"ActionName", "Delete Pages"},
                                {"byPageRangeTextEdit", "1"},
                                {"ActionListName", list},
                                {"ActionListCategory", "Work"}};
            CActionUtils::SaveAsCustomActionList(&step);
        }
        home.set("XDG_CONFIG_HOME", QString::fromStdString(scratch.path("config")));
        std::filesystem::create_directories(scratch.path("config/vantora"));
        std::ofstream(scratch.path("config/vantora/vantora.toml"))
            << "[profile.scans]\n[profile.'my letters']\n";
    }

    static std::vector<std::string> offered(const std::string& line)
    {
        const auto answer = terminal::run("complete " + line);
        EXPECT_EQ(answer.status, 0);
        EXPECT_EQ(answer.err, "");
        return terminal::lines(answer.out);
    }

    ScratchHome home;
};

TEST_F(Typing, IsOfferedWhatMayStandThere)
{
    const struct {
        const char* name;
        const char* line; ///< its last word is being typed
        Offers offers;
    } rows[] = {
        {"commands", "r", ElementsAre("run\tRun actions over documents")},
        {"no command that is hidden", "wo", IsEmpty()},
        {"verbs, and no name at their place", "lists ''",
         ElementsAre(StartsWith("show\t"), StartsWith("add\t"), StartsWith("change\t"),
                     StartsWith("remove\t"))},
        {"options with what they do, on one line", "run --keep-s",
         ElementsAre("--keep-signed\tRefuse signed documents: no signature would hold any more")},
        {"a description of several lines up to its first end", "run --jo",
         ElementsAre("--jobs\tWorker processes (the number of processors)")},
        {"what switches a flag off", "run --no-ver",
         ElementsAre(StartsWith("--no-verify\t"), StartsWith("--no-verbose\t"))},
        {"options of a verb", "lists remove 'My list' --s", ElementsAre(StartsWith("--step\t"))},
        {"documents and folders", "run ''", ElementsAre(":files pdf", ":folders")},
        {"documents after options", "run -p 1 --strict a.pdf ''",
         ElementsAre(":files pdf", ":folders")},
        {"documents that begin with a dash, behind --", "run -- -",
         ElementsAre(":files pdf", ":folders")},
        {"nothing for a value that nobody knows", "run --pages ''", IsEmpty()},
        {"documents after it", "run --pages 1 ''", ElementsAre(":files pdf", ":folders")},
        {"any file", "run --report ''", ElementsAre(":files")},
        {"any file for a short option", "run -o ''", ElementsAre(":files")},
        {"folders", "run -d ''", ElementsAre(":folders")},
        {"folders to watch", "watch ''", ElementsAre(":folders")},
        {"tool-settings files", "settings show ''", ElementsAre(":files tsf", ":folders")},
        {"ways", "run --if-empty s", ElementsAre("skip")},
        {"windows", "configure --inside ''", ElementsAre("main-window", "preview")},
        {"choices as they are typed", "run --choose l",
         ElementsAre("last\tlast[:N]", "label:\tlabel:iv-x", "landscape\tlandscape")},
        {"both of a choice with two forms", "pages --keep bl",
         ElementsAre("blank\tblank[:strict]", "blank:strict")},
        {"the last of several kinds of failures", "run --accept-failures empty,password-",
         ElementsAre("empty,password-needed", "empty,password-wrong")},
        {"every kind of failure", "run --accept-failures ''",
         SizeIs(vantora::reasonNames().size())},
        {"actions", "run --action D", ElementsAre("Delete Pages")},
        {"actions to configure", "configure D", ElementsAre("Delete Pages")},
        {"lists and files of lists, but no name that is no line", "run --list ''",
         ElementsAre("My list", "Other", ":files xqq", ":folders")},
        {"lists to change", "lists change M", ElementsAre("My list")},
        {"favourites, of which there are none", "favourites show ''", IsEmpty()},
        {"profiles", "run --profile m", ElementsAre("my letters")},
        {"profiles to show", "config --profile s", ElementsAre("scans")},
        {"a value in one word with its option", "run --if-empty=b",
         ElementsAre("--if-empty=blank")},
        {"a value where a shell ends words at =", "run --if-empty = b", ElementsAre("blank")},
        {"all values there", "run --if-empty =", ElementsAre("blank", "skip", "fail")},
        {"nothing for what has no value", "run --json=", IsEmpty()},
        {"nothing after an option that is none", "run --wat", IsEmpty()},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_THAT(offered(row.line), row.offers);
    }
}

TEST_F(Typing, IsOfferedNoProfileOfAFileThatIsRefused)
{
    std::ofstream(scratch.path("config/vantora/vantora.toml")) << "verify = 1\n[profile.scans]\n";
    EXPECT_THAT(offered("run --profile ''"), IsEmpty());
}

TEST_F(Typing, IsOfferedTheCommandsWhereNothingIsTyped)
{
    EXPECT_THAT(offered(""), Contains(StartsWith("run\t")));
    EXPECT_THAT(offered("''"),
                AllOf(Contains(StartsWith("settings\t")), Not(Contains(HasSubstr("worker")))));
}

} // namespace
