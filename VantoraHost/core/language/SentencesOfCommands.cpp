#include "VantoraHost/core/language/SentenceTemplates.h"

#include <QtCore/QtGlobal>

#include <iterator>

namespace vantora {

namespace {

// The commands and their arguments, with what the parser of command lines says.
constexpr const char* templatesOfCommands[] = {
    QT_TRANSLATE_NOOP("Sentences", "check the name"),
    QT_TRANSLATE_NOOP("Sentences",
                      "name a PDF file, a folder with --recursive, or - for standard input"),
    QT_TRANSLATE_NOOP("Sentences", "name a PDF file, or get an undamaged copy of it"),
    QT_TRANSLATE_NOOP("Sentences",
                      "get an undamaged copy of it, or keep what can be kept with --salvage"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "--if-empty blank leaves a blank page, --if-empty skip leaves the document out"),
    QT_TRANSLATE_NOOP("Sentences", "leave out --strict to take out what is there"),
    QT_TRANSLATE_NOOP("Sentences", "put it into a file, one a line, for --password-file FILE"),
    QT_TRANSLATE_NOOP("Sentences", "check the password file"),
    QT_TRANSLATE_NOOP("Sentences", "the owner's password in --password-file FILE lifts that"),
    QT_TRANSLATE_NOOP("Sentences", "leave out --keep-signed to go on without the signature"),
    QT_TRANSLATE_NOOP("Sentences",
                      "use --overwrite to replace it, --rename to keep both, or name another"),
    QT_TRANSLATE_NOOP("Sentences", "use --in-place to replace an input, or name another output"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "neither is written; leave one out, or let -d with --rename name them differently"),
    QT_TRANSLATE_NOOP("Sentences", "create it first (mkdir -p), or name another"),
    QT_TRANSLATE_NOOP("Sentences",
                      "put a folder in its place, or name the one that it leads to with -d"),
    QT_TRANSLATE_NOOP("Sentences",
                      "name a file with -o, a folder with -d, or - for standard output"),
    QT_TRANSLATE_NOOP("Sentences", "--remove-outputs removes it"),
    QT_TRANSLATE_NOOP("Sentences",
                      "without --verify it is written, and vantora verify lists all that is found"),
    QT_TRANSLATE_NOOP("Sentences", "vantora actions lists them"),
    QT_TRANSLATE_NOOP("Sentences", "vantora lists shows what there is"),
    QT_TRANSLATE_NOOP("Sentences", "vantora favourites shows what there is"),
    QT_TRANSLATE_NOOP("Sentences",
                      "save it anew from the action's options dialog (vantora configure)"),
    QT_TRANSLATE_NOOP("Sentences", "vantora run --help shows examples"),
    QT_TRANSLATE_NOOP("Sentences", "correct the list"),
    QT_TRANSLATE_NOOP("Sentences", "vantora configure shows an action's options"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "allow more (--memory-limit), use fewer workers (-j), or divide the document first"),
    QT_TRANSLATE_NOOP("Sentences", "allow more with --timeout, or look what is wrong with it"),
    QT_TRANSLATE_NOOP("Sentences",
                      "the document may be damaged; vantora info shows what can be read of it"),
    QT_TRANSLATE_NOOP("Sentences", "something else ended them, such as the system when memory is "
                                   "short; run it again, with fewer workers (-j)"),
    QT_TRANSLATE_NOOP("Sentences", "-j 0 does without worker processes"),
    QT_TRANSLATE_NOOP("Sentences", "go on with it (--resume and --report with its name), replace "
                                   "it (--overwrite), or name another"),
    QT_TRANSLATE_NOOP("Sentences", "name what an earlier run wrote with --report"),
    QT_TRANSLATE_NOOP("Sentences",
                      "name another report; --skip-existing tells by the outputs what is done"),
    QT_TRANSLATE_NOOP("Sentences",
                      "give the same steps, or leave out --resume to change them once more"),
    QT_TRANSLATE_NOOP("Sentences", "name another file for it"),
    QT_TRANSLATE_NOOP("Sentences", "use --overwrite to replace it, or name another"),
    QT_TRANSLATE_NOOP("Sentences", "say which one with --step N"),
    QT_TRANSLATE_NOOP("Sentences", "left out: %1"),
    QT_TRANSLATE_NOOP("Sentences", "the folder holds no PDF file (a name that ends in .pdf)"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "the program with the window isn't there, which the package vantora-desktop has"),
    QT_TRANSLATE_NOOP("Sentences", "the program with the window can't be started: %1"),
    QT_TRANSLATE_NOOP("Sentences", "no display can be reached"),
    QT_TRANSLATE_NOOP("Sentences", "the list of inputs can't be read: %1"),
    QT_TRANSLATE_NOOP("Sentences", "the password file can't be read: %1"),
    QT_TRANSLATE_NOOP("Sentences", "the file with the range can't be read: %1"),
    QT_TRANSLATE_NOOP("Sentences", "the list of inputs names no file"),
    QT_TRANSLATE_NOOP("Sentences", "the list of ranges names no document"),
    QT_TRANSLATE_NOOP("Sentences", "only action lists hold several steps"),
    QT_TRANSLATE_NOOP("Sentences", "the list has %1 steps"),
    QT_TRANSLATE_NOOP("Sentences", "there is no step %1, only 1 step"),
    QT_TRANSLATE_NOOP("Sentences", "there is no step %1, only %2 steps"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "--verify judges removals of pages, and what action \"%1\" does only itself knows"),
    QT_TRANSLATE_NOOP(
        "Sentences", "action \"%1\" may not know what was set: %2; a misspelt option does nothing"),
    QT_TRANSLATE_NOOP("Sentences", "--certificate names the certificate of one document; for %1 "
                                   "use a name such as {name}-certificate.pdf"),
    QT_TRANSLATE_NOOP("Sentences",
                      "its certificate would be written to %1, where an output or a backup goes"),
    QT_TRANSLATE_NOOP("Sentences", "has no certificate, but is done: %1"),
    QT_TRANSLATE_NOOP("Sentences", "drawing it took too long"),
    QT_TRANSLATE_NOOP("Sentences", "the process that draws it ended: %1"),
    QT_TRANSLATE_NOOP("Sentences", "is changed already, in place and by other steps than these"),
    QT_TRANSLATE_NOOP("Sentences", "a PDF is not for a terminal"),
    QT_TRANSLATE_NOOP("Sentences", "is not a file"),
    QT_TRANSLATE_NOOP("Sentences", "doesn't lie in the folder %1"),
    QT_TRANSLATE_NOOP("Sentences", "came from a pipe or went into one"),
    QT_TRANSLATE_NOOP("Sentences", "the report doesn't say which pages went"),
    QT_TRANSLATE_NOOP("Sentences", "was replaced, and there is no backup of it to verify with"),
    QT_TRANSLATE_NOOP("Sentences", "has changed since the run that the report is of"),
    QT_TRANSLATE_NOOP("Sentences", "is named twice"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "the folder for outputs lies in the watched folder %1; name one outside of it"),
    QT_TRANSLATE_NOOP("Sentences", "is watched itself; name another folder, such as %1/failed"),
    QT_TRANSLATE_NOOP("Sentences",
                      "is not on the file system of %1; name a folder there, such as %2/failed"),
    QT_TRANSLATE_NOOP("Sentences", "there is no such file, and so no profile \"%1\"; vantora "
                                   "config --example prints one to begin with"),
    QT_TRANSLATE_NOOP("Sentences",
                      "it has no profile \"%1\"; vantora config lists those that it has"),
    QT_TRANSLATE_NOOP("Sentences", "it has no profile \"%1\"; did you mean %2?"),
    QT_TRANSLATE_NOOP("Sentences", "%1 takes true or false, such as %2"),
    QT_TRANSLATE_NOOP("Sentences",
                      "%1 takes a number that is no less than 0, or a text in quotes, such as %2"),
    QT_TRANSLATE_NOOP("Sentences",
                      "%1 takes a text in quotes, or a list of them in brackets, such as %2"),
    QT_TRANSLATE_NOOP("Sentences", "%1 takes a text in quotes, such as %2"),
    QT_TRANSLATE_NOOP("Sentences",
                      "%1 is empty or holds a control character; leave it out, or write it anew"),
    QT_TRANSLATE_NOOP("Sentences", "%1 of 0 lifts a protection, which only the command line does; "
                                   "write another number, or leave it out"),
    QT_TRANSLATE_NOOP("Sentences", "%1 is for the command line only, since %2; leave it out here"),
    QT_TRANSLATE_NOOP("Sentences", "what a run works on is said each time"),
    QT_TRANSLATE_NOOP("Sentences", "what replaces files or loses content is said each time"),
    QT_TRANSLATE_NOOP("Sentences", "it names the output of one document"),
    QT_TRANSLATE_NOOP("Sentences", "it differs from machine to machine"),
    QT_TRANSLATE_NOOP("Sentences", "it is about one run"),
    QT_TRANSLATE_NOOP("Sentences",
                      "there is no option \"%1\"; vantora config --example prints all there are"),
    QT_TRANSLATE_NOOP("Sentences", "there is no option \"%1\"; did you mean %2?"),
    QT_TRANSLATE_NOOP("Sentences", "%1 is for profiles only, since it is about particular runs; "
                                   "move it below a line such as [profile.scans]"),
    QT_TRANSLATE_NOOP("Sentences", "a profile begins with a line such as [profile.scans]"),
    QT_TRANSLATE_NOOP("Sentences", "keys have more parts than any configuration needs: %1 dots "
                                   "stand before this one"),
    QT_TRANSLATE_NOOP("Sentences", "%1 is switched on for all runs by line %2, and only the "
                                   "command line switches that off, with --no-%3"),
    QT_TRANSLATE_NOOP("Sentences", "is no regular file; put one there, or use --no-config"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "belongs to another user, who could change what is done; take it over, or use --no-config"),
    QT_TRANSLATE_NOOP("Sentences", "others can write to it, and so change what is done; take that "
                                   "from them with chmod go-w, or use --no-config"),
    QT_TRANSLATE_NOOP("Sentences", "can't be read: %1; --no-config does without"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "is larger than 64 KiB, which no configuration needs; shorten it, or use --no-config"),
    QT_TRANSLATE_NOOP("Sentences", "is no TOML: %1"),
    QT_TRANSLATE_NOOP("Sentences", "--set %1 is not KEY=VALUE"),
    QT_TRANSLATE_NOOP("Sentences", "--set %1 stands before any --action"),
    QT_TRANSLATE_NOOP("Sentences", "--set %1 stands after a --list, which has its own"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "--choose, --keep and --except say what goes; leave out --pages, actions and lists"),
    QT_TRANSLATE_NOOP("Sentences", "nothing to do: name the pages to remove with --pages RANGE (or "
                                   "an action, a list or a favourite)"),
    QT_TRANSLATE_NOOP("Sentences", "nothing to look for: say with --choose CHOICE which pages"),
    QT_TRANSLATE_NOOP("Sentences", "nothing to change: say what with --set KEY=VALUE"),
    QT_TRANSLATE_NOOP(
        "Sentences", "%1 is missing: name the documents, or a list of them with --files-from FILE"),
    QT_TRANSLATE_NOOP("Sentences", "the name of the list of inputs is empty"),
    QT_TRANSLATE_NOOP("Sentences", "the name of the list of ranges is empty"),
    QT_TRANSLATE_NOOP("Sentences", "the name of the sheet is empty"),
    QT_TRANSLATE_NOOP("Sentences", "the name of the report is empty"),
    QT_TRANSLATE_NOOP("Sentences", "the name of the output is empty"),
    QT_TRANSLATE_NOOP("Sentences", "the name of the certificate is empty"),
    QT_TRANSLATE_NOOP("Sentences", "the name of the file for figures is empty"),
    QT_TRANSLATE_NOOP("Sentences", "the name of the file for checksums is empty"),
    QT_TRANSLATE_NOOP("Sentences", "the name of a folder to watch is empty"),
    QT_TRANSLATE_NOOP("Sentences", "%1 needs a name"),
    QT_TRANSLATE_NOOP("Sentences", "-0 goes with --files-from"),
    QT_TRANSLATE_NOOP("Sentences", "standard input (-) can be read once only"),
    QT_TRANSLATE_NOOP("Sentences", "standard input (-) can only be the one input"),
    QT_TRANSLATE_NOOP("Sentences", "standard input (-) has no name to write to; use -o FILE"),
    QT_TRANSLATE_NOOP("Sentences", "standard input and output (-) are not for worker processes; "
                                   "name files, or leave out -j, --timeout and --memory-limit"),
    QT_TRANSLATE_NOOP("Sentences", "-o, -d and --in-place exclude each other"),
    QT_TRANSLATE_NOOP("Sentences", "-q and -v exclude each other"),
    QT_TRANSLATE_NOOP("Sentences", "say where the result goes: -o FILE, -d DIR or --in-place"),
    QT_TRANSLATE_NOOP("Sentences", "say where the results go: -d DIR"),
    QT_TRANSLATE_NOOP("Sentences", "-o takes the result of one input; for several use -d DIR"),
    QT_TRANSLATE_NOOP("Sentences", "--backup goes with --in-place"),
    QT_TRANSLATE_NOOP("Sentences", "--name goes with -d DIR"),
    QT_TRANSLATE_NOOP("Sentences", "--report-hashes goes with --report FILE"),
    QT_TRANSLATE_NOOP("Sentences", "--step goes with --set"),
    QT_TRANSLATE_NOOP("Sentences",
                      "--rename keeps what exists, and --overwrite and --in-place replace it"),
    QT_TRANSLATE_NOOP("Sentences", "--rename keeps what exists, and --overwrite replaces it"),
    QT_TRANSLATE_NOOP("Sentences", "--json and -o - would both write to standard output"),
    QT_TRANSLATE_NOOP("Sentences", "--name %1: the name takes {name}, {ext} and {number} only"),
    QT_TRANSLATE_NOOP("Sentences", "--name %1: the name holds a slash or a single brace"),
    QT_TRANSLATE_NOOP("Sentences", "--name %1: the name is empty"),
    QT_TRANSLATE_NOOP("Sentences",
                      "--certificate %1: the name takes {name}, {ext} and {number} only"),
    QT_TRANSLATE_NOOP("Sentences", "--certificate %1: the name holds a slash or a single brace"),
    QT_TRANSLATE_NOOP("Sentences", "--ranges says what goes of each document; leave out --pages, "
                                   "--choose, --keep, --except, actions and lists"),
    QT_TRANSLATE_NOOP("Sentences",
                      "--shard takes a number and how many there are, such as 1/8 to 8/8, not %1"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "--certificate and --checksums are about what is written, and a dry run writes nothing"),
    QT_TRANSLATE_NOOP("Sentences", "--accept-failures takes kinds such as empty,password-needed, "
                                   "not \"%1\"; did you mean %2?"),
    QT_TRANSLATE_NOOP("Sentences",
                      "--accept-failures takes kinds such as empty,password-needed, not \"%1\""),
    QT_TRANSLATE_NOOP("Sentences", "--if-empty takes blank, skip or fail, not %1"),
    QT_TRANSLATE_NOOP("Sentences", "--skip-existing looks for the outputs of -o FILE or -d DIR, "
                                   "which --rename would name anew"),
    QT_TRANSLATE_NOOP("Sentences", "-j takes a number of worker processes from 0 to 4096, not %1"),
    QT_TRANSLATE_NOOP("Sentences", "--timeout takes seconds, or minutes such as 5m, not %1"),
    QT_TRANSLATE_NOOP("Sentences", "--memory-limit takes a size such as 512M or 2G, not %1"),
    QT_TRANSLATE_NOOP("Sentences",
                      "--timeout and --memory-limit need worker processes, of which -j 0 has none"),
    QT_TRANSLATE_NOOP("Sentences", "--inside takes main-window or preview, not %1"),
    QT_TRANSLATE_NOOP("Sentences", "--step takes the number of a step, from 1, not %1"),
    QT_TRANSLATE_NOOP("Sentences", "one step is kept here; only action lists hold several"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "these files lie anywhere; say what to do with one: show, add, change or remove"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "--name takes {name} and {ext}, since nobody knows how many documents will come"),
    QT_TRANSLATE_NOOP("Sentences", "%1 takes seconds, %2 to %3, not %4"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "say which pages went, by one of --pages RANGE, --ranges FILE and --report FILE"),
    QT_TRANSLATE_NOOP("Sentences", "--report names the documents; leave out BEFORE and AFTER"),
    QT_TRANSLATE_NOOP("Sentences",
                      "name the document before and the document after, or two folders of them"),
    QT_TRANSLATE_NOOP("Sentences", "The following arguments were not expected: %1"),
    QT_TRANSLATE_NOOP("Sentences", "The following argument was not expected: %1"),
    QT_TRANSLATE_NOOP("Sentences", "%1: %2 required %3 missing"),
    QT_TRANSLATE_NOOP("Sentences", "%1 is required"),
    QT_TRANSLATE_NOOP("Sentences", "%1 excludes %2"),
    QT_TRANSLATE_NOOP("Sentences", "%1 requires %2"),
    QT_TRANSLATE_NOOP("Sentences", "%1 was given a disallowed flag override"),
    QT_TRANSLATE_NOOP("Sentences", "%1: At least %2 required but received %3"),
    QT_TRANSLATE_NOOP("Sentences", "%1: At Most %2 required but received %3"),
    QT_TRANSLATE_NOOP("Sentences", "Expected at least %1 arguments to %2, got %3"),
    QT_TRANSLATE_NOOP("Sentences", "Expected exactly %1 arguments to %2, got %3"),
    QT_TRANSLATE_NOOP("Sentences", "Could not convert: %1 = %2"),
    QT_TRANSLATE_NOOP("Sentences", "%1: Should be true/false or a number"),
    QT_TRANSLATE_NOOP("Sentences", "%1: too many inputs for a flag"),
    QT_TRANSLATE_NOOP("Sentences", "%1 not found"),
    QT_TRANSLATE_NOOP("Sentences", "A subcommand is required"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "\"%1\" is no command; name what to do: run, watch, pages, desktop, configure, info, "
        "verify, undo, config, actions, lists, favourites or settings"),
    QT_TRANSLATE_NOOP("Sentences", "name what to do: run, watch, pages, desktop, configure, info, "
                                   "verify, undo, config, actions, lists, favourites or settings"),
    QT_TRANSLATE_NOOP("Sentences", "there is no font to write it with; install one, such as those "
                                   "of the package fonts-dejavu-core"),
};

} // namespace

SentenceTemplates sentencesOfCommands()
{
    return {std::begin(templatesOfCommands), std::end(templatesOfCommands)};
}

} // namespace vantora
