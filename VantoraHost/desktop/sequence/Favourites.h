#pragma once

#include "VantoraHost/desktop/sequence/InstalledActions.h"

#include <QtGui/QIcon>

#include <vector>

namespace vantora::desktop {

/// Options of an action that somebody saved under a name.
struct Favourite {
    std::string name; ///< as bytes of the file system
    StepRequest step;
    QIcon icon; ///< the one that was saved with it, or else the action's
};

/// The favourites of an action, the newest first; of the same time, by their names. Those that
/// can't be used are left out.
std::vector<Favourite> favouritesOf(const InstalledAction& action,
                                    const std::vector<InstalledAction>& actions);

/// The picture in a favourite's file; null where there is none.
QIcon favouritePicture(const std::string& file);

/// The place of the one that comes `distance` after the one of this name, towards older ones; where
/// none has the name, the newest comes first. -1 when there is none.
int favouriteBeside(const std::vector<Favourite>& favourites, const std::string& name,
                    int distance);

} // namespace vantora::desktop
