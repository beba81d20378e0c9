#include "VantoraHost/cli/run/RunInputs.h"

#include "VantoraHost/cli/console/InputFiles.h"
#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/core/Target.h"
#include "VantoraHost/core/choices/InputRanges.h"

#include <algorithm>
#include <string>
#include <unordered_set>

namespace vantora::cli {

namespace {

// The folder of the outputs, which a search is not to go into.
std::string outputFolder(const RunOptions& options)
{
    const auto* folder =
        options.destination ? std::get_if<ToFolder>(&*options.destination) : nullptr;
    return folder ? folder->path : "";
}

// The reports to go on with. The one that this run writes need not be there yet, so that a command
// that names it twice serves the first time as well as every other.
std::vector<std::string> reportsToRead(const RunOptions& options)
{
    std::vector<std::string> reports;
    for (const std::string& path : options.resumed) {
        if (path != options.reportPath || identityOf(path)) {
            reports.push_back(path);
        }
    }
    return reports;
}

// Where outputs lie beside their inputs, a run that is given again finds them, and would change
// them once more: what a report names as output, and what this run would call the output of another
// input.
std::size_t leaveOutOutputs(std::vector<Input>& inputs, const EarlierReports& earlier,
                            const RunOptions& options)
{
    std::unordered_set<std::string> outputs;
    const auto* folder =
        options.destination ? std::get_if<ToFolder>(&*options.destination) : nullptr;
    if (folder && folder->name) {
        const PlannedNames names(inputs, *options.destination);
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            std::string output = normalPath(names.of(i));
            if (output != normalPath(inputs[i].path)) {
                outputs.insert(std::move(output));
            }
        }
    }
    const auto isOutput = [&](const Input& input) {
        const std::string path = normalPath(input.path);
        return outputs.count(path) != 0 || earlier.namesOutput(path);
    };
    const auto end = std::remove_if(inputs.begin(), inputs.end(), isOutput);
    const auto count = static_cast<std::size_t>(inputs.end() - end);
    inputs.erase(end, inputs.end());
    return count;
}

// Which inputs this run leaves alone: those of other shares, and those that the reports say are
// done, as this run would do them.
Outcome leaveAlone(RunInputs& inputs, const EarlierReports& earlier, const RunOptions& options,
                   const Streams& streams)
{
    // A dry run without a destination would write nothing: there any output will do.
    const auto isPlanned = [&](std::size_t i, const std::string& output) {
        return !options.destination ||
               mayBeNamed(output, PlannedNames(inputs.all, *options.destination).of(i),
                          options.taken);
    };
    for (std::size_t i = 0; i < inputs.all.size(); ++i) {
        Input& input = inputs.all[i];
        if (!options.rangesPath.empty() && !input.range) {
            input.leftAlone = true;
            ++inputs.notNamed;
            continue;
        }
        if (!options.share.holds(input.path)) {
            input.leftAlone = true;
            ++inputs.elsewhere;
            continue;
        }
        if (earlier.hasHashes() && streams.interrupted()) {
            return fail(Reason::Interrupted, {}, "interrupted");
        }
        const SinceReport since = earlier.since(
            input.path, [&](const std::string& output) { return isPlanned(i, output); });
        if (since == SinceReport::OtherSteps && earlier.wasInPlace(input.path)) {
            return fail(Reason::StepsDiffer, input.path,
                        "is changed already, in place and by other steps than these");
        }
        if (since == SinceReport::Same) {
            input.leftAlone = true;
            ++inputs.doneBefore;
        } else if (since != SinceReport::NotDone) {
            ++inputs.changed[since];
        }
    }
    return {};
}

} // namespace

namespace {

// All that the options name, with their ranges where there is a list of these.
Result<std::vector<Input>> documentsNamed(const RunOptions& options, const Streams& streams)
{
    const bool namesSome = !options.inputs.names.empty() || !options.inputs.filesFrom.empty();
    auto named = namesSome
                     ? inputsNamed(options.inputs, outputFolder(options), options.quiet, streams)
                     : std::vector<Input>();
    if (!named || options.rangesPath.empty()) {
        return named;
    }
    const auto list = options.rangesPath == standardStream
                          ? readRangesList(streams.in, streams.interrupted)
                          : readRangesList(options.rangesPath, streams.interrupted);
    if (!list) {
        return tl::unexpected<Error>(list.error());
    }
    if (!namesSome) {
        return list->ranges.empty()
                   ? fail(Reason::InputMissing, list->file, "the list of ranges names no document")
                   : vantora::inputsOf(*list);
    }
    return assignRanges(*list, *named).map([&] { return std::move(*named); });
}

} // namespace

Result<RunInputs> inputsOf(const RunOptions& options, const RunIdentity& run,
                           const Streams& streams)
{
    RunInputs inputs;
    auto named = documentsNamed(options, streams);
    if (!named) {
        return tl::unexpected<Error>(std::move(named.error()));
    }
    inputs.all = std::move(*named);
    const Result<EarlierReports> earlier =
        EarlierReports::read(reportsToRead(options), inputs.all, run);
    if (!earlier) {
        return tl::unexpected<Error>(earlier.error());
    }
    inputs.outputs = leaveOutOutputs(inputs.all, *earlier, options);
    if (const Outcome done = leaveAlone(inputs, *earlier, options, streams); !done) {
        return tl::unexpected<Error>(done.error());
    }
    return inputs;
}

} // namespace vantora::cli
