#pragma once

#include "KarvelPDFLibrary/deletion/ContentNames.h"
#include "KarvelPDFLibrary/deletion/Dependents.h"
#include "KarvelPDFLibrary/deletion/ResourceSharing.h"

#include <map>
#include <unordered_map>
#include <vector>

namespace karvel::deletion {

/// Takes what removed pages drew, and nobody does who stays, out of all resources that list it
/// nevertheless: many programs list in every page's resources whatever the document has.
///
/// An object that something that goes refers to is looked at in this order, the cheapest first:
/// some who list it, spread over the document, whether they draw it, which settles nearly all
/// fonts; those who go, whether any of them draws it; then everybody who lists it.
class ListedResources {
public:
    ListedResources(Removal& removal, Dependents& dependents, ResourceSharing& sharing,
                    ContentNames& content)
        : removal_(removal), dependents_(dependents), sharing_(sharing), content_(content)
    {
    }

    /// `drawn` are objects that are known to be drawn by what goes. May be called again when more
    /// goes.
    void run(std::vector<int> drawn);

    /// Whether something was kept since it cannot be told what draws it.
    bool isUnclear() const { return unclear_; }

private:
    /// What has been read of those who draw.
    struct Drawing {
        std::map<int, bool> users;            // by number: whether they could be read
        std::unordered_map<int, int> drawers; // by what they draw: one who does
        bool has(int object) const { return drawers.count(object) > 0; }
    };

    void judge(const std::vector<int>& objects);
    void judge(int object);
    std::vector<int> withoutTheirDrawer();
    std::vector<int> stayingHolders(int object);
    bool needs(int holder, int object);
    static std::vector<int> some(const std::vector<int>& holders);
    bool isPlainlyDrawnBySome(int object, const std::vector<int>& holders);
    bool isDrawnBySome(int object, const std::vector<int>& holders);
    bool isDrawnByWhatGoes(int object);
    std::optional<std::vector<ResourceListing>> undrawnListings(int object,
                                                                const std::vector<int>& holders);
    bool isDrawnThrough(const ResourceCategory& category, int object);
    const std::optional<std::vector<ResourceUser>>& usersOf(const ResourceCategory& category);
    bool read(const ResourceUser& user, Drawing& drawing);
    void remove(std::vector<ResourceListing>& listings);

    Removal& removal_;
    Dependents& dependents_;
    ResourceSharing& sharing_;
    ContentNames& content_;
    Drawing going_;
    Drawing staying_;
    NumberSet judged_;
    std::map<std::pair<int, std::string>, std::optional<std::vector<ResourceUser>>> users_;
    bool unclear_ = false;
};

} // namespace karvel::deletion
