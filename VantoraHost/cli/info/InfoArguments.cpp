#include "VantoraHost/cli/info/InfoArguments.h"

#include "VantoraHost/core/Target.h"

#include <algorithm>

namespace vantora::cli {

namespace {

constexpr char infoExamples[] = R"(Examples:
  vantora info report.pdf
  vantora info -v contract.pdf
  vantora info -r scans --json
  find . -name '*.pdf' -print0 | vantora info --files-from - -0 --json)";

std::optional<std::string> inputsMistake(const InfoOptions& options)
{
    const std::vector<std::string>& names = options.inputs.names;
    if (names.empty() && options.inputs.filesFrom.empty()) {
        return "FILE is missing: name the documents, or a list of them with --files-from FILE";
    }
    if (options.inputs.endedByNull && options.inputs.filesFrom.empty()) {
        return "-0 goes with --files-from";
    }
    const auto readers = std::count(names.begin(), names.end(), standardStream) +
                         (options.inputs.filesFrom == standardStream ? 1 : 0);
    if (readers > 1) {
        return "standard input (-) can be read once only";
    }
    return std::nullopt;
}

} // namespace

void declareInfo(CLI::App& program, InfoArguments& info, std::size_t arguments)
{
    InfoOptions& options = info.options;
    CLI::App& command = declareCommand(program, "info", "Show what documents are");
    command.footer(infoExamples);
    takeAll(command.add_option("FILE", options.inputs.names, "PDF files; - is standard input"),
            arguments)
        ->required(false);
    command
        .add_option("--files-from", options.inputs.filesFrom,
                    "Further files, named in this one, one a line;\n- is standard input")
        ->option_text("LIST");
    command.add_flag("-0,--null", options.inputs.endedByNull,
                     "The names in it end with a zero byte, as find -print0 ends them");
    command.add_flag("-r,--recursive", options.inputs.recursive,
                     "A name of a folder stands for the PDF files in it and its\nsubfolders");
    command
        .add_option("--password-file", options.passwordFile,
                    "Passwords, one a line, tried in order")
        ->option_text("FILE");
    declareWorkers(command, info.workers);
    command.add_flag("-v,--verbose", options.verbose,
                     "List the attachments, layers and entries of the outline, too");
    command.add_flag("--json", options.json, "Print one JSON object per document");
}

tl::expected<InfoOptions, Ending> finished(InfoArguments& info)
{
    if (const auto wrong = inputsMistake(info.options)) {
        return tl::unexpected<Ending>(mistake(*wrong, "info"));
    }
    const auto workers = readWorkers(info.workers);
    if (!workers) {
        return tl::unexpected<Ending>(mistake(workers.error(), "info"));
    }
    info.options.workers = *workers;
    return std::move(info.options);
}

} // namespace vantora::cli
