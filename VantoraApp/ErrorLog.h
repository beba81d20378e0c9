#pragma once

/// Takes an exception report and writes nothing: a build with a persistent log replaces it.
void StoreErrorToLog(const char* report);

/// Takes a printf-style debug text and writes nothing, likewise.
void AddToDebugFile(const char* format, ...);
