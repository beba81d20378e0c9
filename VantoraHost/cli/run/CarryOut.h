#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/gui_part/GuiPart.h"
#include "VantoraHost/cli/run/RunOptions.h"
#include "VantoraHost/core/Inputs.h"
#include "VantoraHost/core/Installation.h"
#include "VantoraHost/core/actions/Sequence.h"
#include "VantoraHost/core/documents/Batch.h"
#include "VantoraHost/core/reports/RunIdentity.h"
#include "VantoraHost/core/workers/EarlyWorkers.h"

#include <memory>
#include <vector>

/// What carrying steps out takes, whoever names the documents and keeps count of them.
namespace vantora::cli {

/// The steps that the options ask for.
struct RunSteps {
    std::vector<StepRequest> requested; ///< as workers are told them
    Sequence sequence;
};

/// Finds the actions. The error is that they aren't there, or can't do what the options say;
/// `guiPart` is asked only for saved steps.
Result<RunSteps> stepsOfRun(const RunOptions& options, const Installation& installation,
                            const GuiPartSource& guiPart);

/// What reports tell of a run of these steps that begins now. Takes longer the longer the options of
/// the steps are.
RunIdentity identityOf(const RunOptions& options, const Sequence& sequence);

/// What holds for every document, but for passwords and standard input.
JobSettings settingsOf(const RunOptions& options);

/// Says what a person who gave the options may not expect of these steps.
void sayWhatStepsMean(const RunOptions& options, const Sequence& sequence, const Streams& streams);

/// What carrying steps out works with.
struct RunMeans {
    const Installation& installation;
    const GuiPartSource& guiPart;
    const Streams& streams;
    EarlyWorkers* early = nullptr; ///< of earlyWorkers, for this batch
};

/// Workers for a run over these inputs that is still to be planned; null where it is to have none
/// or had better wait with them. The steps must outlive them.
std::unique_ptr<EarlyWorkers> earlyWorkers(RunSteps& steps, const std::vector<Input>& inputs,
                                           const RunOptions& options, const RunMeans& means);

/// Does the documents of a batch, in worker processes unless the options want none. The error is
/// that nothing could be begun; no document was touched then.
Result<BatchResult> carryOut(RunSteps& steps, Batch& batch, const RunOptions& options,
                             const RunMeans& means, RunObserver& observer);

} // namespace vantora::cli
