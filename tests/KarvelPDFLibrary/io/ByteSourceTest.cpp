#include "KarvelPDFLibrary/io/ByteSource.h"

#include "KarvelPDFLibrary/io/WindowedInput.h"
#include "tests/support/Inspect.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <qpdf/BufferInputSource.hh>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace karvel;
using namespace karvel::io;

TEST(OpenFile, RefusesWhatIsNoFile)
{
    const support::ScratchFolder scratch;
    const std::string fifo = scratch.path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    const struct {
        std::string path;
        const char* word;
    } cases[] = {
        {scratch.path("missing.pdf"), "No such file"},
        {scratch.path("."), "is a folder"},
        {fifo, "not a regular file"},
        {"/dev/null", "not a regular file"},
    };
    for (const auto& [path, word] : cases) {
        const auto source = openFile(path);
        ASSERT_FALSE(source.has_value()) << path;
        EXPECT_EQ(source.error().code, ErrorCode::FileNotReadable);
        EXPECT_NE(source.error().text.find(path), std::string::npos) << source.error().text;
        EXPECT_NE(source.error().text.find(word), std::string::npos) << source.error().text;
    }
}

TEST(FileSource, NoticesThatTheFileBecameShorter)
{
    const support::ScratchFolder scratch;
    const std::string path = scratch.write("a", std::string(100, 'x'));
    const auto source = openFile(path).value();
    ASSERT_EQ(truncate(path.c_str(), 50), 0);
    char buffer[100];
    EXPECT_THROW(source->readAt(0, buffer, 100), std::exception);
    ASSERT_FALSE(source->intact().has_value());
    EXPECT_NE(source->intact().error().text.find("became shorter"), std::string::npos);
}

TEST(FileSource, NoticesThatTheFileWasWrittenTo)
{
    const support::ScratchFolder scratch;
    const std::string path = scratch.write("a", "0123456789");
    const auto source = openFile(path).value();
    EXPECT_TRUE(source->intact().has_value());
    scratch.write("a", "0123456789and more");
    EXPECT_FALSE(source->intact().has_value());
    char buffer[100];
    EXPECT_EQ(source->readAt(0, buffer, 100), 10U) << "bytes added later are not the document's";
    EXPECT_FALSE(source->intact().has_value());
}

TEST(FileSource, DoesNotCareWhatBecomesOfASmallFileThatItHasRead)
{
    const support::ScratchFolder scratch;
    const std::string path = scratch.write("a", "0123456789");
    const auto source = openFile(path).value();
    char buffer[10];
    ASSERT_EQ(source->readAt(4, buffer, 2), 2U);
    scratch.write("a", "another file");
    EXPECT_TRUE(source->intact().has_value());
    EXPECT_EQ(source->readAt(0, buffer, 10), 10U);
    EXPECT_EQ(std::string(buffer, 10), "0123456789");
}

TEST(FileSource, OutlivesItsName)
{
    const support::ScratchFolder scratch;
    const std::string path = scratch.write("a", "0123456789");
    const auto source = openFile(path).value();
    ASSERT_EQ(unlink(path.c_str()), 0);
    char buffer[4];
    EXPECT_EQ(source->readAt(6, buffer, 4), 4U);
    EXPECT_EQ(std::string(buffer, 4), "6789");
    EXPECT_TRUE(source->intact().has_value());
}

/// Reading through the window against libqpdf's own source for memory.
TEST(WindowedInput, ReadsLikeLibqpdfsOwnSource)
{
    const unsigned seed = 20260401;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::string data(200000, ' ');
    for (char& ch : data) {
        ch = "abc\r\n"[random() % 5];
    }
    data.replace(50000, 60000, 60000, 'x'); // a line longer than any window
    WindowedInput ours(fromMemory(data));
    BufferInputSource theirs("expected", data);
    for (int step = 0; step < 20000; ++step) {
        switch (random() % 5) {
        case 0: {
            const auto offset = static_cast<qpdf_offset_t>(random() % (data.size() + 10));
            ours.seek(offset, SEEK_SET);
            theirs.seek(offset, SEEK_SET);
            break;
        }
        case 1:
            ASSERT_EQ(ours.findAndSkipNextEOL(), theirs.findAndSkipNextEOL());
            break;
        case 2: {
            char ch = 0;
            if (ours.read(&ch, 1) == 1) {
                ours.unreadCh(ch);
            }
            break;
        }
        default: {
            std::string mine(random() % 30000, '\0');
            std::string expected(mine.size(), '\0');
            const size_t count = ours.read(mine.data(), mine.size());
            ASSERT_EQ(count, theirs.read(expected.data(), expected.size()));
            ASSERT_EQ(mine.substr(0, count), expected.substr(0, count));
            ASSERT_EQ(ours.getLastOffset(), theirs.getLastOffset());
        }
        }
        if (theirs.tell() <= static_cast<qpdf_offset_t>(data.size())) {
            ASSERT_EQ(ours.tell(), theirs.tell()) << "step " << step;
        }
    }
}

} // namespace
