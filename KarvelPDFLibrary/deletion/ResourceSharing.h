#pragma once

#include "KarvelPDFLibrary/deletion/Dependents.h"

#include <map>
#include <set>

namespace karvel::deletion {

/// The entries of one category in a resource dictionary.
struct ResourceCategory {
    std::string name; // "/XObject"
    QPDFObjectHandle dictionary;

    /// The object with a number in which it stands; null when that is about to be written anew.
    QPDFObjectHandle owner;

    /// The same for all who share it: the owner's number or, without an owner, one below 0.
    int place = 0;
};

/// An entry of a category.
struct ResourceListing {
    ResourceCategory category;
    std::string name; // "/Im1"
};

/// Something that draws with resources: a page, a stream with resources of its own, or a font whose
/// glyphs are drawn.
struct ResourceUser {
    QPDFObjectHandle object;
    QPDFObjectHandle content; // a stream or an array of streams
    QPDFObjectHandle resources;
};

/// Finds who shares resources with what goes (ISO 32000-2, 7.8.3): the same dictionary, the same
/// dictionary of a category, or what is inherited from the page tree.
class ResourceSharing {
public:
    ResourceSharing(Removal& removal, const Dependents& dependents)
        : removal_(removal), dependents_(dependents)
    {
    }

    /// Whether a page or stream that goes may share resources, as far as is known without building
    /// it. Most don't.
    bool mayShare(int object);

    /// The categories of the resources of something that goes that something else may use too and
    /// whose entries have content of their own. `page` is the entry of a page, which may inherit
    /// them, and null for what else draws.
    std::vector<ResourceCategory> sharedBy(const ResourceUser& user, const PageEntry* page);

    /// A removed page.
    ResourceUser userOf(const PageEntry& page);

    /// A page, stream or font with resources of its own; nothing for other objects.
    std::optional<ResourceUser> userIn(QPDFObjectHandle object);

    /// Some of the remaining pages that use a category, found without looking for all who do: those
    /// next to where the page with the former number `near` was, and some from all over the
    /// document.
    std::vector<ResourceUser> someUsersOf(const ResourceCategory& category, int near);

    /// Who uses a category, what goes left out, and so streams that can only be reached through the
    /// category itself. Nothing when it cannot be told.
    std::optional<std::vector<ResourceUser>> usersOf(const ResourceCategory& category);

    /// Where an object lists another among resources: its own, those of a resource dictionary that
    /// it is, or in itself where it is a category's dictionary. As things are when it is first
    /// asked about.
    std::vector<ResourceListing> listings(int object, int listed);

    /// Whether an entry tells anything of the pages that use it: all but the fonts that every
    /// reader has, the names of colour spaces, and what is nothing but settings.
    static bool holdsContent(const std::string& category, QPDFObjectHandle entry);

    /// Whether it may be something that is drawn: fonts and graphics states may, with glyphs that
    /// are drawn and with soft masks.
    static bool isDrawn(const std::string& category, QPDFObjectHandle entry);

    /// Appearances of a page's annotations that have no resources and so use the page's.
    QPDFObjectHandle appearancesOn(QPDFObjectHandle page);

private:
    class Climb;

    bool mayBeShared(int object) { return !dependents_.goes(object); }
    bool mayLeadToStream(int object);

    /// The objects that an object lists.
    struct Lists {
        struct Entry {
            int object;
            std::size_t category; // of categories
            std::string name;
            bool operator<(const Entry& other) const { return object < other.object; }
        };
        std::vector<ResourceCategory> categories;
        std::vector<Entry> entries; // by object
        void add(const ResourceCategory& category);
    };
    const Lists& listsIn(int object);
    std::set<const char*> categoriesOf(int object);
    bool matters(const ResourceCategory& category);
    int placeOfInherited(const PageEntry& page, const QPDFObjectHandle& resources);
    const std::vector<int>& inheritingFrom(int place);

    Removal& removal_;
    const Dependents& dependents_;
    std::map<std::pair<int, std::string>, bool> matters_;
    std::unordered_map<std::uint32_t, int> inheritedPlaces_; // by set of inherited attributes
    std::vector<QPDFObjectHandle> unowned_;                  // resources whose places are below 0
    std::map<int, std::vector<int>> inheriting_;             // numbers of remaining pages by place
    bool knowsInheriting_ = false;
    std::unordered_map<int, Lists> lists_; // by object
};

} // namespace karvel::deletion
