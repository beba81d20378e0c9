#pragma once

class QObject;
class QWidget;

/// Where in the host a window is shown, which decides its look.
struct HostSetting {
    bool insideMainWindow = false;
    QWidget* previewHost = nullptr; ///< the preview widget that it is inside of, or null
};

/// Looks for the host's main window ("VantoraClass") and preview widget ("VantoraPreviewClass")
/// from `start`, which may be null, up its parents, and stops at the first of either.
HostSetting FindHostSetting(QObject* start);
