#include "KarvelPDFLibrary/deletion/ContentNames.h"
#include "KarvelPDFLibrary/deletion/ListedResources.h"
#include "KarvelPDFLibrary/deletion/modules.h"

#include <algorithm>
#include <utility>

namespace karvel::deletion {

namespace {

class ResourceRemover {
public:
    explicit ResourceRemover(Removal& removal)
        : removal_(removal), dependents_(removal), sharing_(removal, dependents_),
          listed_(removal, dependents_, sharing_, content_)
    {
    }

    void run()
    {
        for (const PageEntry& page : removal_.document().removedPages()) {
            if (sharing_.mayShare(page.object)) {
                takeCandidatesOf(sharing_.userOf(page), &page);
            }
        }
        // Forms that go with the pages may draw with what they share, too, and so may those that
        // go when nobody lists them any more.
        std::size_t looked = 0;
        do {
            for (const std::size_t all = dependents_.objects().size(); looked < all; ++looked) {
                takeCandidatesOf(dependents_.objects()[looked]);
            }
            takeOut();
        } while (looked < dependents_.objects().size());
        if (unclear_ || listed_.isUnclear()) {
            removal_.warn("resources that removed pages share with others were kept, since it "
                          "cannot be told what else uses them");
        }
    }

private:
    struct Shared {
        ResourceCategory category;

        /// Names of what holds content that no page is known to use that stays.
        std::set<std::string> unexplained;

        /// Those among them that removed pages use.
        std::set<std::string> candidates;

        bool isDrawn = false; // anything of what is unexplained
    };

    struct User {
        ResourceUser user;
        std::vector<Shared*> shared;

        bool isOfInterest() const
        {
            return std::any_of(shared.begin(), shared.end(),
                               [](const Shared* one) { return !one->candidates.empty(); });
        }
    };

    void takeOut()
    {
        for (auto& [place, shared] : shared_) {
            findUsersOf(shared);
        }
        for (const auto& [number, user] : users_) {
            keepWhatIsUsedBy(user);
        }
        for (auto& [place, shared] : shared_) {
            remove(shared);
        }
        shared_.clear();
        users_.clear();
        listed_.run(std::exchange(takenOut_, {}));
    }

    void takeCandidatesOf(int object)
    {
        if (sharing_.mayShare(object)) {
            if (const auto user = sharing_.userIn(removal_.object(object))) {
                takeCandidatesOf(*user, nullptr);
            }
        }
    }

    /// What a user that goes draws from what it shares. `page` is null for what is no page.
    void takeCandidatesOf(const ResourceUser& user, const PageEntry* page)
    {
        const int near = page != nullptr ? page->original : 1; // where others may draw the same
        std::vector<Shared*> ofUser;
        for (const ResourceCategory& category : sharing_.sharedBy(user, page)) {
            Shared& shared = sharedAs(category, near);
            if (!shared.unexplained.empty()) {
                ofUser.push_back(&shared);
            }
        }
        if (ofUser.empty()) {
            return;
        }
        std::set<std::string> names;
        if (!content_.collect(user.content, user.resources, sharesAnyOf(ofUser), names)) {
            for (const Shared* shared : ofUser) {
                unclear_ = unclear_ || shared->isDrawn;
            }
            return;
        }
        for (Shared* shared : ofUser) {
            for (const std::string& name : names) {
                if (shared->unexplained.count(name) > 0) {
                    shared->candidates.insert(name);
                }
            }
        }
    }

    /// What is shared as a category. Most documents use their fonts all over: what a few pages use
    /// that stay needs no further search.
    Shared& sharedAs(const ResourceCategory& category, int near)
    {
        const auto [entry, isNew] = shared_.try_emplace({category.place, category.name});
        Shared& shared = entry->second;
        if (!isNew) {
            return shared;
        }
        shared.category = category;
        QPDFObjectHandle entries = category.dictionary;
        for (const auto& [name, value] : entries.getDictAsMap()) {
            // Default colour spaces (ISO 32000-2, 8.6.5.6) are used without being named.
            const bool isDefault = category.name == "/ColorSpace" && name.rfind("/Default", 0) == 0;
            if (!isDefault && ResourceSharing::holdsContent(category.name, value)) {
                shared.unexplained.insert(name);
            }
        }
        if (shared.unexplained.empty()) {
            return shared;
        }
        for (const ResourceUser& user : sharing_.someUsersOf(category, near)) {
            std::set<std::string> names;
            if (!shared.unexplained.empty() &&
                content_.collect(user.content, user.resources, sharesAnyOf({&shared}), names)) {
                for (const std::string& name : names) {
                    shared.unexplained.erase(name);
                }
            }
        }
        for (const std::string& name : shared.unexplained) {
            shared.isDrawn =
                shared.isDrawn || ResourceSharing::isDrawn(category.name, entries.getKey(name));
        }
        return shared;
    }

    /// Whether resources of a form or pattern are among those that are looked at.
    static std::function<bool(QPDFObjectHandle)> sharesAnyOf(std::vector<Shared*> shared)
    {
        return [shared = std::move(shared)](QPDFObjectHandle resources) {
            return std::any_of(shared.begin(), shared.end(), [&](const Shared* one) {
                return resources.getKey(one->category.name)
                    .isSameObjectAs(one->category.dictionary);
            });
        };
    }

    void findUsersOf(Shared& shared)
    {
        if (shared.candidates.empty()) {
            return;
        }
        const auto users = sharing_.usersOf(shared.category);
        if (!users) {
            unclear_ = unclear_ || shared.isDrawn;
            shared.candidates.clear();
            return;
        }
        for (const ResourceUser& user : *users) {
            User& entry = users_[user.object.getObjectID()];
            entry.user = user;
            entry.shared.push_back(&shared);
        }
    }

    void keepWhatIsUsedBy(const User& user)
    {
        if (user.isOfInterest()) {
            keepWhatIsNamedIn(user.user.content, user);
        }
        if (user.isOfInterest() && removal_.isRemainingPage(user.user.object)) {
            keepWhatIsNamedIn(sharing_.appearancesOn(user.user.object), user);
        }
    }

    void keepWhatIsNamedIn(const QPDFObjectHandle& content, const User& user)
    {
        std::set<std::string> names;
        const bool read =
            content_.collect(content, user.user.resources, sharesAnyOf(user.shared), names);
        for (Shared* shared : user.shared) {
            if (!read) {
                unclear_ = unclear_ || shared->isDrawn;
                shared->candidates.clear();
            }
            for (const std::string& name : names) {
                shared->candidates.erase(name);
            }
        }
    }

    void remove(Shared& shared)
    {
        if (shared.candidates.empty()) {
            return;
        }
        if (shared.category.owner.isIndirect()) {
            removal_.changes().edit(shared.category.owner);
        }
        for (const std::string& name : shared.candidates) {
            QPDFObjectHandle value = shared.category.dictionary.getKey(name);
            if (value.isIndirect()) {
                takenOut_.push_back(value.getObjectID());
            }
            shared.category.dictionary.removeKey(name);
        }
    }

    Removal& removal_;
    Dependents dependents_;
    ResourceSharing sharing_;
    ContentNames content_;
    ListedResources listed_;
    std::map<std::pair<int, std::string>, Shared> shared_; // by place and category
    std::map<int, User> users_;                            // by object number
    std::vector<int> takenOut_;                            // objects that were listed
    bool unclear_ = false;
};

} // namespace

void removeSharedResources(Removal& removal)
{
    ResourceRemover(removal).run();
}

} // namespace karvel::deletion
