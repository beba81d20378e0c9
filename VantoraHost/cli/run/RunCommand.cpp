#include "VantoraHost/cli/run/RunCommand.h"

#include "VantoraHost/cli/certificates/Certifier.h"
#include "VantoraHost/cli/console/InputFiles.h"
#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/cli/run/CarryOut.h"
#include "VantoraHost/cli/run/RunInputs.h"
#include "VantoraHost/cli/run/RunRecords.h"
#include "VantoraHost/cli/run/RunReporter.h"
#include "VantoraHost/core/FileIdentity.h"

#include <algorithm>
#include <ostream>
#include <tuple>

namespace vantora::cli {

namespace {

bool isBefore(const timespec& one, const timespec& other)
{
    return std::tie(one.tv_sec, one.tv_nsec) < std::tie(other.tv_sec, other.tv_nsec);
}

// An input that was put in the place of another may bring an older time of its content along; the
// time at which it came there it can't.
bool isNoOlder(const std::string& output, const std::string& input)
{
    struct stat made = {};
    struct stat given = {};
    return ::stat(output.c_str(), &made) == 0 && ::stat(input.c_str(), &given) == 0 &&
           S_ISREG(made.st_mode) && !isBefore(made.st_mtim, given.st_mtim) &&
           !isBefore(made.st_mtim, given.st_ctim);
}

// Leaves those inputs alone whose outputs are there already; returns how many.
Result<std::size_t> leaveOutDone(const RunOptions& options, std::vector<Input>& inputs)
{
    std::size_t done = 0;
    if (!options.skipExisting) {
        return done;
    }
    const auto wanted = planOutputs(inputs, *options.destination, TakenName::Replace);
    if (!wanted) {
        return tl::unexpected<Error>(wanted.error());
    }
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const Result<Target>& target = (*wanted)[i];
        if (!inputs[i].leftAlone && target && isNoOlder(target->path, inputs[i].path)) {
            inputs[i].leftAlone = true;
            ++done;
        }
    }
    return done;
}

// Whether anything tells of the run or is compared with it.
bool hasReports(const RunOptions& options)
{
    return options.json || !options.reportPath.empty() || !options.resumed.empty();
}

std::vector<std::string> reportsOf(const RunOptions& options)
{
    std::vector<std::string> reports = options.resumed;
    if (!options.reportPath.empty()) {
        reports.push_back(options.reportPath);
    }
    return reports;
}

/// A run, and the places of the certificates of its inputs where any are asked for.
struct Prepared {
    Batch batch;
    std::vector<Result<Target>> certificates;
};

// Files of the run's own are no inputs and no outputs.
Outcome keepOwnFilesApart(const RunOptions& options, const std::vector<Input>& inputs,
                          const std::vector<Result<Target>>& targets)
{
    std::vector<std::string> own = reportsOf(options);
    if (!options.checksumsPath.empty()) {
        own.push_back(options.checksumsPath);
    }
    for (const std::string& file : own) {
        if (const Outcome apart = keepsApart(file, inputs, targets); !apart) {
            return apart;
        }
    }
    return {};
}

// Everything that a run needs beside its steps. Takes the names out of the inputs.
Result<Prepared> prepare(const RunOptions& options, std::vector<Input>& inputs,
                         const Streams& streams)
{
    Prepared prepared;
    Batch& batch = prepared.batch;
    auto targets = options.destination
                       ? planOutputs(inputs, *options.destination, options.taken)
                       : std::vector<Result<Target>>(inputs.size());
    if (!targets) {
        return tl::unexpected<Error>(std::move(targets.error()));
    }
    auto certificates = planCertificates(options, inputs, *targets);
    if (!certificates) {
        return tl::unexpected<Error>(std::move(certificates.error()));
    }
    for (const auto* places : {&*targets, &*certificates}) {
        const Outcome apart =
            places->empty() ? Outcome() : keepOwnFilesApart(options, inputs, *places);
        if (!apart) {
            return tl::unexpected<Error>(apart.error());
        }
    }
    bool readsStandardInput = false;
    const auto documents = static_cast<std::size_t>(std::count_if(
        inputs.begin(), inputs.end(), [](const Input& one) { return !one.leftAlone; }));
    batch.inputs.reserve(documents);
    batch.targets.reserve(documents);
    batch.ranges.reserve(documents);
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        if (!inputs[i].leftAlone) {
            readsStandardInput = readsStandardInput || inputs[i].path == standardStream;
            batch.inputs.push_back(std::move(inputs[i].path));
            Result<Target>& target = batch.targets.emplace_back(std::move((*targets)[i]));
            if (!certificates->empty()) {
                Result<Target>& certificate = (*certificates)[i];
                if (target && !certificate) {
                    target = tl::unexpected<Error>(certificate.error());
                }
                prepared.certificates.push_back(std::move(certificate));
            }
            batch.ranges.push_back(std::move(inputs[i].range));
        }
    }
    batch.settings = settingsOf(options);
    auto passwords = readPasswords(options.passwordFile);
    if (!passwords) {
        return tl::unexpected<Error>(std::move(passwords.error()));
    }
    batch.settings.passwords = std::move(*passwords);
    if (readsStandardInput) {
        auto input = readStandardInput(streams);
        if (!input) {
            return tl::unexpected<Error>(std::move(input.error()));
        }
        batch.settings.standardInput = std::move(*input);
        batch.settings.standardInputMode = modeOfStream(streams.in);
    }
    batch.settings.cancelled = streams.interrupted;
    batch.settings.standardOutput = [&streams](std::string_view bytes) {
        streams.out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
        return streams.out.good();
    };
    return prepared;
}

