#pragma once

#include "VantoraApp/binding/Shared.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

class QIcon;

/// The favourites of one action: each is a file in the favourites folder with a copy of the
/// action's options and an icon. The favourites are listed when the object is built; one that is
/// saved later is seen by objects built later.
class VANTORA_SHARED CActionHistoryAPI {
public:
    /// `prefix` is what the names of the action's favourites begin with.
    explicit CActionHistoryAPI(QString prefix);

    /// Writes the favourite that the options call "CollectionName", in the place of any of that
    /// name. The arguments stay the caller's. Returns 0; 1 when it failed by an exception, when the
    /// name can't be that of a file in the folder, with nothing written then, and when the
    /// favourite could not be read back whole, because of an option of a type that files can't
    /// keep, which is then left out, or of its size. That the disk refuses the file is not
    /// reported.
    int SaveSettingsToHistory(QMap<QString, QVariant>* prefs, QIcon* icon);

    /// Moves by `step` in the list that begins with the newest favourite, 1 to the next older and
    /// -1 to the next newer one, and returns the options of the favourite there, which the caller
    /// owns. The first step of 1 leads to the newest. Null when there is none at that place, and
    /// when its file has no options; what can't be read in them is left out.
    QMap<QString, QVariant>* LoadSettingsFromHistory(int step);

private:
    QString prefix_;
    QList<QFileInfo> files_; ///< from the oldest to the newest
    QDir folder_;
    int cursor_ = -1;
};
