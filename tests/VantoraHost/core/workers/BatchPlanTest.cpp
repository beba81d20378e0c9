#include "VantoraHost/core/workers/BatchPlan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace {

using vantora::BatchPlan;
using Documents = std::vector<std::size_t>;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::Le;

constexpr std::uint64_t megabyte = 1024 * 1024;

TEST(BatchPlan, HandsOutEveryDocumentOnceInGroupsThatShrink)
{
    const std::vector<std::uint64_t> sizes(10000, 9000);
    BatchPlan plan(sizes, 2);
    Documents all;
    std::vector<std::size_t> groups;
    for (Documents group = plan.next(); !group.empty(); group = plan.next()) {
        groups.push_back(group.size());
        all.insert(all.end(), group.begin(), group.end());
    }
    Documents expected(sizes.size());
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(all, expected);
    EXPECT_EQ(plan.left(), 0U);
    EXPECT_LT(groups.size(), 300U);
    EXPECT_GT(groups.front(), 32U);
    EXPECT_THAT(Documents(groups.end() - 6, groups.end() - 1), Each(AllOf(Ge(4U), Le(8U))));
    EXPECT_TRUE(std::is_sorted(groups.rbegin(), groups.rend()));
}

TEST(BatchPlan, HandsOutLargeDocumentsFirstAndAlone)
{
    const std::vector<std::uint64_t> sizes = {100, 20 * megabyte, 100, 90 * megabyte, 100};
    BatchPlan plan(sizes, 2);
    EXPECT_THAT(plan.next(), ElementsAre(3));
    EXPECT_THAT(plan.next(), ElementsAre(1));
    EXPECT_THAT(plan.next(), ElementsAre(0, 2, 4));
}

TEST(BatchPlan, KeepsTheOrderWhereNoDocumentStandsOut)
{
    const std::vector<std::uint64_t> sizes(1000, 20 * megabyte);
    BatchPlan plan(sizes, 2);
    EXPECT_THAT(plan.next(), ElementsAre(0));
    EXPECT_THAT(plan.next(), ElementsAre(1));
}

TEST(BatchPlan, HandsOutAgainWhatItIsGivenBack)
{
    const std::vector<std::uint64_t> sizes = {5 * megabyte, 5 * megabyte, 30 * megabyte,
                                              5 * megabyte, 5 * megabyte, 5 * megabyte,
                                              5 * megabyte, 5 * megabyte};
    BatchPlan plan(sizes, 1);
    EXPECT_THAT(plan.next(), ElementsAre(2));
    const Documents group = plan.next();
    EXPECT_THAT(group, ElementsAre(0));
    plan.giveBack({2, 0});
    EXPECT_EQ(plan.left(), 8U);
    EXPECT_THAT(plan.next(), ElementsAre(2));
    EXPECT_THAT(plan.next(), ElementsAre(0));
    EXPECT_THAT(plan.next(), ElementsAre(1));
}

TEST(BatchPlan, HandsOutASingleDocumentOnDemandButNotTwice)
{
    const std::vector<std::uint64_t> sizes(5, 1);
    BatchPlan plan(sizes, 1);
    EXPECT_THAT(plan.only(1), ElementsAre(1));
    EXPECT_THAT(plan.only(1), IsEmpty());
    plan.leaveOut(0);
    plan.leaveOut(3);
    EXPECT_THAT(plan.next(), ElementsAre(2, 4));
    EXPECT_THAT(plan.next(), IsEmpty());
}

TEST(BatchPlan, StartsNoWorkersThatWouldFindNothingToDo)
{
    const std::vector<std::uint64_t> few(5, 1000);
    const std::vector<std::uint64_t> many(500, 1000);
    const std::vector<std::uint64_t> large(3, 90 * megabyte);
    EXPECT_EQ(BatchPlan(few, 8).workersWorthwhile(), 1U);
    EXPECT_EQ(BatchPlan(many, 8).workersWorthwhile(), 8U);
    EXPECT_EQ(BatchPlan(large, 8).workersWorthwhile(), 3U);
    EXPECT_EQ(BatchPlan({}, 8).workersWorthwhile(), 0U);
}

TEST(BatchPlan, KeepsTheOrderWhereAsked)
{
    std::vector<std::uint64_t> sizes(100, 9000);
    sizes[70] = 500 * megabyte;
    BatchPlan plan(sizes, 1, vantora::HandingOut::InOrder);
    plan.leaveOut(3);
    Documents all;
    for (Documents group = plan.next(); !group.empty(); group = plan.next()) {
        all.insert(all.end(), group.begin(), group.end());
    }
    EXPECT_EQ(all.size(), 99U);
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
}

} // namespace
