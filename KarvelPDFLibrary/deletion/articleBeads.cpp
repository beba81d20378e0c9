#include "KarvelPDFLibrary/deletion/modules.h"

#include <unordered_map>

namespace karvel::deletion {

namespace {

/// Beads (ISO 32000-2, 12.4.3) need not say their type.
bool isBead(QPDFObjectHandle object)
{
    return object.isDictionary() && !object.hasKey("/Subtype") && !object.hasKey("/S") &&
           (object.getKey("/N").isIndirect() || object.getKey("/V").isIndirect());
}

class BeadRemover {
public:
    explicit BeadRemover(Removal& removal) : removal_(removal) {}

    void run()
    {
        for (const int number : removal_.pageReferrers()) {
            if (removal_.mayHave(number, index::HasPlace) &&
                removal_.plainElement(number) == nullptr) {
                QPDFObjectHandle object = removal_.object(number);
                if (isBead(object) && removal_.isRemovedPage(object.getKey("/P"))) {
                    take(object);
                }
            }
        }
        for (QPDFObjectHandle page : removal_.removedPagesWith(index::HasBeads)) {
            QPDFObjectHandle beads = page.getKey("/B");
            for (int i = 0; beads.isArray() && i < beads.getArrayNItems(); ++i) {
                QPDFObjectHandle bead = beads.getArrayItem(i);
                if (bead.isIndirect() && isBead(bead) &&
                    !removal_.isRemainingPage(bead.getKey("/P"))) {
                    take(bead);
                }
            }
        }
        for (const QPDFObjectHandle& bead : beads_) {
            closeRingAround(bead);
            noteActionsFor(bead);
        }
        if (!beads_.empty()) {
            removeThreads();
        }
    }

private:
    void take(const QPDFObjectHandle& bead)
    {
        if (!removal_.isGone(bead)) {
            removal_.drop(bead);
            beads_.push_back(bead);
        }
    }

    /// Links the beads before and after a run of beads that go.
    void closeRingAround(const QPDFObjectHandle& bead)
    {
        if (following_.count(bead.getObjectID()) > 0) {
            return;
        }
        std::vector<QPDFObjectHandle> run = {bead};
        std::unordered_set<int> seen = {bead.getObjectID()};
        const QPDFObjectHandle after = firstLeft(bead, "/N", seen, run);
        const QPDFObjectHandle before = firstLeft(bead, "/V", seen, run);
        for (const QPDFObjectHandle& gone : run) {
            following_[gone.getObjectID()] = after;
        }
        if (after.isInitialized() && before.isInitialized()) {
            removal_.changes().edit(before).replaceKey("/N", after);
            removal_.changes().edit(after).replaceKey("/V", before);
        }
    }

    /// The next bead in a direction that stays; uninitialised when there is none. Those on the way
    /// are added to the run.
    QPDFObjectHandle firstLeft(QPDFObjectHandle bead, const char* key,
                               std::unordered_set<int>& seen, std::vector<QPDFObjectHandle>& run)
    {
        for (;;) {
            bead = bead.getKey(key);
            if (!bead.isIndirect() || !bead.isDictionary()) {
                return {};
            }
            if (!removal_.isGone(bead)) {
                return bead;
            }
            if (!seen.insert(bead.getObjectID()).second) {
                return {};
            }
            run.push_back(bead);
        }
    }

    void removeThreads()
    {
        QPDFObjectHandle threads = removal_.catalogEntry("/Threads");
        if (!threads.isArray()) {
            return;
        }
        const QPDFObjectHandle owner = threads.isIndirect() ? threads : removal_.catalog();
        const std::vector<QPDFObjectHandle> all = threads.getArrayAsVector();
        std::vector<QPDFObjectHandle> kept;
        for (const QPDFObjectHandle& thread : all) {
            if (loses(thread, owner)) {
                removal_.drop(thread);
                noteActionsFor(thread);
            } else {
                kept.push_back(thread);
            }
        }
        if (kept.empty() && !all.empty()) {
            removal_.changes().edit(removal_.catalog()).removeKey("/Threads");
        } else if (kept.size() != all.size()) {
            removal_.changes().edit(owner);
            threads.setArrayFromVector(kept);
        }
    }

    /// Actions that lead to what goes are put right with the others.
    void noteActionsFor(const QPDFObjectHandle& gone)
    {
        for (const int referrer : removal_.referrerNumbersOf(gone.getObjectID())) {
            removal_.threadActions.push_back(referrer);
        }
    }

    /// Lets a thread begin with its first bead that is left; true when there is none.
    bool loses(QPDFObjectHandle thread, const QPDFObjectHandle& owner)
    {
        QPDFObjectHandle first =
            thread.isDictionary() ? thread.getKey("/F") : QPDFObjectHandle::newNull();
        if (!removal_.isGone(first)) {
            return false;
        }
        QPDFObjectHandle next = following_[first.getObjectID()];
        if (!next.isInitialized()) {
            return true;
        }
        removal_.changes().edit(thread.isIndirect() ? thread : owner);
        thread.replaceKey("/F", next);
        if (thread.isIndirect()) {
            removal_.changes().edit(next).replaceKey("/T", thread);
        }
        return false;
    }

    Removal& removal_;
    std::vector<QPDFObjectHandle> beads_;
    std::unordered_map<int, QPDFObjectHandle> following_; // the bead that stays after each
};

} // namespace

void removeArticleBeads(Removal& removal)
{
    BeadRemover(removal).run();
}

} // namespace karvel::deletion
