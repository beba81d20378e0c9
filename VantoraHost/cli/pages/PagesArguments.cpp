#include "VantoraHost/cli/pages/PagesArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"
#include "VantoraHost/core/choices/Choice.h"

#include <algorithm>

namespace vantora::cli {

namespace {

constexpr char pagesExamples[] = R"(

Examples:
  vantora pages --choose last:2 report.pdf
  vantora pages --choose "text:intentionally left blank" -r scans --sheet look.html
  vantora pages --choose "bookmark:Appendix" *.pdf >ranges.tsv
  vantora run --ranges ranges.tsv -d cut)";

// All there are, in lines of a terminal's width.
std::string choicesHelp()
{
    constexpr std::size_t width = 76;
    std::string help = "Choices:\n ";
    std::size_t used = 1;
    const std::string kinds = choiceKindsText() + "; the manual page explains them";
    for (std::size_t start = 0; start < kinds.size();) {
        const std::size_t end = std::min(kinds.find(", ", start), kinds.size() - 1) + 1;
        const std::string kind = kinds.substr(start, end - start);
        if (used + kind.size() >= width) {
            help += "\n ";
            used = 1;
        }
        help += " " + kind;
        used += kind.size() + 1;
        start = end + 1;
    }
    return help;
}

std::optional<std::string> outputsMistake(const PagesArguments& pages)
{
    if (pages.sheetOption->count() > 0 && pages.options.sheetPath.empty()) {
        return "the name of the sheet is empty";
    }
    if (pages.reportOption->count() > 0 && pages.options.reportPath.empty()) {
        return "the name of the report is empty";
    }
    return std::nullopt;
}

} // namespace

void declarePages(CLI::App& program, PagesArguments& pages, std::size_t arguments)
{
    PagesOptions& options = pages.options;
    CLI::App& command = declareCommand(program, "pages", "Show which pages choices name");
    command.footer(choicesHelp() + pagesExamples);
    declareInputs(command, pages.inputs, "", arguments);
    declareChoices(command, pages.choices);
    pages.sheetOption =
        command.add_option("--sheet", options.sheetPath,
                           "Write a page for a browser to this file, with pictures of the\n"
                           "pages that would go beside their neighbours, to rescue some\n"
                           "and to save the list of ranges for run --ranges");
    pages.sheetOption->option_text("FILE.html");
    pages.reportOption = command.add_option("--report", options.reportPath,
                                            "Write what --json prints to this file, too");
    pages.reportOption->option_text("FILE");
    command.add_flag("--overwrite", options.overwrite, "Replace a sheet and a report that exist");
    declarePasswords(command, options.passwordFile);
    declareWorkers(command, pages.workers);
    command.add_flag("--json", options.json,
                     "Print one JSON object per document, with each page and why");
}

tl::expected<PagesOptions, Ending> finished(PagesArguments& pages)
{
    for (const auto& wrong : {inputsMistake(pages.inputs), outputsMistake(pages)}) {
        if (wrong) {
            return tl::unexpected<Ending>(mistake(*wrong, "pages"));
        }
    }
    const auto workers = readWorkers(pages.workers);
    if (!workers) {
        return tl::unexpected<Ending>(mistake(workers.error(), "pages"));
    }
    pages.options.choices = optionsOf(pages.choices);
    if (pages.options.choices.empty()) {
        return tl::unexpected<Ending>(
            mistake("nothing to look for: say with --choose CHOICE which pages", "pages"));
    }
    pages.options.workers = *workers;
    pages.options.inputs = std::move(pages.inputs.names);
    return std::move(pages.options);
}

} // namespace vantora::cli
