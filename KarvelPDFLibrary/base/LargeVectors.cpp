#include "KarvelPDFLibrary/base/LargeVectors.h"

#include <sys/mman.h>

#include <memory>

namespace karvel {

namespace {

constexpr std::size_t hugePage = 2 * 1024 * 1024; // on x86-64, and on ARM with pages of 4 KB

} // namespace

void useHugePages(void* memory, std::size_t size)
{
    if (std::align(hugePage, hugePage, memory, size) != nullptr) {
        ::madvise(memory, size / hugePage * hugePage, MADV_HUGEPAGE); // a hint
    }
}

} // namespace karvel
