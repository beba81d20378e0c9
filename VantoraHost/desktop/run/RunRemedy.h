#pragma once

#include "VantoraHost/core/Error.h"

#include <QtCore/QString>

namespace vantora::desktop {

/// What a person can do about a failure in these windows; empty when the error's sentence says it
/// all.
QString remedyOf(Reason reason);

/// An error for people: its sentence and what can be done, as "sentence; remedy".
QString explained(const Error& error);

} // namespace vantora::desktop
