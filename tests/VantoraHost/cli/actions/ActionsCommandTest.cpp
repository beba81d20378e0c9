#include "tests/VantoraHost/cli/Terminal.h"

#include "tests/support/Inspect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

TEST(Actions, AreListed)
{
    const auto answer = terminal::run("actions");
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.err, "");
    EXPECT_THAT(terminal::lines(answer.out),
                testing::ElementsAre(testing::StartsWith("Delete Pages  (Pages, "),
                                     testing::StartsWith("Scripted  (Tests, ")));
}

TEST(Actions, AreJsonObjectsWhenAsked)
{
    const auto answer = terminal::run("actions --json");
    const auto actions = terminal::objects(answer.out);
    ASSERT_EQ(actions.size(), 2U);
    const QJsonObject& action = actions.front();
    EXPECT_EQ(action["name"].toString(), "Delete Pages");
    EXPECT_EQ(action["group"].toString(), "Pages");
    EXPECT_EQ(action["help"].toString(), "Action_DeletePages.html");
    EXPECT_EQ(action["flags"].toInt(), 527);
    EXPECT_EQ(action["identifier"].toString(), "org.karvel.vantora.deletepages");
}

TEST(Actions, ThatAreNoneAreNamedWithTheReason)
{
    const support::ScratchFolder folder;
    folder.write("odd.so", "not a plug-in");
    terminal::Setting setting;
    setting.actionFolders = {folder.path("")};
    const auto answer = terminal::run("actions", setting);
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(terminal::lines(answer.err),
                testing::ElementsAre(HasSubstr("odd.so: left out: not a plug-in"),
                                     HasSubstr("no action is installed")));
}

} // namespace
