#include "VantoraApp/modules/EmbeddedModule.h"

#include "tests/support/ScratchHome.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace {

/// Whether this process has files open that lie in memory.
bool hasFilesInMemory()
{
    for (const auto& descriptor : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone; // the one that the folder is read by
        if (std::filesystem::read_symlink(descriptor, gone).string().rfind("/memfd:", 0) == 0)
            return true;
    }
    return false;
}

TEST(EmbeddedModule, IsLoadedFromMemoryAndOneOfItsOwn)
{
    const std::string file = ScratchHome::bytesOf(RECORDING_LIBRARY).toStdString();
    for (const char* round : {"first", "after they were unloaded"}) {
        SCOPED_TRACE(round);
        EmbeddedModule one("one", file, "libc.so.6");
        EmbeddedModule other("other", file, "libc.so.6");
        const auto ofOne = one.Function("recording");
        const auto ofOther = other.Function("recording");
        ASSERT_TRUE(ofOne) << ofOne.error();
        ASSERT_TRUE(ofOther) << ofOther.error();
        EXPECT_NE(*ofOne, *ofOther);
        EXPECT_EQ(one.Function("recording").value_or(nullptr), *ofOne);
        EXPECT_FALSE(hasFilesInMemory());
    }
}

TEST(EmbeddedModule, SaysWhyItCannotBeUsed)
{
    const std::string file = ScratchHome::bytesOf(RECORDING_LIBRARY).toStdString();
    struct Row {
        const char* name;
        std::string_view file;
        const char* sharedCode;
        const char* symbol;
        const char* reason;
    };
    const Row rows[] = {
        {"no library", "some text", "libc.so.6", "recording", "file too short"},
        {"nothing at all", "", "libc.so.6", "recording", "file too short"},
        {"no such function", file, "libc.so.6", "recorded", "undefined symbol: recorded"},
        {"without what it depends on", file, "libNobodyHas.so", "recording", "libNobodyHas.so"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EmbeddedModule module("module", row.file, row.sharedCode);
        const auto function = module.Function(row.symbol);
        ASSERT_FALSE(function);
        EXPECT_NE(function.error().find(row.reason), std::string::npos) << function.error();
        EXPECT_FALSE(hasFilesInMemory());
    }
}

} // namespace
