#pragma once

#include "VantoraApp/binding/Shared.h"

/// Keeps off the terminal what Qt says about the dialogs' style sheets, which name colours without
/// the alpha value that they announce and an image "none.png" that stands for no image. All other
/// messages go on to the handler of before. For programs, once at their start; not for plug-ins,
/// which may be unloaded before the program ends.
VANTORA_SHARED void DropStyleSheetMessages();
