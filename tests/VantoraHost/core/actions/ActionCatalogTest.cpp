#include "VantoraHost/core/actions/ActionCatalog.h"

#include "tests/support/Inspect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using namespace vantora;
using testing::ElementsAre;
using testing::HasSubstr;

std::vector<std::string> identifiers(const ActionCatalog& catalog)
{
    std::vector<std::string> found;
    for (const ActionFile& file : catalog.actions()) {
        found.push_back(file.identifier);
    }
    return found;
}

bool isLoaded(const std::string& plugin)
{
    return support::readFile("/proc/self/maps").find(plugin) != std::string::npos;
}

TEST(Catalog, FindsEveryActionOfTheBuildAndLoadsIt)
{
    const ActionCatalog catalog = ActionCatalog::of({ACTION_FOLDER});
    ASSERT_FALSE(catalog.actions().empty());
    EXPECT_TRUE(catalog.rejected().empty());
    for (const ActionFile& file : catalog.actions()) {
        const Result<Action> action = ActionCatalog::load(file);
        EXPECT_TRUE(action) << action.error().sentence;
    }
}

TEST(Catalog, ReadsMetadataWithoutLoadingAnything)
{
    const ActionCatalog catalog = ActionCatalog::of({SCRIPTED_ACTION_FOLDER});
    EXPECT_THAT(identifiers(catalog), ElementsAre("org.karvel.vantora.scripted"));
    EXPECT_FALSE(isLoaded("libscripted_action.so"));
}

TEST(Catalog, LoadsOnlyTheActionThatIsAskedFor)
{
    const ActionCatalog catalog = ActionCatalog::of({SCRIPTED_ACTION_FOLDER, ACTION_FOLDER});
    const Result<Action> action = catalog.find("Delete Pages");
    ASSERT_TRUE(action) << action.error().sentence;
    EXPECT_EQ(action->operations->GetActionName(), "Delete Pages");
    EXPECT_FALSE(isLoaded("libscripted_action.so"));
}

TEST(Catalog, FindsAnActionByTheNameThatUsersSee)
{
    const Result<Action> action =
        ActionCatalog::of({ACTION_FOLDER, SCRIPTED_ACTION_FOLDER}).find("Scripted by tests");
    ASSERT_TRUE(action) << action.error().sentence;
    EXPECT_EQ(action->name, "Scripted");
}

TEST(Catalog, SaysWhichActionsThereAreWhenOneIsMissing)
{
    const Result<Action> action =
        ActionCatalog::of({ACTION_FOLDER, SCRIPTED_ACTION_FOLDER}).find("Delete Page");
    ASSERT_FALSE(action);
    EXPECT_EQ(action.error().reason, Reason::ActionMissing);
    EXPECT_THAT(action.error().sentence, HasSubstr("Delete Pages, Scripted"));
}

TEST(Catalog, RejectsWhatIsNoActionWithTheReason)
{
    const support::ScratchFolder folder;
    folder.write("text.so", "not a plug-in at all");
    folder.write("notes.txt", "no matter");
    fs::create_symlink(FOREIGN_PLUGIN, folder.path("foreign.so"));
    fs::copy(SCRIPTED_ACTION_FOLDER "/libscripted_action.so", folder.path("a.so"));
    fs::copy(SCRIPTED_ACTION_FOLDER "/libscripted_action.so", folder.path("b.so"));

    const ActionCatalog catalog = ActionCatalog::of({folder.path("missing"), folder.path("")});

    EXPECT_THAT(identifiers(catalog), ElementsAre("org.karvel.vantora.scripted"));
    ASSERT_EQ(catalog.rejected().size(), 3U);
    EXPECT_THAT(catalog.rejected()[0].sentence, HasSubstr("the same action as"));
    EXPECT_THAT(catalog.rejected()[1].sentence, HasSubstr("another kind"));
    EXPECT_THAT(catalog.rejected()[2].sentence, HasSubstr("not a plug-in"));
}

TEST(Catalog, GivesTheReasonWhenAPluginCannotBeLoaded)
{
    const support::ScratchFolder folder;
    fs::copy(SCRIPTED_ACTION_FOLDER "/libscripted_action.so", folder.path("cut.so"));
    const ActionCatalog catalog = ActionCatalog::of({folder.path("")});
    ASSERT_EQ(catalog.actions().size(), 1U);
    fs::resize_file(folder.path("cut.so"), 4096);

    const Result<Action> action = catalog.find("Scripted");

    ASSERT_FALSE(action);
    EXPECT_EQ(action.error().reason, Reason::ActionUnusable);
    EXPECT_EQ(action.error().file, folder.path("cut.so"));
    EXPECT_FALSE(action.error().sentence.empty());
}

} // namespace
