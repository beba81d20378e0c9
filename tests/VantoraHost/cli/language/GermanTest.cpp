#include "VantoraHost/cli/CommandLine.h"
#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/VantoraHost/cli/language/SpokenTo.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>

// What a German person reads in the terminal.
namespace {

using terminal::Answer;
using terminal::lines;
using testing::HasSubstr;
using testing::Not;

/// A desk with documents, and somebody who reads German at it.
class German : public InOwnFolder {
protected:
    Answer run(const std::string& line) const { return runWords(terminal::words(line)); }
    Answer runWords(const std::vector<std::string>& words) const
    {
        return terminal::runIn(language, words);
    }

    const std::string input = scratch.write("in.pdf", support::documentOfPages(10));
    const vantora::Language language = vantora::Language::named("de");
};

const char* const commands[] = {
    "",
    "run",
    "watch",
    "pages",
    "desktop",
    "configure",
    "info",
    "verify",
    "undo",
    "config",
    "actions",
    "lists",
    "lists show",
    "lists add",
    "lists change",
    "lists remove",
    "favourites",
    "favourites show",
    "favourites add",
    "favourites change",
    "favourites remove",
    "settings",
    "settings show",
    "settings add",
    "settings change",
    "settings remove",
};

// Lines of a help that are the same in every language: commands, and what they are given.
bool isExample(const std::string& line)
{
    static const std::regex example(
        R"(\s+(vantora |find |range:|bookmark:|no-text,|--action "|sha256sum ).*)");
    return std::regex_match(line, example);
}

TEST_F(German, ReadsEachHelpWithoutAnEnglishSentenceInIt)
{
    // English words that no German sentence has.
    const std::regex english("\\b(the|which|with|of|are|this|that|and|one|print|show|what)\\b",
                             std::regex::icase);
    for (const char* command : commands) {
        SCOPED_TRACE(command);
        const std::string line = std::string(command) + " --help";
        const auto before = lines(terminal::run(line).out);
        const Answer answer = run(line);
        EXPECT_EQ(answer.status, 0);
        EXPECT_EQ(answer.err, "");
        EXPECT_THAT(answer.out, HasSubstr("Aufruf: vantora"));
        EXPECT_THAT(answer.out, HasSubstr("\nOptionen:\n"));
        for (const std::string& words : lines(answer.out)) {
            const bool isBesideName = words.rfind("  ", 0) == 0 && words.size() > 30;
            const std::string said = isBesideName ? words.substr(30) : words;
            if (words.find(' ') == std::string::npos || isExample(words)) {
                continue;
            }
            EXPECT_EQ(std::count(before.begin(), before.end(), words), 0) << words;
            EXPECT_FALSE(words.rfind("Aufruf:", 0) != 0 && std::regex_search(said, english))
                << words;
        }
    }
}

TEST_F(German, IsAskedForEveryTextOfTheHelps)
{
    const auto texts = vantora::cli::helpTexts();
    EXPECT_GT(texts.size(), 100U);
    for (const std::string& text : texts) {
        EXPECT_TRUE(language.has(text.c_str())) << text;
    }
}

TEST_F(German, SeesHelpsThatFitTheTerminal)
{
    for (const char* command : commands) {
        for (const std::string& line : lines(run(std::string(command) + " --help").out)) {
            EXPECT_LE(vantora::charactersIn(line), 100U) << line;
        }
    }
}

TEST_F(German, ReadsTheSameOptionsAndNamesAsEverybody)
{
    const auto names = [](const std::string& help) {
        std::vector<std::string> found;
        for (const std::string& line : lines(help)) {
            if (line.rfind("  -", 0) == 0) {
                found.push_back(line.substr(0, 30));
            }
        }
        return found;
    };
    for (const char* command : commands) {
        const std::string line = std::string(command) + " --help";
        EXPECT_EQ(names(run(line).out), names(terminal::run(line).out)) << command;
    }
}

