#include "VantoraHost/desktop/session/Notice.h"
#include "VantoraHost/desktop/session/RecentPaths.h"
#include "VantoraHost/desktop/session/SingleWindow.h"
#include "tests/support/Inspect.h"

#include <QtNetwork/QLocalSocket>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <thread>

namespace {

namespace fs = std::filesystem;
using vantora::desktop::noticeCall;
using vantora::desktop::RecentMenu;
using vantora::desktop::RecentPaths;
using vantora::desktop::SingleWindow;

class OneWindow : public testing::Test {
protected:
    OneWindow() { fs::permissions(scratch.path(""), fs::perms::owner_all); }

    QString folder() const { return QString::fromStdString(scratch.path("")); }

    /// What a later window comes to, while this thread goes on as a window does.
    bool handOverFromElsewhere(const QStringList& files)
    {
        std::atomic<bool> isOver{false};
        bool taken = false;
        std::thread later([&] {
            taken = SingleWindow(folder(), "a").handOver(files);
            isOver = true;
        });
        while (!isOver) {
            QTest::qWait(5);
        }
        later.join();
        return taken;
    }

    support::ScratchFolder scratch;
};

TEST_F(OneWindow, OpensWhatLaterOnesAreStartedWith)
{
    SingleWindow first(folder(), "a");
    EXPECT_FALSE(first.handOver({"/own.pdf"})) << "nobody is there yet";
    const QSignalSpy given(&first, &SingleWindow::filesGiven);
    const QStringList named = {"/a b.pdf", "/caf\u00e9.pdf", "/new\nline.pdf"};
    QStringList many;
    for (int i = 0; i < 20'000; ++i) {
        many << QStringLiteral("/folder/of/some/length/document-%1.pdf").arg(i);
    }
    for (const QStringList& files : {named, QStringList(), many}) {
        EXPECT_TRUE(handOverFromElsewhere(files));
        EXPECT_EQ(given.last().at(0).toStringList(), files);
    }
    EXPECT_EQ(given.size(), 3);
    EXPECT_FALSE(SingleWindow(folder(), "another display").handOver({}));
}

TEST_F(OneWindow, IsFollowedByAnotherOnceItIsGone)
{
    auto first = std::make_unique<SingleWindow>(folder(), "a");
    EXPECT_FALSE(first->handOver({}));
    first.reset();
    SingleWindow second(folder(), "a");
    EXPECT_FALSE(second.handOver({}));
    EXPECT_TRUE(handOverFromElsewhere({"/x.pdf"}));
}

TEST_F(OneWindow, TakesNothingThatNoWindowSays)
{
    SingleWindow first(folder(), "a");
    ASSERT_FALSE(first.handOver({}));
    const QSignalSpy given(&first, &SingleWindow::filesGiven);
    QString socketPath;
    for (const auto& entry : fs::directory_iterator(scratch.path(""))) {
        if (entry.path().extension() != ".lock") {
            socketPath = QString::fromStdString(entry.path().string());
        }
    }
    for (const QByteArray& said : {QByteArray("GET / HTTP/1.1\r\n\r\n\0\0", 20),
                                   QByteArray("other 1\0/a.pdf\0\0", 16), QByteArray()}) {
        QLocalSocket socket;
        socket.connectToServer(socketPath);
        ASSERT_TRUE(socket.waitForConnected()) << socket.errorString().toStdString();
        socket.write(said);
        socket.flush();
        socket.disconnectFromServer();
        EXPECT_TRUE(handOverFromElsewhere({"relative.pdf", "/a.pdf"}));
    }
    ASSERT_EQ(given.size(), 3);
    EXPECT_EQ(given.at(0).at(0).toStringList(), QStringList({"/a.pdf"}));
}

TEST_F(OneWindow, IsOneOfManyWhereOthersMayEnterItsFolder)
{
    fs::permissions(scratch.path(""), fs::perms::owner_all | fs::perms::others_exec);
    for (const QString& place : {folder(), QString(), QStringLiteral("/nowhere")}) {
        SingleWindow one(place, "a");
        SingleWindow other(place, "a");
        EXPECT_FALSE(one.handOver({}));
        EXPECT_FALSE(other.handOver({}));
    }
    EXPECT_TRUE(fs::is_empty(scratch.path("")));
}

TEST(RecentPaths, AreWhatWasOpenedLast)
{
    const struct {
        const char* name;
        QStringList before, opened, after;
    } rows[] = {
        {"a file", {"/b"}, {"/a"}, {"/a", "/b"}},
        {"again", {"/b", "/a"}, {"/a/"}, {"/a", "/b"}},
        {"several are their folders", {"/b"}, {"/x/1", "/x/2", "/y/3"}, {"/x", "/y", "/b"}},
        {"what was stored by somebody else", {"rel", "", "/b", "/b"}, {"/a"}, {"/a", "/b"}},
        {"no more than ten",
         {"/1", "/2", "/3", "/4", "/5", "/6", "/7", "/8", "/9", "/10", "/11"},
         {"/0"},
         {"/0", "/1", "/2", "/3", "/4", "/5", "/6", "/7", "/8", "/9"}},
    };
    for (const auto& row : rows) {
        RecentPaths paths(row.before);
        paths.add(row.opened);
        EXPECT_EQ(paths.paths(), row.after) << row.name;
    }
}

TEST(RecentMenu, OpensWhatIsChosenAndForgets)
{
    RecentPaths paths;
    RecentMenu menu(paths);
    const QSignalSpy chosen(&menu, &RecentMenu::chosen);
    emit menu.aboutToShow();
    ASSERT_EQ(menu.actions().size(), 1);
    EXPECT_FALSE(menu.actions().first()->isEnabled());
    paths.add({"/black & white.pdf"});
    emit menu.aboutToShow();
    EXPECT_EQ(menu.actions().first()->text(), "&1  /black && white.pdf");
    menu.actions().first()->trigger();
    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(chosen.first().first().toString(), "/black & white.pdf");
    menu.actions().last()->trigger();
    EXPECT_TRUE(paths.paths().isEmpty());
}

TEST(Notice, ShowsNoMarkupOfDocumentsNames)
{
    const auto arguments = noticeCall("The run is over", "<b>&").arguments();
    EXPECT_EQ(arguments.at(3).toString(), "The run is over");
    EXPECT_EQ(arguments.at(4).toString(), "&lt;b&gt;&amp;");
}

} // namespace
