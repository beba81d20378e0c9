#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/PageLoss.h"
#include "VantoraHost/core/reports/VerifiedOutput.h"
#include "VantoraHost/verification/Verification.h"

#include <optional>
#include <string>
#include <vector>

namespace vantora {

/// The verifier in a module (JobSettings::verifier); null for an empty name. Where a process is to
/// be confined, that comes after this.
Result<const verification::Verifier*> verifierIn(const std::string& module);

/// Judges an output: what was looked for, or why it does not pass. The question is without pages;
/// these are the pages that were to go, and what damage made unreadable of the others, after which
/// there are `pagesAfter`. An output that can't be judged does not pass.
Result<VerifiedOutput> verifyOutput(const verification::Verifier& verifier,
                                    verification::Question question,
                                    const std::optional<std::vector<int>>& pagesRemoved,
                                    const std::vector<PageLoss>& losses, int pagesAfter);

} // namespace vantora
