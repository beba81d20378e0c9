#include "KarvelPDFLibrary/page_tree/PageOrder.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using namespace karvel;

std::vector<PageEntry> entriesFrom(int first, int count)
{
    std::vector<PageEntry> entries;
    for (int i = 0; i < count; ++i) {
        entries.push_back({first + i, 0, 0, 0, 0});
    }
    return entries;
}

std::vector<int> objectsOf(const std::vector<PageEntry>& entries)
{
    std::vector<int> objects;
    for (const PageEntry& entry : entries) {
        objects.push_back(entry.object);
    }
    return objects;
}

TEST(PageOrder, BehavesLikeAVectorUnderRandomChanges)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        int next = 1000;
        std::vector<PageEntry> expected = entriesFrom(1, 50);
        PageOrder order(expected);
        for (int step = 0; step < 200; ++step) {
            const auto size = static_cast<int>(expected.size());
            if (random() % 3 != 0 && size > 1) {
                const int first = static_cast<int>(random() % static_cast<unsigned>(size));
                const int count = static_cast<int>(
                    random() % static_cast<unsigned>(std::min(size - first, 5) + 1));
                order.remove({first + 1, count});
                expected.erase(expected.begin() + first, expected.begin() + first + count);
            } else {
                const int before = static_cast<int>(random() % static_cast<unsigned>(size + 1));
                const auto added = entriesFrom(next, static_cast<int>(random() % 6));
                next += 10;
                order.insert(before + 1, added);
                expected.insert(expected.begin() + before, added.begin(), added.end());
            }
            ASSERT_EQ(order.count(), static_cast<int>(expected.size()));
            ASSERT_EQ(objectsOf(order.toVector()), objectsOf(expected));
            if (!expected.empty()) {
                const auto page = random() % expected.size();
                ASSERT_EQ(order.at(static_cast<int>(page) + 1).object, expected[page].object);
            }
        }
    }
}

} // namespace
