#pragma once

#include "VantoraHost/core/workers/WorkerSide.h"

namespace vantora::cli {

/// What a process does that draws certificates: takes orders and answers each, until they end.
/// It needs no display. Before it reads the first one it gives up all but reading the system's
/// libraries and fonts. Returns false when there was nothing that it could do.
bool drawCertificates(const WorkerChannel& channel);

} // namespace vantora::cli
