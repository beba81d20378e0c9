#include "VantoraHost/cli/run/RunArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"
#include "VantoraHost/cli/configuration/ConfigurationArguments.h"
#include "VantoraHost/core/NearestName.h"

#include <algorithm>
#include <optional>

namespace vantora::cli {

namespace {

constexpr char runExamples[] = R"(Examples:
  Remove pages 2 and 4 to 6, into a new file:
    vantora run --pages 2,4-6 report.pdf -o short.pdf
  See first which pages would go:
    vantora run --pages 2,4-6 --dry-run report.pdf
  Remove the first page of many files, into another folder:
    vantora run --pages 1 scans/*.pdf -d cut
  Remove it in the files themselves, the originals kept as NAME.pdf.bak:
    vantora run --pages 1 --in-place --backup scans/*.pdf
  Remove the last two pages of each file, and those that only say that they are blank:
    vantora run --choose last:2 --choose "text:intentionally left blank" *.pdf -d cut
  See such pages first, with pictures, and rescue some (vantora pages --help lists all choices):
    vantora pages --choose last:2 *.pdf --sheet look.html >ranges.tsv
    vantora run --ranges ranges.tsv -d cut
  In a pipe:
    vantora run --pages 1 - -o - <report.pdf >short.pdf
  A whole folder; given again after an interruption, it goes on where it was:
    vantora run --pages 1 -r scans -d cut --report cut.jsonl --resume cut.jsonl
  What was saved from an options dialog:
    vantora run --list "Clean scans" scans/*.pdf -d clean
  As a profile of the configuration says (vantora config --example prints one to begin with):
    vantora run --profile scans *.pdf

Exit status: 0 every document is done, 1 at least one failed (the others are done) for
a reason that --accept-failures does not name, 2 wrong usage, 3 done with losses that
--salvage allowed, 130 interrupted.)";

bool fromStandardInput(const RunArguments& run)
{
    const auto& names = run.inputs.names.names;
    return std::find(names.begin(), names.end(), standardStream) != names.end();
}

std::optional<std::string> rangesMistake(const RunArguments& run)
{
    if (run.rangesOption->count() == 0) {
        return std::nullopt;
    }
    if (run.areGiven()) {
        return "--ranges says what goes of each document; leave out --pages, --choose, --keep, "
               "--except, actions and lists";
    }
    if (run.options.rangesPath.empty()) {
        return "the name of the list of ranges is empty";
    }
    if (run.options.rangesPath == standardStream &&
        (fromStandardInput(run) || run.inputs.names.filesFrom == standardStream)) {
        return "standard input (-) can be read once only";
    }
    return std::nullopt;
}

std::optional<std::string> destinationMistake(const RunArguments& run)
{
    const auto& inputs = run.inputs.names.names;
    const bool toFile = run.outputOption->count() > 0;
    const bool toFolder = run.folderOption->count() > 0;
    const bool listed = run.inputs.filesFromOption->count() > 0;
    const bool several = inputs.size() > 1 || listed || run.inputs.names.recursive;
    if (auto mistake = tellingMistake(run.options)) {
        return mistake;
    }
    const int given = int{toFile} + int{toFolder} + int{run.inPlace};
    if (given > 1) {
        return "-o, -d and --in-place exclude each other";
    }
    if (given == 0 && !run.options.dryRun) {
        return "say where the result goes: -o FILE, -d DIR or --in-place";
    }
    if (toFile && several) {
        return "-o takes the result of one input; for several use -d DIR";
    }
    if ((toFile && run.output.empty()) || (toFolder && run.folder.empty())) {
        return "the name of the output is empty";
    }
    if (fromStandardInput(run) && several) {
        return "standard input (-) can only be the one input";
    }
    if (fromStandardInput(run) && (toFolder || run.inPlace)) {
        return "standard input (-) has no name to write to; use -o FILE";
    }
    if (run.backup && !run.inPlace) {
        return "--backup goes with --in-place";
    }
    if (run.nameOption->count() > 0 && !toFolder) {
        return "--name goes with -d DIR";
    }
    if (run.rename && (run.overwrite || run.inPlace)) {
        return "--rename keeps what exists, and --overwrite and --in-place replace it";
    }
    if (toFile && run.output == standardStream && run.options.json && !run.options.dryRun) {
        return "--json and -o - would both write to standard output";
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> readDestination(RunArguments& run)
{
    run.options.taken = run.overwrite ? TakenName::Replace
                        : run.rename  ? TakenName::Number
                                      : TakenName::Refuse;
    if (run.inPlace) {
        run.options.destination = InPlace{run.backup};
    } else if (run.folderOption->count() > 0) {
        ToFolder folder{run.folder, std::nullopt};
        if (run.nameOption->count() > 0) {
            auto name = OutputName::of(run.name);
            if (!name) {
                return "--name " + run.name + ": the name " + name.error();
            }
            folder.name = std::move(*name);
        }
        run.options.destination = std::move(folder);
    } else if (run.outputOption->count() > 0) {
        run.options.destination = run.output == standardStream ? Destination(ToStandardOutput{})
                                                               : Destination(ToFile{run.output});
    }
    return std::nullopt;
}

namespace {

// What makes a run one of several: its share of the inputs, and reports.
void declareReports(CLI::App& command, RunArguments& run)
{
    run.reportOption = command.add_option(
        "--report", run.options.reportPath,
        "Write a line of JSON to this file for each document as\nit is finished");
    run.reportOption->option_text("FILE");
    command.add_flag("--report-hashes", run.options.reportHashes,
                     "With the SHA-256 of each input in it, which --resume compares");
    run.resumeOption =
        oneEach(command.add_option("--resume", run.options.resumed,
                                   "Leave out what this report says is done, if input,\n"
                                   "steps and output are still the same; may be repeated"),
                "REPORT");
    run.metricsOption =
        command.add_option("--metrics", run.options.metricsPath,
                           "Write the run's figures to this file at its end, as\n"
                           "Prometheus' node exporter reads them (a name in .prom)");
    run.metricsOption->option_text("FILE");
    run.shardOption = command.add_option("--shard", run.shard,
                                         "Do only the Ith of N shares of the inputs, such as 2/8");
    run.shardOption->option_text("I/N");
}

std::optional<std::string> readReports(RunArguments& run)
{
    const std::vector<std::string>& resumed = run.options.resumed;
    if ((run.reportOption->count() > 0 && run.options.reportPath.empty()) ||
        std::find(resumed.begin(), resumed.end(), "") != resumed.end()) {
        return "the name of the report is empty";
    }
    if (run.options.reportHashes && run.reportOption->count() == 0) {
        return "--report-hashes goes with --report FILE";
    }
    if (run.metricsOption->count() > 0 && run.options.metricsPath.empty()) {
        return "the name of the file for figures is empty";
    }
    if (run.shardOption->count() == 0) {
        return std::nullopt;
    }
    const std::size_t slash = run.shard.find('/');
    const auto number = amountOf(run.shard.substr(0, slash), {});
    const auto count =
        slash == std::string::npos ? std::nullopt : amountOf(run.shard.substr(slash + 1), {});
    if (!number || !count || *number < 1 || *number > *count) {
        return "--shard takes a number and how many there are, such as 1/8 to 8/8, not " +
               run.shard;
    }
    run.options.share = {static_cast<std::size_t>(*number), static_cast<std::size_t>(*count)};
    return std::nullopt;
}

// What people keep of a run.
void declareRecords(CLI::App& command, RunArguments& run)
{
    run.certificateOption =
        command.add_option("--certificate", run.certificate,
                           "Verify, and write a certificate of what was removed, a\n"
                           "PDF/A; for several documents under a name as --name has\n"
                           "it, such as {name}-certificate.pdf");
    run.certificateOption->option_text("FILE");
    run.checksumsOption = command.add_option("--checksums", run.options.checksumsPath,
                                             "Write the SHA-256 of the outputs to this file, for\n"
                                             "sha256sum -c");
    run.checksumsOption->option_text("FILE");
}

std::optional<std::string> readRecords(RunArguments& run)
{
    const bool certifies = run.certificateOption->count() > 0;
    if (run.checksumsOption->count() > 0 && run.options.checksumsPath.empty()) {
        return "the name of the file for checksums is empty";
    }
    if (run.options.dryRun && (certifies || !run.options.checksumsPath.empty())) {
        return "--certificate and --checksums are about what is written, and a dry run writes "
               "nothing";
    }
    if (!certifies) {
        return std::nullopt;
    }
    run.options.verify = true;
    const std::size_t slash = run.certificate.rfind('/');
    const std::string last = run.certificate.substr(slash + 1); // npos + 1 is 0
    if (last.empty()) {
        return "the name of the certificate is empty";
    }
    if (last.find_first_of("{}") == std::string::npos) {
        run.options.certificates = ToFile{run.certificate};
        return std::nullopt;
    }
    auto name = OutputName::of(last);
    if (!name) {
        return "--certificate " + run.certificate + ": the name " + name.error();
    }
    const std::string folder = slash == std::string::npos ? "." : run.certificate.substr(0, slash);
    run.options.certificates = ToFolder{folder.empty() ? "/" : folder, std::move(*name)};
    return std::nullopt;
}

// Standard input and output belong to this process.
std::optional<std::string> workersMistake(const RunArguments& run)
{
    const bool throughPipe =
        (run.outputOption->count() > 0 && run.output == standardStream) || fromStandardInput(run);
    if (run.options.workers.areAskedFor() && throughPipe) {
        return "standard input and output (-) are not for worker processes; name files, or leave "
               "out -j, --timeout and --memory-limit";
    }
    return std::nullopt;
}

std::optional<std::string> readWorkerOptions(RunArguments& run)
{
    auto workers = readWorkers(run.workers);
    if (!workers) {
        return std::move(workers.error());
    }
    run.options.workers = *workers;
    return workersMistake(run);
}

} // namespace

void declareJudgement(CLI::App& command, RunArguments& run)
{
    command.add_flag("--keep-signed", run.options.keepSigned,
                     "Refuse signed documents: no signature would hold any more");
    command.add_flag("--strict", run.options.strict,
                     "Refuse documents where not all that was asked for can\n"
                     "be done, such as those that lack pages of the range");
    command.add_flag("--verify", run.options.verify,
                     "Write an output only when it is verified that removed\n"
                     "pages are gone and the rest is as it was");
    command.add_flag("--salvage", run.options.salvage,
                     "Keep what can be kept of damaged documents; each loss is\n"
                     "a warning with its page, and the exit status is 3");
    run.ifEmptyOption =
        command.add_option("--if-empty", run.ifEmpty,
                           "Where every page would go: leave a \"blank\" one, \"skip\" the\n"
                           "document or \"fail\" (blank; with --in-place or --strict, fail)");
    run.ifEmptyOption->option_text("WAY");
    oneEach(command.add_option("--accept-failures", run.acceptedFailures,
                               "Failures that don't count for the exit status, such as\n"
                               "empty,password-needed; the summary names their kinds"),
            "KIND,...");
}

namespace {

std::optional<std::string> readAcceptedFailures(RunArguments& run)
{
    for (const std::string& kinds : run.acceptedFailures) {
        for (std::size_t start = 0; start <= kinds.size();) {
            const std::size_t end = std::min(kinds.find(',', start), kinds.size());
            const std::string kind = kinds.substr(start, end - start);
            const auto reason = reasonNamed(kind);
            if (!reason) {
                const std::string nearest = nearestName(kind, reasonNames());
                return "--accept-failures takes kinds such as empty,password-needed, not \"" +
                       kind + "\"" + (nearest.empty() ? "" : "; did you mean " + nearest + "?");
            }
            run.options.acceptedFailures.push_back(*reason);
            start = end + 1;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> readJudgement(RunArguments& run)
{
    const std::pair<const char*, IfEmpty> ways[] = {
        {"blank", IfEmpty::Blank}, {"skip", IfEmpty::Skip}, {"fail", IfEmpty::Fail}};
    for (const auto& [name, way] : ways) {
        if (run.ifEmpty == name) {
            run.options.ifEmpty = way;
        }
    }
    if (run.ifEmptyOption->count() > 0 && !run.options.ifEmpty) {
        return "--if-empty takes blank, skip or fail, not " + run.ifEmpty;
    }
    if (run.options.skipExisting &&
        (run.inPlace || run.rename || !run.options.destination ||
         std::holds_alternative<ToStandardOutput>(*run.options.destination))) {
        return "--skip-existing looks for the outputs of -o FILE or -d DIR, which --rename would "
               "name anew";
    }
    return readAcceptedFailures(run);
}

void declareTelling(CLI::App& command, RunOptions& options)
{
    command.add_flag("--json", options.json,
                     "Print one JSON object per document on standard output,\n"
                     "and one that sums up");
    command.add_flag("-q,--quiet", options.quiet, "Print nothing but errors");
    command.add_flag("-v,--verbose", options.verbose,
                     "Say, too, what stays of each document and may repeat what\n"
                     "removed pages said, such as attachments and metadata");
}

std::optional<std::string> tellingMistake(const RunOptions& options)
{
    return options.quiet && options.verbose
               ? std::optional<std::string>("-q and -v exclude each other")
               : std::nullopt;
}

void declareRun(CLI::App& program, RunArguments& run, std::size_t arguments)
{
    CLI::App& command = declareCommand(program, "run", "Run actions over documents");
    command.footer(runExamples);
    declareInputs(command, run.inputs, ", which -d makes in DIR, too", arguments);
    declareSteps(command, run);
    run.rangesOption =
        command.add_option("--ranges", run.options.rangesPath,
                           "Remove from each document the pages that this list has for\n"
                           "it: a line a document, its path and its range with a tab (or\n"
                           "a comma) between, as vantora pages prints them; paths are\n"
                           "relative to the list. Inputs that it does not name stay as\n"
                           "they are; without INPUT, it names them. - is standard input");
    run.rangesOption->option_text("FILE");
    run.outputOption =
        command.add_option("-o,--output", run.output, "Write to this file; - is standard output");
    run.outputOption->option_text("FILE");
    run.folderOption = command.add_option("-d,--directory", run.folder,
                                          "Write into this folder, under the inputs' names");
    run.folderOption->option_text("DIR");
    run.nameOption = command.add_option("--name", run.name,
                                        "With -d: under these names, of {name}, {ext} and\n"
                                        "{number}, such as {name}-cut{ext}");
    run.nameOption->option_text("TEMPLATE");
    command.add_flag("-i,--in-place", run.inPlace, "Replace the inputs, each by a finished file");
    command.add_flag("--backup", run.backup, "With --in-place: keep each original as NAME.pdf.bak");
    command.add_flag("--overwrite", run.overwrite,
                     "Replace outputs and a report that exist; never a backup");
    command.add_flag("--rename", run.rename,
                     "Where an output exists: write NAME (1).pdf, or the first\n"
                     "such name that is free");
    command.add_flag("--skip-existing", run.options.skipExisting,
                     "Leave out inputs whose output is there and no older");
    declarePasswords(command, run.options.passwordFile);
    declareJudgement(command, run);
    declareWorkers(command, run.workers);
    declareReports(command, run);
    declareRecords(command, run);
    command.add_flag("-n,--dry-run", run.options.dryRun,
                     "Say what would become of each document and write nothing");
    declareTelling(command, run.options);
    declareConfiguration(command);
}

tl::expected<RunOptions, Ending> finished(RunArguments& run)
{
    const bool byRanges = run.rangesOption->count() > 0;
    if (const auto wrong = rangesMistake(run)) {
        return tl::unexpected<Ending>(mistake(*wrong, "run"));
    }
    auto steps = byRanges ? std::vector<NamedStep>{stepOfOwnRanges()} : stepsOf(run);
    if (!steps) {
        return tl::unexpected<Ending>(mistake(steps.error(), "run"));
    }
    for (const auto& wrong :
         {inputsMistake(run.inputs, byRanges ? NamedBy::OthersToo : NamedBy::TheseArguments),
          destinationMistake(run), readDestination(run), readWorkerOptions(run), readReports(run),
          readRecords(run), readJudgement(run)}) {
        if (wrong) {
            return tl::unexpected<Ending>(mistake(*wrong, "run"));
        }
    }
    run.options.steps = std::move(*steps);
    run.options.inputs = std::move(run.inputs.names);
    return std::move(run.options);
}

} // namespace vantora::cli
