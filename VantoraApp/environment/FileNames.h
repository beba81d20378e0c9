#pragma once

#include "VantoraApp/binding/Shared.h"

#include <QtCore/QString>

#include <functional>

/// The name itself when it is not taken, else the first copy name that isn't: with " (1)", " (2)",
/// … before its last dot, or at its end when it has none. `first` is the number to begin with.
VANTORA_SHARED QString FirstFreeCopyName(const QString& name,
                                         const std::function<bool(const QString&)>& isTaken,
                                         qint64 first = 1);
