#include "VantoraHost/core/workers/BatchPlan.h"

#include <algorithm>

namespace vantora {

namespace {

// A document costs about as much as so many bytes, however small it is.
constexpr std::uint64_t costOfAny = 256 * 1024;

constexpr std::uint64_t costOfStart = 32 * costOfAny;

constexpr std::size_t largestGroup = 64;
constexpr std::uint64_t costliestGroup = 64 * costOfAny;

// The disk is waited for after each group, about as long as so many small documents take.
constexpr std::uint64_t smallestGroup = 8 * costOfAny;

// Below this size, waiting for a document at the end of a run isn't noticed.
constexpr std::uint64_t smallestLarge = 8 * 1024 * 1024;

} // namespace

BatchPlan::BatchPlan(const std::vector<std::uint64_t>& sizes, std::size_t workers, HandingOut order)
    : sizes(sizes), workers(workers), waiting(sizes.size(), true), left_(sizes.size())
{
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        costLeft += cost(i);
    }
    if (order == HandingOut::InOrder) {
        return;
    }
    const std::uint64_t worthFirst = std::max(smallestLarge, costLeft / (workers * 32));
    for (std::size_t i = sizes.size(); i-- > 0;) {
        if (sizes[i] >= worthFirst) {
            large.push_back(i);
        }
    }
    std::stable_sort(large.begin(), large.end(),
                     [&](std::size_t a, std::size_t b) { return sizes[a] < sizes[b]; });
}

std::uint64_t BatchPlan::cost(std::size_t document) const
{
    return costOfAny + sizes[document];
}

void BatchPlan::take(std::size_t document)
{
    waiting[document] = false;
    --left_;
    costLeft -= cost(document);
}

std::vector<std::size_t> BatchPlan::only(std::size_t document)
{
    if (!waiting[document]) {
        return {};
    }
    take(document);
    return {document};
}

void BatchPlan::leaveOut(std::size_t document)
{
    if (waiting[document]) {
        take(document);
    }
}

std::size_t BatchPlan::workersWorthwhile() const
{
    const auto worth = static_cast<std::size_t>(costLeft / costOfStart) + 1;
    return std::min({worth, left_, workers});
}

void BatchPlan::giveBack(const std::vector<std::size_t>& documents)
{
    for (auto document = documents.rbegin(); document != documents.rend(); ++document) {
        waiting[*document] = true;
        ++left_;
        costLeft += cost(*document);
        returned.push_back(*document);
    }
}

std::vector<std::size_t> BatchPlan::next()
{
    for (; !large.empty(); large.pop_back()) {
        if (waiting[large.back()]) {
            return only(large.back());
        }
    }
    const std::uint64_t share = std::clamp(costLeft / (workers * 4), smallestGroup, costliestGroup);
    std::vector<std::size_t> group;
    std::uint64_t groupCost = 0;
    const auto fits = [&](std::size_t document) {
        return group.empty() ||
               (group.size() < largestGroup && groupCost + cost(document) <= share);
    };
    const auto add = [&](std::size_t document) {
        group.push_back(document);
        groupCost += cost(document);
        take(document);
    };
    for (; !returned.empty() && fits(returned.back()); returned.pop_back()) {
        if (waiting[returned.back()]) {
            add(returned.back());
        }
    }
    for (; returned.empty() && position < sizes.size(); ++position) {
        if (waiting[position]) {
            if (!fits(position)) {
                break;
            }
            add(position);
        }
    }
    return group;
}

} // namespace vantora
