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

std::size_t workersFor(std::uint64_t cost, std::size_t documents, std::size_t workers)
{
    const auto worth = static_cast<std::size_t>(cost / costOfStart) + 1;
    return std::min({worth, documents, workers});
}

} // namespace

std::size_t workersWorthwhile(std::size_t documents, std::size_t workers)
{
    return workersFor(documents * costOfAny, documents, workers);
}

BatchPlan::BatchPlan(const std::vector<std::uint64_t>& sizes, std::size_t workers, HandingOut order)
    : sizes_(sizes), workers_(workers), waiting_(sizes.size(), true), left_(sizes.size())
{
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        costLeft_ += cost(i);
    }
    if (order == HandingOut::InOrder) {
        return;
    }
    const std::uint64_t worthFirst = std::max(smallestLarge, costLeft_ / (workers * 32));
    for (std::size_t i = sizes.size(); i-- > 0;) {
        if (sizes[i] >= worthFirst) {
            large_.push_back(i);
        }
    }
    std::stable_sort(large_.begin(), large_.end(),
                     [&](std::size_t a, std::size_t b) { return sizes[a] < sizes[b]; });
}

std::uint64_t BatchPlan::cost(std::size_t document) const
{
    return costOfAny + sizes_[document];
}

void BatchPlan::take(std::size_t document)
{
    waiting_[document] = false;
    --left_;
    costLeft_ -= cost(document);
}

std::vector<std::size_t> BatchPlan::only(std::size_t document)
{
    if (!waiting_[document]) {
        return {};
    }
    take(document);
    return {document};
}

void BatchPlan::leaveOut(std::size_t document)
{
    if (waiting_[document]) {
        take(document);
    }
}

std::size_t BatchPlan::workersWorthwhile() const
{
    return workersFor(costLeft_, left_, workers_);
}

void BatchPlan::giveBack(const std::vector<std::size_t>& documents)
{
    for (auto document = documents.rbegin(); document != documents.rend(); ++document) {
        waiting_[*document] = true;
        ++left_;
        costLeft_ += cost(*document);
        returned_.push_back(*document);
    }
}

std::vector<std::size_t> BatchPlan::next()
{
    for (; !large_.empty(); large_.pop_back()) {
        if (waiting_[large_.back()]) {
            return only(large_.back());
        }
    }
    const std::uint64_t share =
        std::clamp(costLeft_ / (workers_ * 4), smallestGroup, costliestGroup);
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
    for (; !returned_.empty() && fits(returned_.back()); returned_.pop_back()) {
        if (waiting_[returned_.back()]) {
            add(returned_.back());
        }
    }
    for (; returned_.empty() && position_ < sizes_.size(); ++position_) {
        if (waiting_[position_]) {
            if (!fits(position_)) {
                break;
            }
            add(position_);
        }
    }
    return group;
}

} // namespace vantora
