#pragma once

#include "VantoraApp/binding/Shared.h"

#include <QtCore/QDir>
#include <QtCore/QPointF>
#include <QtCore/QString>
#include <QtGui/QTransform>

/// Operations on the application's surroundings that all actions share. All are static; each
/// section has a source file of its own, which it names.
class VANTORA_SHARED CUtils {
public:
    // The folder tree, below the user's generic data folder and documents folder. The operations
    // only name folders, which need not exist; some of the names have a doubled separator, which
    // counts as one. (environment/FolderTree.cpp)

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

    // The application's name and installation. (environment/ApplicationIdentity.cpp)

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
    // same moment may be given the same name. (environment/TemporaryNames.cpp)

    /// Creates a new folder called `*name`, or `*name` with the first free of the endings _0 to
    /// _99999, and stores its path in `*name`. When it cannot be created, the temporary folder
    /// itself is returned and stored, with a separator at its end.
    static QDir GetNewTempFolder(QString* name);

    /// The path of the first of the files NAME_1.pdf to NAME_9999.pdf that does not exist, empty
    /// when all do. `baseName` is UTF-8; the file is not created.
    static QString GetNewTempFile(char* baseName);

    // Lengths. (geometry/Measures.cpp)

    /// A length in another unit. Units are 0 inch, 1 centimetre, 2 millimetre and 3 point (1/72
    /// inch); the value comes back unchanged when either unit is none of them.
    static double Convert(long fromUnit, double value, long toUnit);

    // Projective mappings of the plane, after P. S. Heckbert, "Fundamentals of Texture Mapping and
    // Image Warping", 1989. A point is the row vector (x, y, 1) to the left of the matrix, as with
    // QTransform::map; coordinates may be in any unit. (geometry/ProjectiveMapping.cpp)

    /// Stores the adjugate of `m` in `out`: the transposed matrix of the cofactors, so that `m`
    /// times `out` is det(m) times the identity and `out` maps back what `m` mapped. Returns the
    /// first row of `out` multiplied element by element with the first row of `m`.
    static double mx3d_adjoint(QTransform m, QTransform& out);

    /// Stores in `out` the mapping that takes (0,0), (1,0), (1,1), (0,1) to p0, p1, p2, p3. Returns
    /// 1 when it is affine, 2 when it is projective, and 0 when there is none, with `out`
    /// unchanged.
    static int pmap_square_quad(QPointF p0, QPointF p1, QPointF p2, QPointF p3, QTransform& out);

    /// Stores in `out` the mapping that takes (ua,va), (ub,va), (ub,vb), (ua,vb) to q0, q1, q2, q3.
    /// Returns whether there is one; if not, `out` is unchanged.
    static bool pmap_quad_rect(double ua, double va, double ub, double vb, QPointF q0, QPointF q1,
                               QPointF q2, QPointF q3, QTransform& out);

    // What the display can do. (dialogs/OpenGLSupport.cpp)

    /// Whether dialogs are to have a translucent background. On the user-interface thread only.
    static bool CheckOpenGLSupport();
};
