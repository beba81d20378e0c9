#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vantora {

/// How many of so many workers small documents are worth: starting one takes as long as some dozen
/// of them.
std::size_t workersWorthwhile(std::size_t documents, std::size_t workers);

enum class HandingOut {
    LongestFirst,
    InOrder, ///< every document in its turn
};

/// The order in which the documents of a run are handed to workers, by their numbers from 0: those
/// first that take so long that the run would wait for them at its end, then the others in their
/// order, in groups that make the exchange with the worker cost nothing beside the work. Towards
/// the end the groups become smaller, so that all workers end at about the same time, but not so
/// small that the exchange would cost more than that saves.
class BatchPlan {
public:
    /// Takes the documents' sizes in bytes and the number of workers, at least 1.
    BatchPlan(const std::vector<std::uint64_t>& sizes, std::size_t workers,
              HandingOut order = HandingOut::LongestFirst);

    /// The next group; none when every document is handed out.
    std::vector<std::size_t> next();

    /// This one document as a group, or none when it is handed out.
    std::vector<std::size_t> only(std::size_t document);

    /// Takes documents back that are to be handed out again.
    void giveBack(const std::vector<std::size_t>& documents);

    /// How many documents are to be handed out.
    std::size_t left() const { return left_; }

    /// How many workers what is left is worth, at most those of the run.
    std::size_t workersWorthwhile() const;

    /// Leaves a document out that nobody needs to do.
    void leaveOut(std::size_t document);

private:
    std::uint64_t cost(std::size_t document) const;
    void take(std::size_t document);

    const std::vector<std::uint64_t>& sizes_;
    const std::size_t workers_;
    std::vector<bool> waiting_;
    std::vector<std::size_t> large_; ///< the largest last
    std::vector<std::size_t> returned_;
    std::size_t position_ = 0; ///< no document before it waits, but large and returned ones
    std::size_t left_;
    std::uint64_t costLeft_ = 0;
};

} // namespace vantora
