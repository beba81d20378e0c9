#pragma once

#include <cstdint>

namespace vantora {

/// Sets aside room for this process's heap and asks the system to back it with huge pages (Linux,
/// "transparent huge pages" by madvise), and has memory that is given back used again. A document
/// of 100,000 pages takes ten thousand small pages, and the system is entered for each. No page is
/// used before it is needed. To be called before anything large is allocated; where the system has
/// no huge pages, or not as much room, the heap grows as usual.
void useHugePages();

/// Lets the heap of a copy of a process go on in a huge page of its own: of one that both have,
/// each small page is copied when it is written to.
void leaveSharedHugePage();

/// Gives the room back that useHugePages() set aside and nothing uses yet, where a process may have
/// so little memory in all that it would be missed.
void giveRoomBackFor(std::uint64_t memoryLimit);

} // namespace vantora
