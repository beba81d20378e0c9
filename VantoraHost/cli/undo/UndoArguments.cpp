#include "VantoraHost/cli/undo/UndoArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"

namespace vantora::cli {

namespace {

constexpr char undoExamples[] = R"(Examples:
  vantora run --pages 1 --in-place --backup --report cut.jsonl scans/*.pdf
  vantora undo --dry-run cut.jsonl
  vantora undo cut.jsonl

Names in a report are those that the run was given, so give the command in the
same folder. Only what is as the run left it is touched.)";

} // namespace

void declareUndo(CLI::App& program, UndoOptions& undo, std::size_t arguments)
{
    CLI::App& command =
        declareCommand(program, "undo", "Give back the originals that a run replaced");
    command.footer(undoExamples);
    takeAll(command.add_option("REPORT", undo.reports, "What the run wrote with --report"),
            arguments);
    command.add_flag("--remove-outputs", undo.removeOutputs,
                     "Also remove outputs that are files beside their originals");
    command.add_flag("-n,--dry-run", undo.dryRun, "Only say what would be done");
    command.add_flag("--json", undo.json, "Print one JSON object per document");
    command.add_flag("-q,--quiet", undo.quiet, "Print errors only");
}

} // namespace vantora::cli
