#include "VantoraHost/core/workers/HugePages.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

#ifndef VANTORA_SANITIZED // whose allocator is another one
namespace vantora {
namespace {

/// The flags of the part of this process's memory that an address is in ("VmFlags", proc(5)).
std::string flagsOfMemoryAt(std::uintptr_t address)
{
    std::ifstream parts("/proc/self/smaps");
    bool isThere = false;
    for (std::string line; std::getline(parts, line);) {
        std::istringstream words(line);
        std::uintptr_t start = 0;
        std::uintptr_t end = 0;
        char dash = 0;
        if (words >> std::hex >> start >> dash >> end && dash == '-') {
            isThere = start <= address && address < end;
        } else if (isThere && line.rfind("VmFlags:", 0) == 0) {
            return line + " ";
        }
    }
    return {};
}

TEST(HugePages, AreAskedForWhereLargeThingsWillBe)
{
    if (access("/sys/kernel/mm/transparent_hugepage", F_OK) != 0) {
        GTEST_SKIP() << "this system has no huge pages";
    }
    useHugePages();
    const std::vector<char> large(16 * 1024 * 1024);
    const auto last = reinterpret_cast<std::uintptr_t>(large.data() + large.size() - 1);
    EXPECT_NE(flagsOfMemoryAt(last).find(" hg "), std::string::npos) << flagsOfMemoryAt(last);
    // What is small, too, and in a copy at the beginning of one that nothing else is in.
    leaveSharedHugePage();
    const std::vector<char> smaller(300'000);
    const auto place = reinterpret_cast<std::uintptr_t>(smaller.data());
    EXPECT_NE(flagsOfMemoryAt(place).find(" hg "), std::string::npos) << flagsOfMemoryAt(place);
    EXPECT_LT(place % (2 * 1024 * 1024), 64U);
}

} // namespace
} // namespace vantora
#endif
