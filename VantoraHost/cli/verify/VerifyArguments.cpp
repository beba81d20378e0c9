#include "VantoraHost/cli/verify/VerifyArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"
#include "VantoraHost/cli/arguments/InputArguments.h"
#include "VantoraHost/core/PageRangeFault.h"

#include <optional>

namespace vantora::cli {

namespace {

constexpr char verifyExamples[] = R"(Examples:
  vantora verify report.pdf short.pdf --pages 2,4-6
  vantora verify scans cut --pages 1
  vantora verify scans cut --ranges ranges.tsv --json
  vantora verify --report cut.jsonl

Of folders, each document below BEFORE is held against the one of the same name
below AFTER. Names in a report are those that the run was given, so give the
command in the same folder. The exit status is 1 when anything is found.)";

std::optional<std::string> mistakeIn(const VerifyArguments& verify)
{
    const VerifyOptions& options = verify.options;
    const auto given =
        verify.pagesOption->count() + verify.rangesOption->count() + verify.reportOption->count();
    if (given != 1) {
        return "say which pages went, by one of --pages RANGE, --ranges FILE and --report FILE";
    }
    if (verify.reportOption->count() > 0) {
        return options.reportPath.empty() ? std::optional("the name of the report is empty")
               : options.before.empty()
                   ? std::nullopt
                   : std::optional("--report names the documents; leave out BEFORE and AFTER");
    }
    if (options.before.empty() || options.after.empty()) {
        return "name the document before and the document after, or two folders of them";
    }
    if (verify.rangesOption->count() > 0) {
        return options.rangesPath.empty() ? std::optional("the name of the list of ranges is empty")
                                          : std::nullopt;
    }
    const QString range = withoutLooseEnd(QString::fromStdString(options.range));
    if (const auto fault = pageRangeFault(range)) {
        return "the page range \"" +
               shortened(QString::fromStdString(options.range), 60).toStdString() + "\" " +
               fault->toStdString() + "; a valid one is 1,4-6,9-15,21";
    }
    return std::nullopt;
}

} // namespace

void declareVerify(CLI::App& program, VerifyArguments& verify)
{
    VerifyOptions& options = verify.options;
    CLI::App& command = declareCommand(
        program, "verify", "Check that removed pages are gone and the rest is as it was");
    command.footer(verifyExamples);
    command.add_option("BEFORE", options.before, "The document with all pages, or a folder")
        ->option_text(" ");
    command.add_option("AFTER", options.after, "What was made of it, or a folder")
        ->option_text(" ");
    verify.pagesOption =
        oneEach(command.add_option("-p,--pages", options.range, "The pages that went"), "RANGE");
    verify.rangesOption =
        oneEach(command.add_option("--ranges", options.rangesPath,
                                   "The pages that went of each document, as for run --ranges"),
                "FILE");
    verify.reportOption =
        oneEach(command.add_option("--report", options.reportPath,
                                   "The documents and pages of a run, from its report"),
                "FILE");
    declarePasswords(command, options.passwordFile);
    declareWorkers(command, verify.workers);
    command.add_flag("--json", options.json, "Print one JSON object per document");
}

tl::expected<VerifyOptions, Ending> finished(VerifyArguments& verify)
{
    if (const auto wrong = mistakeIn(verify)) {
        return tl::unexpected<Ending>(mistake(*wrong, "verify"));
    }
    const auto workers = readWorkers(verify.workers);
    if (!workers) {
        return tl::unexpected<Ending>(mistake(workers.error(), "verify"));
    }
    verify.options.workers = *workers;
    return std::move(verify.options);
}

} // namespace vantora::cli
