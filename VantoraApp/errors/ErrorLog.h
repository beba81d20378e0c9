#pragma once

#include "VantoraApp/binding/Shared.h"

/// Takes an exception report and writes nothing: a build with a persistent log replaces it.
VANTORA_SHARED void StoreErrorToLog(const char* report);

/// Takes a printf-style debug text and writes nothing, likewise.
VANTORA_SHARED void AddToDebugFile(const char* format, ...);
