#include "VantoraHost/cli/info/InfoArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"

namespace vantora::cli {

namespace {

constexpr char infoExamples[] = R"(Examples:
  vantora info report.pdf
  vantora info --json *.pdf)";

} // namespace

void declareInfo(CLI::App& program, InfoOptions& info, std::size_t arguments)
{
    CLI::App& command = declareCommand(program, "info", "Show what documents are");
    command.footer(infoExamples);
    takeAll(command.add_option("FILE", info.inputs, "PDF files; - is standard input"), arguments);
    command
        .add_option("--password-file", info.passwordFile, "Passwords, one a line, tried in order")
        ->option_text("FILE");
    command.add_flag("--json", info.json, "Print one JSON object per document");
}

} // namespace vantora::cli
