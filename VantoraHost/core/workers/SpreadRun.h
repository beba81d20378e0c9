#pragma once

#include "VantoraHost/core/workers/WorkerPool.h"

namespace vantora {

/// Runs a batch in worker processes so that every action sees one run: it is told once that the run
/// begins, before any document, and once that it is over, after all of them.
/// Where documents are independent of each other, this process tells the actions, which outlives
/// every worker and has no document open; workers only process. Else one worker does all of it, in
/// the order of the inputs, and the run ends with that worker, whatever is left: documents that it
/// did not reach are reported as such.
/// `sequence` is what the workers' setup asks for. The error is that the run could not begin; no
/// document was touched then.
Result<BatchResult> spreadRun(Sequence& sequence, const Batch& batch, WorkerSettings settings,
                              RunObserver& observer);

} // namespace vantora
