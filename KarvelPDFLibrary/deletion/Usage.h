#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"

namespace karvel::deletion {

/// What a document uses: what can be reached from its trailer by other ways than through lists of
/// things that it merely has, which are optional content groups (the catalog's /OCProperties), and
/// in the catalog's /Names captured web content (/IDS, /URLS), media (/Renditions), attachments
/// (/EmbeddedFiles) and appearances for scripts (/AP). What was used before a removal and is not
/// used afterwards goes from those lists; what nothing else ever used stays.
class Usage {
public:
    /// The lists in /Names of things that may be used without standing on a page.
    static constexpr const char* named[] = {"/Renditions", "/EmbeddedFiles", "/AP"};

    /// Finds out what is used before the removal, when there are such lists; to be made first.
    explicit Usage(Removal& removal);

    /// Finds out what is used without what is gone.
    void look();

    /// Whether an object was used before and is not any more.
    bool ended(const QPDFObjectHandle& object) const
    {
        const int number = object.getObjectID();
        return before_.has(number) && !now_.has(number);
    }

    /// The same for what a list of `named` has: also true of a dictionary that names files, all of
    /// which were used before and are not any more.
    bool endedNamed(QPDFObjectHandle value) const;

private:
    class Walk;

    void reachFromCatalog(Walk& walk);
    void reachFromNamed(Walk& walk);

    Removal& removal_;
    bool hasLists_ = false;
    std::vector<QPDFObjectHandle> namedThings_;
    NumberSet before_;
    NumberSet now_;
};

} // namespace karvel::deletion
