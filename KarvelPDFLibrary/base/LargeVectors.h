#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

namespace karvel {

/// Asks the system to back memory that nothing has been written to with huge pages (Linux,
/// "transparent huge pages" by madvise), if it is large. Entering the system for each small page
/// takes a fifth of the time of a document of a million pages. Without huge pages nothing
/// changes.
void useHugePages(void* memory, std::size_t size);

/// reserve() of what may be large, such as something about each object of a file.
template <class T>
void reserveLarge(std::vector<T>& vector, std::size_t count)
{
    if (count > vector.capacity()) {
        std::vector<T> larger;
        larger.reserve(count);
        useHugePages(larger.data(), count * sizeof(T)); // before anything is written to it
        larger.insert(larger.end(), std::move_iterator(vector.begin()),
                      std::move_iterator(vector.end()));
        vector = std::move(larger);
    }
}

/// The same for what grows bit by bit: at least twice as much room whenever there is no more.
template <class T>
void growLarge(std::vector<T>& vector, std::size_t count)
{
    if (count > vector.capacity()) {
        reserveLarge(vector, std::max(count, 2 * vector.capacity()));
    }
}

/// resize() of what may be or become large.
template <class T>
void resizeLarge(std::vector<T>& vector, std::size_t count)
{
    growLarge(vector, count);
    vector.resize(count);
}

/// push_back() to what may become large.
template <class T>
void appendLarge(std::vector<T>& vector, const T& entry)
{
    growLarge(vector, vector.size() + 1);
    vector.push_back(entry);
}

} // namespace karvel
