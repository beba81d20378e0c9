#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"

namespace karvel::deletion {

/// What goes with removed pages and dropped objects without being asked, since nothing leads to it
/// that stays: their content, and what only they draw. Rings among such objects are not seen
/// through: they count as staying.
class Dependents {
public:
    /// To be made when everything was dropped that is to be judged by it.
    explicit Dependents(Removal& removal);

    bool has(int object) const { return members_.has(object); }

    /// Whether an object goes: dropped, a removed page, or dependent on such.
    bool goes(int object) const { return has(object) || removal_.isGone(object); }

    /// All of them, in the order in which they were found.
    const std::vector<int>& objects() const { return found_; }

    /// One more object goes, and with it what only it held.
    void add(int object);

    /// The objects that something that goes refers to and that stayed when they were found, each
    /// once: those found since this was last asked. Pages and nodes of the page tree are left out.
    std::vector<int> takeShared();

private:
    void follow();
    void reach(int object);

    Removal& removal_;
    NumberSet members_;
    std::vector<int> found_;
    std::size_t followed_ = 0;         // how many of found_
    std::vector<std::uint32_t> leads_; // by number: references from what goes
    std::vector<int> shared_;
};

} // namespace karvel::deletion
