#pragma once

#include "VantoraApp/binding/Shared.h"
#include "VantoraApp/interface/ActionInterface.h"

#include <string_view>

/// The file of the module with an action's dialog, which vantora_action() puts into the plug-in.
std::string_view EmbeddedDialog();

/// What that module exports: ShowDialogProc() of an action with that icon string.
extern "C" VANTORA_SHARED int ShowOptionsDialog(QWidget* parent, DialogLoadStruct* load,
                                                const QString& icons);
