#pragma once

#include <QtCore/QDir>
#include <QtCore/QString>

/// Operations on the application's surroundings that all actions share. All are static; each
/// section has a source file of its own.
class CUtils {
public:
    // The folder tree, below the user's generic data folder and documents folder. The operations
    // only name folders, which need not exist; some of the names have a doubled separator, which
    // counts as one. (FolderTree.cpp)

    /// The user's generic data folder, without a separator at its end.
    static QString GetAppDataFolder();

    /// The folder that holds the tree, with a separator at its end.
    static QString GetAppDataToolsFolder();

    /// The folder of the action lists.
    static QString GetSequenceFolder();

    static QString GetWFFolder();

    /// The folder of the action reports.
    static QString GetReportsFolder();

    static QString GetAppLogFolder();
    static QString GetSettingsFolder();

    /// The folder of the favourites.
    static QString GetCollectionsFolder();

    static QString GetAdvSplitTemplatesFolder();

    /// The folder of the actions, relative to the working directory.
    static QString GetActionFolder();

    /// Creates the folders of the tree that are missing, one level each; one that cannot be created
    /// is left out silently. Existing folders are not touched.
    static void SetupFolders();

    // The application's name and installation. (ApplicationIdentity.cpp)

    static void SetAppName(QString name);

    /// The name that was set, "Tollera" when none or an empty one was.
    static QString GetAppName();

    /// Reads from the system's settings into `mInstalationTypeCurrentUser` for whom the application
    /// was installed.
    static void GetInstalationType();

    /// The name set by SetAppName.
    static QString mApplicationName;

    /// Whether the application was installed for the current user only.
    static bool mInstalationTypeCurrentUser;

    // Names in the system's folder for temporary files. Nothing is reserved: two callers at the
    // same moment may be given the same name. (TemporaryNames.cpp)

    /// Creates a new folder called `*name`, or `*name` with the first free of the endings _0 to
    /// _99999, and stores its path in `*name`. When it cannot be created, the temporary folder
    /// itself is returned and stored, with a separator at its end.
    static QDir GetNewTempFolder(QString* name);

    /// The path of the first of the files NAME_1.pdf to NAME_9999.pdf that does not exist, empty
    /// when all do. `baseName` is UTF-8; the file is not created.
    static QString GetNewTempFile(char* baseName);

    // Lengths. (Measures.cpp)

    /// A length in another unit. Units are 0 inch, 1 centimetre, 2 millimetre and 3 point (1/72
    /// inch); the value comes back unchanged when either unit is none of them.
    static double Convert(long fromUnit, double value, long toUnit);
};
