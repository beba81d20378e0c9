#pragma once

#include "VantoraHost/core/workers/WorkerSide.h"

namespace vantora {

/// What a process that makes pictures does: takes its setup, gives up everything but reading that
/// one document, opens it, and answers one task after the other until the orders end. Returns false
/// when there was nothing that it could do.
bool servePictures(const WorkerChannel& channel);

} // namespace vantora
