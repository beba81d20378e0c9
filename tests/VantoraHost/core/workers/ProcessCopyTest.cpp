#include "VantoraHost/core/workers/ProcessCopy.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"

#include <fcntl.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

using karvel::io::FileDescriptor;

bool isOpen(const FileDescriptor& descriptor)
{
    return ::fcntl(descriptor.get(), F_GETFD) != -1;
}

TEST(ProcessCopy, HasNothingOpenButWhatItIsGiven)
{
    const FileDescriptor given(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    const FileDescriptor file(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    const FileDescriptor watch(::inotify_init1(IN_CLOEXEC)); // whose events it could take away
    const FileDescriptor wakes(::eventfd(0, EFD_CLOEXEC));
    enum { GivenIsClosed = 1, FileIsOpen = 2, WatchIsOpen = 4, LoopIsNotWoken = 8 };
    const pid_t copy = vantora::startCopy({given.get()}, [&] {
        return (isOpen(given) ? 0 : GivenIsClosed) | (isOpen(file) ? FileIsOpen : 0) |
               (isOpen(watch) ? WatchIsOpen : 0) | (isOpen(wakes) ? 0 : LoopIsNotWoken);
    });
    ASSERT_GT(copy, 0);
    int status = 0;
    ASSERT_EQ(::waitpid(copy, &status, 0), copy);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

} // namespace
