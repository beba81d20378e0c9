#include "VantoraApp/errors/ErrorLog.h"

void StoreErrorToLog(const char* /*report*/) {}

void AddToDebugFile(const char* /*format*/, ...) {}
