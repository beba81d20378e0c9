#include "VantoraHost/desktop/recovery/KeptWork.h"
#include "VantoraHost/desktop/recovery/WorkStore.h"
#include "tests/support/Inspect.h"

#include <QtCore/QPoint>

#include <gmock/gmock.h>

#include <filesystem>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using namespace vantora;
using namespace vantora::desktop;
using testing::HasSubstr;

KeptWork someWork()
{
    KeptWork work;
    work.documents = {{{"/in/sub/a\xff \"b\".pdf", 4}, QStringLiteral("1,3-5"), std::nullopt},
                      {{"/in/caf\u00e9.pdf", 4}, std::nullopt, FileState{123, "456"}}};
    work.range = QStringLiteral("2, 7-");
    work.steps = {{"First Action", {{"Pages", "1"}, {"At", QPoint(1, 2)}, {"On", true}}, false}};
    work.settings.place = OutputPlace::Beside;
    work.settings.folder = QStringLiteral("/out");
    work.settings.besideName = QStringLiteral("{name}-x{ext}");
    work.settings.keepsBackup = false;
    work.settings.taken = TakenName::Number;
    work.settings.keepsSigned = true;
    work.settings.verifies = true;
    work.report = "20261126-104500123-20.jsonl";
    work.isRunning = true;
    return work;
}

TEST(KeptWork, ComesBackAsItWas)
{
    const KeptWork work = someWork();
    const auto back = keptWorkOf(toJson(work), "f");
    ASSERT_TRUE(back) << back.error().sentence;
    ASSERT_EQ(back->documents.size(), 2U);
    EXPECT_EQ(back->documents[0].input.path, work.documents[0].input.path);
    EXPECT_EQ(back->documents[0].input.place(), "sub/a\xff \"b\".pdf");
    EXPECT_EQ(back->documents[0].range, work.documents[0].range);
    EXPECT_FALSE(back->documents[0].done);
    EXPECT_FALSE(back->documents[1].range);
    ASSERT_TRUE(back->documents[1].done);
    EXPECT_EQ(back->documents[1].done->size, 123U);
    EXPECT_EQ(back->documents[1].done->changed, "456");
    EXPECT_EQ(back->range, work.range);
    ASSERT_EQ(back->steps.size(), 1U);
    EXPECT_EQ(back->steps[0].action, "First Action");
    EXPECT_EQ(back->steps[0].preferences, work.steps[0].preferences);
    EXPECT_FALSE(back->steps[0].isOn);
    EXPECT_TRUE(back->settings.keepsSigned && back->settings.verifies);
    EXPECT_EQ(toJson(*back), toJson(work));
}

TEST(KeptWork, IsRefusedWhereNoWindowHasWrittenIt)
{
    const std::string good = toJson(someWork());
    const auto with = [&](const std::string& what, const std::string& other) {
        const auto at = good.find(what);
        EXPECT_NE(at, std::string::npos) << what;
        return std::string(good).replace(at, what.size(), other);
    };
    const struct {
        const char* name;
        std::string text;
    } rows[] = {
        {"nothing", ""},
        {"half of it", good.substr(0, good.size() / 2)},
        {"a list", "[]"},
        {"nested without end", std::string(100'000, '[')},
        {"a format of later", with("\"format\":1", "\"format\":2")},
        {"a relative path", with("\"/in/sub", "\"in/sub")},
        {"a path with a zero", with("/in/sub", "/in\\u0000/sub")},
        {"a folder as a document", with("b\\\".pdf", "/")},
        {"a place beyond the path", with("\"place_at\":4", "\"place_at\":400")},
        {"a place inside a name", with("\"place_at\":4", "\"place_at\":5")},
        {"a negative place", with("\"place_at\":4", "\"place_at\":-1")},
        {"a document that is a text", with("\"documents\":[{", "\"documents\":[\"x\",{")},
        {"results in a place that there isn't", with("\"place\":1", "\"place\":3")},
        {"options that aren't any", with("\"options\":\"", "\"options\":\"AAAA")},
        {"a step that is neither on nor off", with("\"on\":false", "\"on\":\"no\"")},
        {"more than is ever kept", good + std::string(mostKept, ' ')},
    };
    for (const auto& row : rows) {
        const auto work = keptWorkOf(row.text, "f");
        ASSERT_FALSE(work) << row.name;
        EXPECT_EQ(work.error().sentence, "is not what a window of this version keeps") << row.name;
        EXPECT_EQ(work.error().file, "f");
    }
}

class WorkStoreTest : public testing::Test {
protected:
    std::size_t filesIn() const
    {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }

    support::ScratchFolder scratch;
    const std::string folder = scratch.path("state/windows");
    const WorkStore store{folder};
};

TEST_F(WorkStoreTest, TellsWindowsThatAreThereFromThoseThatAreGone)
{
    EXPECT_TRUE(store.leftBehind().empty());
    auto one = store.begin();
    auto other = store.begin();
    ASSERT_TRUE(one && other);
    EXPECT_NE(one->path(), other->path());
    ASSERT_TRUE(one->write("one") && other->write("other"));
    struct stat status = {};
    ASSERT_EQ(::stat(one->path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    EXPECT_TRUE(store.leftBehind().empty()) << "both are there";
    const std::string path = one->path();
    one = fail(Reason::Crashed, {}, "gone"); // which lets go of its lock
    {
        const auto left = store.leftBehind();
        ASSERT_EQ(left.size(), 1U);
        EXPECT_EQ(left[0].path(), path);
        EXPECT_EQ(left[0].read().value_or(""), "one");
        EXPECT_TRUE(store.leftBehind().empty()) << "a third window asks at the same time";
    }
    auto left = store.leftBehind();
    ASSERT_EQ(left.size(), 1U) << "nobody has answered";
    left[0].remove();
    other->remove();
    EXPECT_EQ(filesIn(), 0U);
}

TEST_F(WorkStoreTest, KeepsNoMoreThanSomeAndOnlyItsOwnFiles)
{
    for (std::size_t i = 0; i < WorkStore::most + 3; ++i) {
        const auto begun = store.begin();
        ASSERT_TRUE(begun && begun->write(std::to_string(i)));
    }
    ASSERT_TRUE(store.begin()) << "it never held anything";
    scratch.write("state/windows/notes.json", "mine");
    const auto left = store.leftBehind();
    ASSERT_EQ(left.size(), WorkStore::most);
    EXPECT_EQ(left.front().read().value_or(""), std::to_string(WorkStore::most + 2));
    EXPECT_EQ(filesIn(), 2 * WorkStore::most + 1);
}

TEST_F(WorkStoreTest, TakesNothingFromOutsideItsFolder)
{
    ASSERT_TRUE(store.begin());
    const std::string secret = scratch.write("secret", "of others");
    fs::create_symlink(secret, folder + "/20260101-000000000.json");
    fs::create_directory(folder + "/20260101-000000001.json");
    for (const WorkFile& file : store.leftBehind()) {
        EXPECT_FALSE(file.read());
    }
    fs::permissions(folder, fs::perms::all);
    EXPECT_TRUE(store.leftBehind().empty()) << "anybody may have put something there";
    const auto begun = store.begin();
    ASSERT_FALSE(begun);
    EXPECT_THAT(begun.error().sentence, HasSubstr("nobody else may look into"));
}

} // namespace
