#pragma once

#include "VantoraHost/core/outputs/OutputPlan.h"

#include <QtCore/QString>

namespace vantora::desktop {

/// Where the results of a run go.
enum class OutputPlace {
    Folder,  ///< into one folder, with the subfolders that the documents were found in
    Beside,  ///< beside each document, under another name
    InPlace, ///< in the place of each document
};

/// What a person chose for a run.
struct RunSettings {
    OutputPlace place = OutputPlace::Folder;
    QString folder;                                         ///< for Folder; absolute
    QString folderName = QStringLiteral("{name}{ext}");     ///< for Folder, as OutputName has it
    QString besideName = QStringLiteral("{name}-cut{ext}"); ///< for Beside
    bool keepsBackup = true;                                ///< for InPlace
    TakenName taken = TakenName::Refuse;
    bool keepsSigned = false; ///< leave signed documents as they are
    bool verifies = false;    ///< write only results that are verified
};

} // namespace vantora::desktop
