#include "VantoraHost/cli/arguments/InputArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"
#include "VantoraHost/core/Target.h"

#include <algorithm>

namespace vantora::cli {

void declareInputs(CLI::App& command, InputArguments& inputs, const char* inFolders,
                   std::size_t count)
{
    takeAll(command.add_option(inputs.called, inputs.names.names, "PDF files; - is standard input"),
            count)
        ->required(false);
    inputs.filesFromOption =
        command.add_option("--files-from", inputs.names.filesFrom,
                           "Further inputs, named in this file, one a line;\n- is standard input");
    inputs.filesFromOption->option_text("FILE");
    command.add_flag("-0,--null", inputs.names.endedByNull,
                     "The names in it end with a zero byte, as find -print0 ends them");
    command.add_flag("-r,--recursive", inputs.names.recursive,
                     std::string("An input that is a folder stands for the PDF files in\n"
                                 "it and its subfolders") +
                         inFolders);
}

void declarePasswords(CLI::App& command, std::string& file)
{
    command.add_option("--password-file", file, "Passwords, one a line, tried in order")
        ->option_text("FILE");
}

std::optional<std::string> inputsMistake(const InputArguments& inputs, NamedBy by)
{
    const std::vector<std::string>& names = inputs.names.names;
    const bool listed = inputs.filesFromOption->count() > 0;
    if (names.empty() && !listed && by == NamedBy::TheseArguments) {
        return inputs.called +
               " is missing: name the documents, or a list of them with --files-from FILE";
    }
    if (listed && inputs.names.filesFrom.empty()) {
        return "the name of the list of inputs is empty";
    }
    if (inputs.names.endedByNull && !listed) {
        return "-0 goes with --files-from";
    }
    const auto readers = std::count(names.begin(), names.end(), standardStream) +
                         (inputs.names.filesFrom == standardStream ? 1 : 0);
    if (readers > 1) {
        return "standard input (-) can be read once only";
    }
    return std::nullopt;
}

} // namespace vantora::cli
