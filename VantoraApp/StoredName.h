#pragma once

#include <QtCore/QString>

/// Why a name that a user typed can't be that of a file in a folder, as a sentence for the user;
/// empty when it can. `suffix` is what the file's name has after the typed one, `folder` need not
/// exist. Such a name would lead out of the folder or could not be found again.
QString ReasonAgainstName(const QString& name, const QString& folder, const QString& suffix);

/// The same for an action list and for a favourite, in their folders.
QString ReasonAgainstActionListName(const QString& name);
QString ReasonAgainstFavouriteName(const QString& name);

/// The files of an action list and of a favourite of that name.
QString ActionListPath(const QString& name);
QString FavouritePath(const QString& name);
