#pragma once

#include "VantoraApp/binding/Shared.h"

#include <QtCore/QString>

/// Why a name that a user typed can't be that of a file in a folder, as a sentence for the user;
/// empty when it can. `suffix` is what the file's name has after the typed one, `folder` need not
/// exist. Such a name would lead out of the folder or could not be found again.
VANTORA_SHARED QString ReasonAgainstName(const QString& name, const QString& folder,
                                         const QString& suffix);

/// The same for an action list and for a favourite, in their folders.
VANTORA_SHARED QString ReasonAgainstActionListName(const QString& name);
VANTORA_SHARED QString ReasonAgainstFavouriteName(const QString& name);

/// The files of an action list and of a favourite of that name.
VANTORA_SHARED QString ActionListPath(const QString& name);
VANTORA_SHARED QString FavouritePath(const QString& name);
