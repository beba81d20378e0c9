// Prints what helps and completion say, each text as a source has it, for the translations of the
// terminal's texts (VantoraHost/resources/translations).
#include "VantoraHost/cli/CommandLine.h"

#include <iostream>

int main()
{
    for (const std::string& text : vantora::cli::helpTexts()) {
        std::cout << "QT_TRANSLATE_NOOP(\"Terminal\", \"";
        for (const char letter : text) {
            const bool isMark = letter == '"' || letter == '\\';
            std::cout << (letter == '\n' ? "\\n" : std::string(isMark ? 1 : 0, '\\') + letter);
        }
        std::cout << "\")\n";
    }
    return std::cout.flush() ? 0 : 1;
}