// The file that --report names; going on with one of --resume adds to it.
Result<std::optional<RunReport>> openReport(const RunOptions& options)
{
    std::optional<RunReport> report;
    if (!options.reportPath.empty()) {
        const bool goesOn = std::any_of(
            options.resumed.begin(), options.resumed.end(),
            [&](const std::string& resumed) { return isSameFile(resumed, options.reportPath); });
        auto opened = ReportFile::open(options.reportPath, goesOn ? ExistingReport::Continue
                                                           : options.taken == TakenName::Replace
                                                               ? ExistingReport::Replace
                                                               : ExistingReport::Refuse);
        if (!opened) {
            return tl::unexpected<Error>(std::move(opened.error()));
        }
        report.emplace(std::move(*opened));
    }
    return report;
}

// Makes the folders of certificates, too, and begins the file of checksums.
Result<RunRecords> openRecords(const RunOptions& options, const Installation& installation,
                               Prepared& prepared)
{
    std::optional<ChecksumFile> checksums;
    if (!options.checksumsPath.empty()) {
        auto opened = ChecksumFile::create(
            options.checksumsPath,
            options.taken == TakenName::Replace ? ExistingText::Replace : ExistingText::Refuse);
        if (!opened) {
            return tl::unexpected<Error>(std::move(opened.error()));
        }
        checksums.emplace(std::move(*opened));
    }
    if (options.certificates) {
        makeFolders(prepared.batch.inputs, prepared.certificates);
        removeAbandonedFiles(prepared.certificates);
    }
    return RunRecords({installation.program, commandText(options.arguments)},
                      std::move(prepared.certificates), prepared.batch.inputs,
                      std::move(checksums));
}

// What changed since the reports: "2 inputs changed, 1 output gone".
std::string changesText(const std::map<SinceReport, std::size_t>& changed, const Language& language)
{
    const auto said = [&](SinceReport since, std::size_t count) -> std::string {
        switch (since) {
        case SinceReport::OtherOutput:
            return language.counted(count, "other output", "other outputs");
        case SinceReport::OutputGone:
            return language.counted(count, "output gone", "outputs gone");
        case SinceReport::OutputChanged:
            return language.counted(count, "output changed", "outputs changed");
        case SinceReport::InputChanged:
            return language.counted(count, "input changed", "inputs changed");
        case SinceReport::OtherSteps:
            return language.text("%1 by other steps", {language.number(count)});
        case SinceReport::OtherVersion:
            return language.text("%1 by another version", {language.number(count)});
        case SinceReport::NotDone:
        case SinceReport::Same:
            break;
        }
        return {};
    };
    std::string text;
    for (const auto& [since, count] : changed) {
        text += (text.empty() ? "" : ", ") + said(since, count);
    }
    return text;
}

