#include "VantoraHost/core/workers/HugePages.h"

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace vantora {

namespace {

// Address space only. Where memory is limited it counts as used, so it's not more than what a
// process has that works on documents.
constexpr int room = 64 * 1024 * 1024;

// What is larger gets a mapping of its own all the same; no more can be chosen.
constexpr int largestInHeap = 32 * 1024 * 1024;

/// By which the heap grows once the room is used up.
constexpr int step = 1024 * 1024;

constexpr std::size_t hugePage = 2 * 1024 * 1024; // on x86-64, and on ARM with pages of 4 KB

// Whether the heap is in huge pages.
bool isHuge = false;

// Lets the heap go on where a huge page begins. What lies before that is taken, and never used.
void goOnAtNextHugePage()
{
    constexpr std::size_t probe = 256 * 1024; // more than any piece that was given back
    constexpr std::size_t overhead = 2 * sizeof(std::size_t);
    void* volatile end = std::malloc(probe);
    const auto used = reinterpret_cast<std::uintptr_t>(end) - overhead;
    std::free(end);
    const std::size_t rest = hugePage - used % hugePage;
    if (rest > 2 * overhead) {
        void* volatile unused = std::malloc(rest - 2 * overhead);
        static_cast<void>(unused);
    }
}

} // namespace

void useHugePages()
{
    const bool isChosen = mallopt(M_MMAP_THRESHOLD, largestInHeap) == 1 &&
                          mallopt(M_TRIM_THRESHOLD, 2 * room) == 1 && mallopt(M_TOP_PAD, room) == 1;
    if (!isChosen) { // as with another allocator, such as the sanitizers'
        return;
    }
    char* const before = static_cast<char*>(sbrk(0));
    void* volatile larger = std::malloc(largestInHeap / 2); // than what the heap has: it grows
    std::free(larger);
    void* start = before;
    std::size_t grown = static_cast<std::size_t>(static_cast<char*>(sbrk(0)) - before);
    if (std::align(hugePage, hugePage, start, grown) != nullptr) {
        isHuge = madvise(start, grown / hugePage * hugePage, MADV_HUGEPAGE) == 0;
    }
    mallopt(M_TOP_PAD, step);
    if (isHuge) {
        goOnAtNextHugePage();
    }
}

void leaveSharedHugePage()
{
    if (isHuge) {
        goOnAtNextHugePage();
    }
}

void giveRoomBackFor(std::uint64_t memoryLimit)
{
    if (memoryLimit < 2 * static_cast<std::uint64_t>(room)) {
        malloc_trim(0);
    }
}

} // namespace vantora
