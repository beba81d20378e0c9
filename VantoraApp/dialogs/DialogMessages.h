#pragma once

#include "VantoraApp/binding/Shared.h"

/// Keeps off the terminal what Qt says about things that the dialogs do on purpose: style sheets
/// that name colours without the alpha value that they announce and an image "none.png" that stands
/// for no image, and slots for maximising, which only some windows have; and about a folder for the
/// session, which Qt does without. All other messages go on to the handler of before. For programs,
/// once at their start; not for plug-ins, which may be unloaded before the program ends.
VANTORA_SHARED void DropDialogMessages();
