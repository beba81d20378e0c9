#include "KarvelPDFLibrary/deletion/Dependents.h"

#include <utility>

namespace karvel::deletion {

Dependents::Dependents(Removal& removal) : removal_(removal)
{
    for (const PageEntry& page : removal.document().removedPages()) {
        reach(page.object);
    }
    for (const QPDFObjGen& dropped : removal.dropped()) {
        reach(dropped.getObj());
    }
    follow();
}

void Dependents::add(int object)
{
    if (members_.insert(object)) {
        found_.push_back(object);
        follow();
    }
}

std::vector<int> Dependents::takeShared()
{
    std::vector<int> staying;
    for (const int object : std::exchange(shared_, {})) {
        if (!has(object)) {
            staying.push_back(object);
        }
    }
    return staying;
}

void Dependents::follow()
{
    for (; followed_ < found_.size(); ++followed_) {
        reach(found_[followed_]);
    }
}

/// Counts the references of an object that goes; what has no others goes, too.
void Dependents::reach(int object)
{
    for (const std::uint32_t reference : removal_.objects().references(object)) {
        const auto target = static_cast<int>(reference);
        if (target == 0 || goes(target) || removal_.isTreeNode(target) ||
            removal_.isRemainingPage(target)) {
            continue;
        }
        if (leads_.size() <= reference) {
            leads_.resize(reference + std::size_t(1), 0);
        }
        if (++leads_[reference] == 1) {
            shared_.push_back(target);
        }
        if (leads_[reference] >= removal_.formerReferrerCount(target)) {
            members_.insert(target);
            found_.push_back(target);
        }
    }
}

} // namespace karvel::deletion
