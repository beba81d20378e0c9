#include "VantoraHost/cli/CommandLine.h"
#include "VantoraHost/cli/Program.h"
#include "VantoraHost/cli/console/PlainLocale.h"
#include "VantoraHost/core/language/Language.h"
#include "VantoraHost/core/workers/Confinement.h"
#include "VantoraHost/core/workers/HugePages.h"

#include <QtCore/QCoreApplication>

#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <optional>

namespace {

volatile sig_atomic_t interruptions = 0;

void noteInterruption(int)
{
    interruptions = 1;
}

// The first signal asks for an orderly end; a second one has its default effect.
void listenForInterruptions()
{
    struct sigaction action = {};
    action.sa_handler = noteInterruption;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before = {};
        sigaction(number, nullptr, &before);
        if (before.sa_handler != SIG_IGN) { // as nohup and background jobs leave it
            sigaction(number, &action, nullptr);
        }
    }
    // A reader of the output that goes away is an error of writing, not the end of the run.
    signal(SIGPIPE, SIG_IGN);
}

bool isSet(const char* variable)
{
    const char* value = std::getenv(variable);
    return value && *value;
}

// Such as an editor's: it can neither colour nor rewrite a line.
bool terminalIsDumb()
{
    const char* kind = std::getenv("TERM");
    return kind && std::strcmp(kind, "dumb") == 0;
}

} // namespace

int main(int argc, char** argv)
{
    vantora::keepMemoryPrivate();
    vantora::useHugePages();
    listenForInterruptions();
    std::ios::sync_with_stdio(false);
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    std::optional<QCoreApplication> application;
    if (!vantora::cli::draws(arguments)) {
        application.emplace(argc, argv);
    }
    vantora::cli::keepPlainLocale();

    const bool errIsTerminal = isatty(STDERR_FILENO) == 1 && !terminalIsDumb();
    const vantora::cli::Streams streams = {
        STDIN_FILENO,
        std::cout,
        std::cerr,
        isatty(STDOUT_FILENO) == 1,
        errIsTerminal,
        errIsTerminal && !isSet("NO_COLOR"),
        [] { return interruptions != 0; },
        vantora::Language::named(vantora::languageAskedFor(std::getenv)),
    };
    const vantora::Installation installation = vantora::thisInstallation();
    const int status = vantora::cli::runProgram(
        arguments, installation, [&] { return vantora::cli::loadGuiPart(installation); }, streams);
    std::cout.flush();
    std::cerr.flush();
#ifndef VANTORA_SANITIZED // which looks at the end for what was never given back
    // Giving back piece by piece what goes with the process takes longer than deleting a page.
    std::_Exit(status);
#endif
    return status;
}
