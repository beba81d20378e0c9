#include "VantoraHost/cli/info/InfoArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"

namespace vantora::cli {

namespace {

constexpr char infoExamples[] = R"(Examples:
  vantora info report.pdf
  vantora info -v contract.pdf
  vantora info -r scans --json
  find . -name '*.pdf' -print0 | vantora info --files-from - -0 --json)";

} // namespace

void declareInfo(CLI::App& program, InfoArguments& info, std::size_t arguments)
{
    InfoOptions& options = info.options;
    CLI::App& command = declareCommand(program, "info", "Show what documents are");
    command.footer(infoExamples);
    info.inputs.called = "FILE";
    declareInputs(command, info.inputs, "", arguments);
    declarePasswords(command, options.passwordFile);
    declareWorkers(command, info.workers);
    command.add_flag("-v,--verbose", options.verbose,
                     "List the attachments, layers and entries of the outline, too");
    command.add_flag("--json", options.json, "Print one JSON object per document");
}

tl::expected<InfoOptions, Ending> finished(InfoArguments& info)
{
    if (const auto wrong = inputsMistake(info.inputs)) {
        return tl::unexpected<Ending>(mistake(*wrong, "info"));
    }
    const auto workers = readWorkers(info.workers);
    if (!workers) {
        return tl::unexpected<Ending>(mistake(workers.error(), "info"));
    }
    info.options.workers = *workers;
    info.options.inputs = std::move(info.inputs.names);
    return std::move(info.options);
}

} // namespace vantora::cli
