#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"

namespace karvel::deletion {

/// What a document uses: what can be reached from its trailer by other ways than through lists of
/// things that it merely has, which are optional content groups (the catalog's /OCProperties) and
/// captured web content (/IDS and /URLS in the catalog's /Names). What was used before a removal
/// and is not used afterwards goes from those lists.
class Usage {
public:
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

private:
    NumberSet reached(bool withGone);

    Removal& removal_;
    bool hasLists_ = false;
    NumberSet before_;
    NumberSet now_;
};

} // namespace karvel::deletion
