#pragma once

#include "VantoraHost/core/documents/Batch.h"
#include "VantoraHost/core/workers/CrewMember.h"

#include <cstddef>
#include <vector>

namespace vantora {

/// Puts in order what a worker that is gone left in the folders of the documents it was at: its
/// temporary files go, backups are settled, and the disk is told the names. Returns the documents
/// among its written ones whose outputs have got their names.
std::vector<std::size_t> settleOutputsOf(const CrewMember& member, const Batch& batch);

} // namespace vantora
