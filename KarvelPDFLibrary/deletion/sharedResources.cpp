#include "KarvelPDFLibrary/deletion/ContentNames.h"
#include "KarvelPDFLibrary/deletion/ResourceSharing.h"
#include "KarvelPDFLibrary/deletion/modules.h"

#include <algorithm>

namespace karvel::deletion {

namespace {

class ResourceRemover {
public:
    explicit ResourceRemover(Removal& removal) : removal_(removal), sharing_(removal) {}

    void run()
    {
        for (const PageEntry& page : removal_.document().removedPages()) {
            if (sharing_.mayShare(page)) {
                takeCandidatesOf(page);
            }
        }
        for (auto& [place, shared] : shared_) {
            findUsersOf(shared);
        }
        for (const auto& [number, user] : users_) {
            keepWhatIsUsedBy(user);
        }
        for (auto& [place, shared] : shared_) {
            remove(shared);
        }
        if (unclear_) {
            removal_.warn("resources that removed pages share with others were kept, since it "
                          "cannot be told what else uses them");
        }
    }

private:
    struct Shared {
        ResourceCategory category;

        /// Names that removed pages use and, as far as is known, nothing else.
        std::set<std::string> candidates;
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

    void takeCandidatesOf(const PageEntry& entry)
    {
        std::vector<Shared*> ofPage;
        for (const ResourceCategory& category : sharing_.sharedBy(entry)) {
            Shared& shared = shared_[{category.place, category.name}];
            shared.category = category;
            ofPage.push_back(&shared);
        }
        if (ofPage.empty()) {
            return;
        }
        const ResourceUser page = sharing_.userOf(entry);
        std::set<std::string> names;
        if (!content_.collect(page.content, page.resources, sharesAnyOf(ofPage), names)) {
            unclear_ = true;
            return;
        }
        for (Shared* shared : ofPage) {
            QPDFObjectHandle entries = shared->category.dictionary;
            for (const std::string& name : names) {
                if (entries.hasKey(name) &&
                    ResourceSharing::holdsContent(shared->category.name, entries.getKey(name))) {
                    shared->candidates.insert(name);
                }
            }
        }
    }

    /// Whether resources of a form or pattern are among those that are looked at.
    static std::function<bool(QPDFObjectHandle)> sharesAnyOf(const std::vector<Shared*>& shared)
    {
        return [&shared](QPDFObjectHandle resources) {
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
            unclear_ = true;
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
            keepWhatIsNamedIn(ResourceSharing::appearancesOn(user.user.object), user);
        }
    }

    void keepWhatIsNamedIn(const QPDFObjectHandle& content, const User& user)
    {
        std::set<std::string> names;
        const bool read =
            content_.collect(content, user.user.resources, sharesAnyOf(user.shared), names);
        unclear_ = unclear_ || !read;
        for (Shared* shared : user.shared) {
            if (!read) {
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
            shared.category.dictionary.removeKey(name);
        }
    }

    Removal& removal_;
    ResourceSharing sharing_;
    ContentNames content_;
    std::map<std::pair<int, std::string>, Shared> shared_; // by place and category
    std::map<int, User> users_;                            // by object number
    bool unclear_ = false;
};

} // namespace

void removeSharedResources(Removal& removal)
{
    ResourceRemover(removal).run();
}

} // namespace karvel::deletion