TEST_F(German, ReadsWhatBecameOfDocuments)
{
    scratch.write("text.pdf", "Dear reader,\nthis is not what you think.\n");
    scratch.write("locked.pdf",
                  support::rewritten(support::documentOfPages(3), "--encrypt user owner 256 --"));
    const struct {
        const char* name;
        const char* line;
        int status;
        const char* out; ///< a part of what is printed
        const char* err;
    } rows[] = {
        {"a result", "run -p 2,4-6 in.pdf -o out.pdf", 0,
         "in.pdf -> out.pdf: 4 von 10 Seiten entfernt (2, 4-6), 6 übrig; vorher ", ""},
        {"a dry run", "run -p 2,4-6 in.pdf -n", 0,
         "in.pdf: 4 von 10 Seiten zu entfernen (2, 4-6), 6 übrig; vorher ", ""},
        {"an output that is there", "run -p 2 in.pdf -o text.pdf", 1, "",
         "vantora: Fehler: in.pdf: das Ergebnis text.pdf gibt es schon; --overwrite ersetzt es"},
        {"pages that are not there", "run -p 2,12 in.pdf -n", 0, "1 von 10 Seiten zu entfernen",
         "vantora: Warnung: in.pdf: der Bereich 2,12 nennt Seiten bis 12, aber das Dokument hat "
         "10 Seiten\n"},
        {"no document", "run -p 2 none.pdf -n", 1, "",
         "vantora: Fehler: none.pdf: die Datei gibt es nicht; prüfen Sie den Namen\n"},
        {"no PDF", "info text.pdf", 1, "", "text.pdf: ist kein PDF: die Datei beginnt nicht mit"},
        {"an encrypted one", "info locked.pdf", 1, "",
         "ist verschlüsselt und braucht ein Passwort; "},
        {"several, of which one fails", "run -p 2 in.pdf none.pdf -d .. -n", 1, "",
         "vantora: 1 von 2 Dokumenten bearbeitet, 1 gescheitert (1 input-missing); "},
        {"a range that goes down", "run -p 6-4 in.pdf -n", 2, "",
         "vantora: Fehler: der Seitenbereich „6-4“ geht bei \"6-4\" abwärts; schreiben Sie 4-6; "
         "gültig ist z. B. 1,4-6,9-15,21\n"},
        {"an unknown choice", "pages --choose first:x in.pdf", 2, "",
         "„first:x“ braucht eine Anzahl"},
        {"what choices name", "pages --choose last:2 in.pdf in.pdf", 0, "in.pdf\t9-10\n",
         "vantora: 4 Seiten; 2 Dokumente mit solchen Seiten, von 2 angesehenen\n"},
        {"what a document is", "info in.pdf", 0, "  Verschlüsselung   keine\n", ""},
        {"its size", "info in.pdf", 0, "  Seitengröße       612 x 792 pt (Letter), 10 Seiten\n",
         ""},
        {"an unknown action", "run --action Nothing in.pdf -n", 2, "",
         "Fehler: es ist keine Aktion „Nothing“ installiert, nur: "},
        {"what nothing undoes", "undo none.jsonl", 1, "", "Fehler: none.jsonl: "},
        {"no profile", "run --profile none in.pdf -n", 2, "", "none"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Answer answer = run(row.line);
        EXPECT_EQ(answer.status, row.status);
        EXPECT_THAT(answer.out, HasSubstr(row.out));
        EXPECT_THAT(answer.err, HasSubstr(row.err));
    }
}

TEST_F(German, ReadsWhatIsWrongWithACommandLine)
{
    const struct {
        const char* line;
        const char* said; ///< after "vantora: "
    } rows[] = {
        {"", "sagen Sie, was zu tun ist: run, watch, "},
        {"go", "„go“ ist kein Befehl; sagen Sie, was zu tun ist: run, watch, "},
        {"run -p 1 in.pdf", "sagen Sie, wohin das Ergebnis kommt: -o FILE, -d DIR oder --in-place; "
                            "siehe vantora run --help\n"},
        {"run -p 1 in.pdf -n --nothing", "dieses Argument ist nicht vorgesehen: --nothing; siehe"},
        {"run -p", "--pages: 1 TEXT fehlt noch; siehe vantora run --help\n"},
        {"run in.pdf -n", "nichts zu tun: nennen Sie die Seiten, die gehen, mit --pages RANGE"},
        {"run -p 1 in.pdf -n -q -v", "-q und -v schließen einander aus; siehe"},
        {"run -p 1 in.pdf -n -j x",
         "-j nimmt eine Anzahl von Arbeitsprozessen von 0 bis 4096, nicht x"},
        {"run -p 1 in.pdf -d . --name {x}",
         "--name {x}: der Name darf nur {name}, {ext} und {number}"},
        {"run -p 1 in.pdf -n --set %1%2",
         "--set %1%2 ist nicht KEY=VALUE; siehe vantora run --help\n"},
        {"config --example --profile x", "--profile schließt --example aus; "},
        {"undo", "REPORT muss angegeben werden; siehe vantora undo --help\n"},
        {"settings", "diese Dateien liegen überall; sagen Sie, was mit einer zu tun ist: show, "},
        {"verify a b -p 4-2",
         "der Seitenbereich „4-2“ geht bei \"4-2\" abwärts; schreiben Sie 2-4; "
         "gültig ist z. B. 1,4-6,9-15,21; siehe vantora verify --help\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        const Answer answer = run(row.line);
        EXPECT_EQ(answer.status, 2);
        EXPECT_EQ(answer.out, "");
        EXPECT_THAT(answer.err, testing::StartsWith("vantora: "));
        EXPECT_THAT(answer.err, HasSubstr(row.said));
    }
}

TEST_F(German, GivesOtherProgramsWhatEverybodyGivesThem)
{
    for (const char* line :
         {"info in.pdf --json", "info none.pdf --json", "run -p 2,12 in.pdf -n --json --strict",
          "run --json", "actions --json", "config --json", "pages --choose last in.pdf --json",
          "pages --choose last in.pdf", "--version", "verify in.pdf in.pdf -p 1 --json"}) {
        const auto withoutTimes = [](const std::string& text) {
            return std::regex_replace(
                text,
                std::regex(
                    "\"(seconds|started|started_at|ended|ended_at)\":(\"[^\"]*\"|[0-9.e-]+)"),
                "");
        };
        EXPECT_EQ(withoutTimes(run(line).out), withoutTimes(terminal::run(line).out)) << line;
    }
}

TEST_F(German, CompletesWithGermanDescriptionsOfTheSameWords)
{
    for (const char* line : {"complete ''", "complete run --p", "complete lists ''"}) {
        SCOPED_TRACE(line);
        const auto german = lines(run(line).out);
        const auto english = lines(terminal::run(line).out);
        ASSERT_EQ(german.size(), english.size());
        for (std::size_t i = 0; i < german.size(); ++i) {
            const std::size_t end = english[i].find('\t');
            EXPECT_EQ(german[i].substr(0, german[i].find('\t')), english[i].substr(0, end));
            if (end != std::string::npos) {
                EXPECT_NE(german[i], english[i]);
            }
        }
    }
    EXPECT_THAT(run("complete run --pages").out, HasSubstr("--pages\tDiese Seiten entfernen, zum"));
}

TEST_F(German, SeesNamesAsTheyAreAndTheTerminalObeysNoneOfThem)
{
    const std::string name = "\x1b[31m %1 %2 {name} %n.pdf";
    scratch.write(name, "no document");
    const std::string shownName = "\\x1b[31m %1 %2 {name} %n.pdf";
    const Answer wrong = runWords({"info", name});
    EXPECT_THAT(wrong.err, HasSubstr("vantora: Fehler: " + shownName + ": ist kein PDF: "));
    const Answer there = runWords({"run", "-p", "1", "in.pdf", "-o", name});
    EXPECT_THAT(there.err, HasSubstr("das Ergebnis " + shownName + " gibt es schon; "));
    EXPECT_THAT(there.err, Not(HasSubstr("\x1b")));
    const Answer usage = runWords({"run", "--set", name});
    EXPECT_THAT(usage.err, HasSubstr("--set " + shownName + " ist nicht KEY=VALUE"));
}

TEST_F(German, IsWhatTheProgramSpeaksToAGermanAndEnglishToOthers)
{
    const auto printed = [](const std::string& environment) {
        return support::runCommand("env -u LC_ALL -u LC_MESSAGES -u LANG -u LANGUAGE " +
                                   environment + " " + BUILT_PROGRAM + " run --help")
            .output;
    };
    const std::string english = terminal::run("run --help").out;
    const std::string german = run("run --help").out;
    const std::string veryLong(100000, 'd');
    for (const std::string& environment :
         {std::string(), std::string("LANG=C"), std::string("LANG=en_US.UTF-8"),
          std::string("LANG=fr_FR.UTF-8"), std::string("LC_ALL=C LANGUAGE=de"),
          std::string("LANG=C.UTF-8 LANGUAGE=../../de:/tmp/de:de/../de"),
          "LANG=C.UTF-8 LANGUAGE=" + veryLong}) {
        EXPECT_EQ(printed(environment), english) << environment.substr(0, 80);
    }
    for (const char* environment : {"LANG=de_DE.UTF-8", "LANG=C.UTF-8 LANGUAGE=de"}) {
        EXPECT_EQ(printed(environment), german) << environment;
    }
}

} // namespace
