#include "KarvelPDFLibrary/io/Durability.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "tests/support/Inspect.h"

#include <cerrno>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace karvel::io;

TEST(SyncTogether, TellsOfEachFileWhetherTheDiskHasIt)
{
    const support::ScratchFolder scratch;
    const FileDescriptor file(open(scratch.write("a", "a").c_str(), O_WRONLY));
    const FileDescriptor device(open("/dev/zero", O_RDONLY)); // which nobody can sync
    for (const std::size_t files : {1U, 20U}) {
        std::vector<int> descriptors(files, file.get());
        descriptors.push_back(device.get());
        std::vector<int> expected(files, 0);
        expected.push_back(EINVAL);
        EXPECT_EQ(syncTogether(descriptors), expected);
    }
    EXPECT_TRUE(syncTogether({}).empty());
}

} // namespace