void sayWhatIsLeftAlone(const RunOptions& options, const RunInputs& inputs, const Streams& streams)
{
    if (options.quiet) {
        return;
    }
    const Language& language = streams.language;
    const auto number = [&](std::size_t count) { return language.number(count); };
    if (inputs.outputs > 0) {
        printNote(
            streams,
            language.text("%1 of %2 files are outputs of such a run, and so no inputs",
                          {number(inputs.outputs), number(inputs.all.size() + inputs.outputs)}));
    }
    const std::size_t meant = inputs.all.size() - inputs.notNamed;
    if (inputs.elsewhere > 0) {
        printNote(streams, language.text("%1 of %2 documents are in share %3 of %4",
                                         {number(meant - inputs.elsewhere), number(meant),
                                          std::to_string(options.share.number),
                                          std::to_string(options.share.count)}));
    }
    if (inputs.doneBefore > 0) {
        printNote(streams,
                  language.text("%1 of %2 documents are done by the report, and left as they are",
                                {number(inputs.doneBefore), number(meant - inputs.elsewhere)}));
    }
    std::size_t changed = 0;
    for (const auto& [since, count] : inputs.changed) {
        changed += count;
    }
    if (changed > 0) {
        printNote(streams,
                  language.counted(changed,
                                   "document has changed since the report, and is to be done again",
                                   "documents have changed since the report, and are to be done "
                                   "again") +
                      ": " + changesText(inputs.changed, language));
    }
    if (inputs.outputThere > 0) {
        printNote(streams,
                  language.counted(inputs.outputThere,
                                   "document has an output no older than itself, and is left as it "
                                   "is",
                                   "documents have outputs no older than themselves, and are left "
                                   "as they are"));
    }
}

// Says how a run ended, and with which status the program is to end.
int statusOf(const BatchResult& result, RunReporter& reporter, const Streams& streams)
{
    const Outcome reported = reporter.finish(result.interrupted);
    for (const auto& ending :
         {result.ending, reported ? std::nullopt : std::optional<Error>(reported.error())}) {
        if (ending) {
            printError(streams, *ending);
        }
    }
    if (result.interrupted) {
        return InterruptedByUser;
    }
    if (reporter.someFailed() || result.ending || !reported) {
        return SomeFailed;
    }
    return reporter.someLost() ? DoneWithLosses : AllDone;
}

} // namespace

int run(const RunOptions& options, const Installation& installation, const GuiPartSource& guiPart,
        const Streams& streams)
{
    if (streams.outIsTerminal && writesDocumentToOutput(options)) {
        return failedWith(streams, options.json,
                          {Reason::OutputNotAFile, {}, "a PDF is not for a terminal"});
    }
    Result<RunSteps> steps = stepsOfRun(options, installation, guiPart);
    if (!steps) {
        return failedWith(streams, options.json, steps.error());
    }
    const RunIdentity identity =
        hasReports(options) ? identityOf(options, steps->sequence) : RunIdentity();
    Result<RunInputs> inputs = inputsOf(options, identity, streams);
    if (!inputs) {
        return failedWith(streams, options.json, inputs.error());
    }
    RunMeans means = {installation, guiPart, streams};
    const auto early = earlyWorkers(*steps, inputs->all, options, means);
    means.early = early.get();
    const Result<std::size_t> done = leaveOutDone(options, inputs->all);
    if (!done) {
        return failedWith(streams, options.json, done.error());
    }
    inputs->outputThere = *done;
    Result<Prepared> prepared = prepare(options, inputs->all, streams);
    if (!prepared) {
        return failedWith(streams, options.json, prepared.error());
    }
    Batch* const batch = &prepared->batch;
    auto report = openReport(options);
    if (!report) {
        return failedWith(streams, options.json, report.error());
    }
    auto records = openRecords(options, installation, *prepared);
    if (!records) {
        return failedWith(streams, options.json, records.error());
    }
    sayWhatStepsMean(options, steps->sequence, streams);
    sayWhatIsLeftAlone(options, *inputs, streams);
    if (!options.dryRun) {
        makeFolders(batch->inputs, batch->targets);
        removeAbandonedFiles(batch->targets);
    }
    RunReporter reporter(options, batch->inputs.size(),
                         {identity, std::move(*report), inputs->notNamed}, *records, streams);
    const Result<BatchResult> result = carryOut(*steps, *batch, options, means, reporter);
    if (!result) {
        return failedWith(streams, options.json, result.error());
    }
    return statusOf(*result, reporter, streams);
}

} // namespace vantora::cli
