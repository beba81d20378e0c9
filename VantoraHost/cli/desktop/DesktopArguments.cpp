#include "VantoraHost/cli/desktop/DesktopArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"

namespace vantora::cli {

namespace {

constexpr char desktopExamples[] = R"(Examples:
  vantora desktop
  vantora desktop scans report.pdf

The same as vantora-desktop.)";

} // namespace

void declareDesktop(CLI::App& program, DesktopOptions& options, std::size_t arguments)
{
    CLI::App& command =
        declareCommand(program, "desktop", "Open a window: see the pages, mark what goes, run it");
    command.footer(desktopExamples);
    takeAll(command.add_option("FILE", options.files,
                               "PDF files, and folders whose PDF files are added"),
            arguments)
        ->required(false);
    command.add_flag("--new-window", options.newWindow,
                     "Open another window; else one that is there takes the files");
}

} // namespace vantora::cli
