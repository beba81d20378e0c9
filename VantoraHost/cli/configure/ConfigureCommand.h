#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/core/Installation.h"
#include "VantoraHost/core/actions/Sequence.h"

namespace vantora::cli {

/// The window of the host that an options dialog is shown inside of.
enum class DialogPlace { Alone, MainWindow, Preview };

/// What the command line says about showing an options dialog.
struct ConfigureOptions {
    StepRequest step; ///< the options that the dialog starts from
    bool hideAddToActionList = false;
    DialogPlace place = DialogPlace::Alone;
};

/// Opens an action's options dialog and prints what was accepted; returns the exit status. Makes
/// the application when there is none.
int configure(const ConfigureOptions& options, const Installation& installation,
              const Streams& streams);

} // namespace vantora::cli
