#include "KarvelPDFLibrary/deletion/ActionChain.h"

#include <algorithm>

namespace karvel::deletion {

namespace {

bool leads(Removal& removal, QPDFObjectHandle action)
{
    QPDFObjectHandle kind = action.getKey("/S");
    const std::string name = kind.isName() ? kind.getName() : std::string();
    if (name == "/Thread") {
        return !action.hasKey("/F") &&
               (removal.isGone(action.getKey("/D")) || removal.isGone(action.getKey("/B")));
    }
    return name == "/GoTo" && removal.leadsToRemovedPage(action.getKey("/D"));
}

std::vector<QPDFObjectHandle> nextOf(QPDFObjectHandle action)
{
    QPDFObjectHandle next = action.getKey("/Next");
    if (next.isArray()) {
        return next.getArrayAsVector();
    }
    return next.isDictionary() ? std::vector<QPDFObjectHandle>{next}
                               : std::vector<QPDFObjectHandle>{};
}

void setNext(QPDFObjectHandle action, const std::vector<QPDFObjectHandle>& next)
{
    if (next.empty()) {
        action.removeKey("/Next");
    } else {
        action.replaceKey("/Next",
                          next.size() == 1 ? next.front() : QPDFObjectHandle::newArray(next));
    }
}

/// Goes through the actions below one, without recursion and each once.
class ChainPruner {
public:
    ChainPruner(Removal& removal, QPDFObjectHandle owner)
        : removal_(removal), owner_(std::move(owner))
    {
    }

    /// The actions that take the place of a list of actions.
    std::vector<QPDFObjectHandle> prune(const std::vector<QPDFObjectHandle>& actions)
    {
        std::vector<QPDFObjectHandle> kept = replacement(actions);
        for (std::size_t i = 0; i < pending_.size(); ++i) {
            auto [action, owner] = pending_[i];
            const std::vector<QPDFObjectHandle> next = nextOf(action);
            const bool before = changed_;
            changed_ = false;
            currentOwner_ = owner;
            const std::vector<QPDFObjectHandle> left = replacement(next);
            if (changed_) {
                removal_.changes().edit(owner);
                setNext(action, left);
            }
            changed_ = changed_ || before;
        }
        return kept;
    }

    bool changed() const { return changed_; }

private:
    /// What stays of a list at its own level; actions that stay are noted, to look below them.
    std::vector<QPDFObjectHandle> replacement(const std::vector<QPDFObjectHandle>& actions)
    {
        std::vector<QPDFObjectHandle> kept;
        std::vector<QPDFObjectHandle> open(actions.rbegin(), actions.rend());
        while (!open.empty()) {
            QPDFObjectHandle action = open.back();
            open.pop_back();
            if (action.isIndirect() && !seen_.insert(action.getObjectID()).second) {
                if (removal_.isGone(action)) {
                    changed_ = true;
                } else {
                    kept.push_back(action);
                }
                continue;
            }
            if (!action.isDictionary() || !leads(removal_, action)) {
                kept.push_back(action);
                if (action.isDictionary()) {
                    pending_.emplace_back(action, action.isIndirect() ? action : currentOwner_);
                }
                continue;
            }
            changed_ = true;
            const std::vector<QPDFObjectHandle> next = nextOf(action);
            open.insert(open.end(), next.rbegin(), next.rend());
            removal_.drop(action);
        }
        return kept;
    }

    Removal& removal_;
    QPDFObjectHandle owner_;
    QPDFObjectHandle currentOwner_ = owner_;
    std::vector<std::pair<QPDFObjectHandle, QPDFObjectHandle>> pending_;
    std::unordered_set<int> seen_;
    bool changed_ = false;
};

} // namespace

bool pruneActions(Removal& removal, const QPDFObjectHandle& owner, QPDFObjectHandle dictionary,
                  const std::string& key)
{
    QPDFObjectHandle value = dictionary.getKey(key);
    const bool isAction = value.isDictionary() && value.hasKey("/S");
    if (!isAction) {
        if (!removal.leadsToRemovedPage(value)) {
            return false;
        }
        removal.changes().edit(owner);
        dictionary.removeKey(key);
        return true;
    }
    ChainPruner pruner(removal, owner);
    std::vector<QPDFObjectHandle> left = pruner.prune({value});
    if (!pruner.changed()) {
        return false;
    }
    removal.changes().edit(owner);
    if (left.empty()) {
        dictionary.removeKey(key);
        return true;
    }
    // A key holds one action: what came after the first goes on behind it.
    if (left.size() > 1) {
        QPDFObjectHandle first = left.front();
        std::vector<QPDFObjectHandle> behind = nextOf(first);
        behind.insert(behind.end(), left.begin() + 1, left.end());
        removal.changes().edit(first.isIndirect() ? first : owner);
        setNext(first, behind);
    }
    dictionary.replaceKey(key, left.front());
    return true;
}

bool pruneAdditionalActions(Removal& removal, const QPDFObjectHandle& owner,
                            QPDFObjectHandle dictionary)
{
    QPDFObjectHandle triggers = dictionary.getKey("/AA");
    if (!triggers.isDictionary()) {
        return false;
    }
    const QPDFObjectHandle holder = triggers.isIndirect() ? triggers : owner;
    bool changed = false;
    for (const std::string& trigger : triggers.getKeys()) {
        changed = pruneActions(removal, holder, triggers, trigger) || changed;
    }
    if (changed && triggers.getKeys().empty()) {
        removal.changes().edit(owner);
        dictionary.removeKey("/AA");
    }
    return changed;
}

} // namespace karvel::deletion
