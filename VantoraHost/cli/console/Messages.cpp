#include "VantoraHost/cli/console/Messages.h"

#include "VantoraHost/core/Target.h"
#include "VantoraHost/core/reports/FailureJson.h"
#include "VantoraHost/core/reports/Remedy.h"

#include <optional>
#include <ostream>

namespace vantora::cli {

namespace {

constexpr char red[] = "\033[31m";
constexpr char yellow[] = "\033[33m";
constexpr char plain[] = "\033[0m";

std::string label(const Streams& streams, const char* colour, const std::string& word)
{
    return streams.colour ? std::string(colour) + word + plain : word;
}

std::string subject(const Streams& streams, const std::string& file)
{
    return file.empty() ? "" : inputName(file, streams.language) + ": ";
}

} // namespace

std::string inputName(const std::string& input, const Language& language)
{
    return input == standardStream ? language.text("standard input") : shown(input);
}

std::string remedy(Reason reason)
{
    switch (reason) {
    case Reason::InputMissing:
        return "check the name";
    case Reason::InputNotAFile:
        return "name a PDF file, a folder with --recursive, or - for standard input";
    case Reason::NotPdf:
        return "name a PDF file, or get an undamaged copy of it";
    case Reason::PagesDamaged:
        return "get an undamaged copy of it, or keep what can be kept with --salvage";
    case Reason::Empty:
        return "--if-empty blank leaves a blank page, --if-empty skip leaves the document out";
    case Reason::InPart:
        return "leave out --strict to take out what is there";
    case Reason::PasswordNeeded:
        return "put it into a file, one a line, for --password-file FILE";
    case Reason::PasswordWrong:
        return "check the password file";
    case Reason::NotPermitted:
        return "the owner's password in --password-file FILE lifts that";
    case Reason::Signed:
        return "leave out --keep-signed to go on without the signature";
    case Reason::OutputExists:
        return "use --overwrite to replace it, --rename to keep both, or name another";
    case Reason::OutputIsInput:
        return "use --in-place to replace an input, or name another output";
    case Reason::OutputClash:
        return "neither is written; leave one out, or let -d with --rename name them differently";
    case Reason::OutputFolderMissing:
        return "create it first (mkdir -p), or name another";
    case Reason::OutputFolderIsLink:
        return "put a folder in its place, or name the one that it leads to with -d";
    case Reason::OutputNotAFile:
        return "name a file with -o, a folder with -d, or - for standard output";
    case Reason::OutputKept:
        return "--remove-outputs removes it";
    case Reason::NotVerified:
        return "without --verify it is written, and vantora verify lists all that is found";
    case Reason::ActionMissing:
        return "vantora actions lists them";
    case Reason::ActionListMissing:
        return "vantora lists shows what there is";
    case Reason::FavouriteMissing:
        return "vantora favourites shows what there is";
    case Reason::SavedStepsUnusable:
        return "save it anew from the action's options dialog (vantora configure)";
    case Reason::BadChoice:
        return "vantora run --help shows examples";
    case Reason::BadRanges:
        return "correct the list";
    case Reason::OptionUnknown:
        return "vantora configure shows an action's options";
    case Reason::OutOfMemory:
        return "allow more (--memory-limit), use fewer workers (-j), or divide the document first";
    case Reason::TimedOut:
        return "allow more with --timeout, or look what is wrong with it";
    case Reason::Crashed:
        return "the document may be damaged; vantora info shows what can be read of it";
    case Reason::Killed:
        return "something else ended them, such as the system when memory is short; run it again, "
               "with fewer workers (-j)";
    case Reason::WorkerFailed:
        return "-j 0 does without worker processes";
    case Reason::ReportExists:
        return "go on with it (--resume and --report with its name), replace it (--overwrite), "
               "or name another";
    case Reason::NotAReport:
        return "name what an earlier run wrote with --report";
    case Reason::ReportTooOld:
        return "name another report; --skip-existing tells by the outputs what is done";
    case Reason::StepsDiffer:
        return "give the same steps, or leave out --resume to change them once more";
    case Reason::ReportMisplaced:
        return "name another file for it";
    case Reason::SavedStepsExist:
        return "use --overwrite to replace it, or name another";
    case Reason::SavedStepMissing:
        return "say which one with --step N";
    default:
        return commonRemedy(reason);
    }
}

void printError(const Streams& streams, const Error& error)
{
    const Language& language = streams.language;
    const std::string toDo = language.sentence(remedy(error.reason));
    streams.err << "vantora: " << label(streams, red, language.text("error:")) << ' '
                << subject(streams, error.file) << language.sentence(shown(error.sentence))
                << (toDo.empty() ? "" : "; ") << toDo << '\n'
                << std::flush;
}

void printFailure(const Streams& streams, bool json, const Error& error)
{
    printError(streams, error);
    if (json) {
        std::optional<std::string_view> input;
        if (!error.file.empty()) {
            input = error.file;
        }
        streams.out << failureJson(error, input) << '\n' << std::flush;
    }
}

ExitStatus exitStatus(Reason reason)
{
    switch (reason) {
    case Reason::BadPageRange:
    case Reason::OptionUnknown:
    case Reason::BadChoice:
    case Reason::BadRanges:
    case Reason::ActionMissing:
    case Reason::ActionListMissing:
    case Reason::FavouriteMissing:
    case Reason::SavedNameUnfit:
    case Reason::SavedStepMissing:
    case Reason::WrongUsage:
        return WrongUsage;
    case Reason::Interrupted:
        return InterruptedByUser;
    default:
        return SomeFailed;
    }
}

ExitStatus failedWith(const Streams& streams, bool json, const Error& error)
{
    printFailure(streams, json, error);
    return exitStatus(error.reason);
}

void printWarning(const Streams& streams, const std::string& file, const std::string& sentence)
{
    streams.err << "vantora: " << label(streams, yellow, streams.language.text("warning:")) << ' '
                << subject(streams, file) << streams.language.sentence(shown(sentence)) << '\n'
                << std::flush;
}

void printRepairs(const Streams& streams, const std::string& file,
                  const std::vector<std::string>& repairs)
{
    if (repairs.empty()) {
        return;
    }
    const std::string more =
        repairs.size() == 1 ? "" : " (and " + grouped(repairs.size() - 1) + " more, see --json)";
    printWarning(streams, file, "repaired: " + repairs.front() + more);
}

void printNote(const Streams& streams, const std::string& sentence)
{
    streams.err << "vantora: " << sentence << '\n' << std::flush;
}

} // namespace vantora::cli
