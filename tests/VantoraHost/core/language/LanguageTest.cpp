#include "VantoraHost/core/language/Language.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

namespace {

using namespace vantora;
using Environment = std::map<std::string, std::string>;

std::string askedFor(const Environment& environment)
{
    return languageAskedFor([&](const char* name) -> const char* {
        const auto found = environment.find(name);
        return found == environment.end() ? nullptr : found->second.c_str();
    });
}

TEST(LanguageAskedFor, IsThatOfTheEnvironmentAsGettextReadsIt)
{
    const struct {
        const char* name;
        Environment environment;
        const char* language;
    } rows[] = {
        {"nothing said", {}, ""},
        {"LANG", {{"LANG", "de_DE.UTF-8"}}, "de"},
        {"another country", {{"LANG", "de_AT.UTF-8@euro"}}, "de"},
        {"no country", {{"LANG", "de"}}, "de"},
        {"LC_MESSAGES before LANG", {{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}}, ""},
        {"LC_ALL before both", {{"LC_ALL", "de_DE"}, {"LC_MESSAGES", "C"}, {"LANG", "C"}}, "de"},
        {"what is empty says nothing", {{"LC_ALL", ""}, {"LANG", "de_DE"}}, "de"},
        {"LANGUAGE before all", {{"LANG", "en_US.UTF-8"}, {"LANGUAGE", "de"}}, "de"},
        {"LANGUAGE with the locale C.UTF-8", {{"LANG", "C.UTF-8"}, {"LANGUAGE", "de"}}, "de"},
        {"the first of LANGUAGE that there is",
         {{"LANG", "fr"}, {"LANGUAGE", "fr:de_CH:en"}},
         "de"},
        {"English first", {{"LANG", "de_DE"}, {"LANGUAGE", "en:de"}}, ""},
        {"another language only", {{"LANG", "de_DE"}, {"LANGUAGE", "fr"}}, ""},
        {"an empty LANGUAGE", {{"LANG", "de_DE"}, {"LANGUAGE", ""}}, "de"},
        {"the locale C goes before LANGUAGE", {{"LC_ALL", "C"}, {"LANGUAGE", "de"}}, ""},
        {"POSIX, too", {{"LANG", "POSIX"}, {"LANGUAGE", "de"}}, ""},
        {"no locale at all, too", {{"LANGUAGE", "de"}}, ""},
        {"French", {{"LANG", "fr_FR.UTF-8"}}, ""},
        {"a name that only begins so", {{"LANG", "den_DE"}}, ""},
        {"a path", {{"LANG", "en"}, {"LANGUAGE", "../../de"}}, ""},
        {"a whole path", {{"LANG", "en"}, {"LANGUAGE", "/tmp/de.qm:/tmp/de"}}, ""},
        {"colons alone", {{"LANG", "en"}, {"LANGUAGE", ":::"}}, ""},
        {"something very long",
         {{"LANG", "en"}, {"LANGUAGE", std::string(1 << 20, 'd') + "e"}},
         ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(askedFor(row.environment), row.language);
    }
}

TEST(LanguageNamed, IsEnglishWhereThisProgramHasNoSuchCatalogue)
{
    EXPECT_FALSE(Language::named("de").isEnglish());
    for (const char* name : {"", "en", "fr", "../de", "de/../de", "/tmp/de", "de\n"}) {
        EXPECT_TRUE(Language::named(name).isEnglish()) << name;
    }
}

TEST(Texts, AreEnglishWithoutACatalogueAndHaveValuesInTheirPlaces)
{
    const Language english;
    EXPECT_EQ(english.text("%1 left out", {"3"}), "3 left out");
    EXPECT_EQ(english.text("%1 in %2", {"%2 {name} %1", "%1"}), "%2 {name} %1 in %1");
    EXPECT_EQ(english.text("100 % of %9 and %"), "100 % of %9 and %");
    EXPECT_EQ(english.counted(1, "page", "pages"), "1 page");
    EXPECT_EQ(english.counted(12345, "page", "pages"), "12,345 pages");
    EXPECT_EQ(english.size(9234), "9.2 kB");
    EXPECT_EQ(english.sentence("there is no such file"), "there is no such file");
}

TEST(Texts, AreGermanWithGermanNumbers)
{
    const Language german = Language::named("de");
    EXPECT_EQ(german.text("%1 left out", {"3"}), "3 ausgelassen");
    EXPECT_EQ(german.text("%1 is moved to %2", {"%2", "{%1}"}), "%2 ist nach {%1} verschoben");
    EXPECT_EQ(german.counted(1, "page", "pages"), "1 Seite");
    EXPECT_EQ(german.counted(0, "page", "pages"), "0 Seiten");
    EXPECT_EQ(german.counted(12345, "page", "pages"), "12.345 Seiten");
    EXPECT_EQ(german.size(1), "1 Byte");
    EXPECT_EQ(german.size(9234), "9,2 kB");
    EXPECT_EQ(german.text("no such text at all"), "no such text at all");
}

TEST(Sentences, AreTranslatedByTheTemplateThatFitsThemBest)
{
    const struct {
        const char* english;
        const char* german;
    } rows[] = {
        {"there is no such file", "die Datei gibt es nicht"},
        {"the output a.pdf exists already", "das Ergebnis a.pdf gibt es schon"},
        {"the output a.pdf: Permission denied", "das Ergebnis a.pdf: keine Berechtigung"},
        {"it took longer than 5 seconds", "es dauerte länger als 5 Sekunden"},
        {"lost of page 19: it cannot be read, and is left out",
         "verloren von Seite 19: sie kann nicht gelesen werden und wird ausgelassen"},
        {"damaged: page 3 and 2 others cannot be recovered",
         "beschädigt: Seite 3 und 2 weitere sind nicht zu retten"},
        {"the report can't be written: No space left on device",
         "der Bericht kann nicht geschrieben werden: kein Platz mehr auf dem Gerät"},
        {"--pages: 1 required RANGE missing", "--pages: 1 RANGE fehlt noch"},
        {"-o excludes --json", "-o schließt --json aus"},
        {"The following argument was not expected: --foo",
         "dieses Argument ist nicht vorgesehen: --foo"},
        {"-o is for the command line only, since it is about one run; leave it out here",
         "-o ist nur für die Befehlszeile, denn es betrifft einen einzelnen Lauf; lassen Sie es "
         "hier "
         "weg"},
        {"the page range \"\" names no page", "der Seitenbereich „“ nennt keine Seite"},
        {"The following argument was not expected: ", "dieses Argument ist nicht vorgesehen: "},
        {"what nobody has translated stays", "what nobody has translated stays"},
        {"", ""},
        // Names stay as they are, whatever they say.
        {"the output %2 %1 exists already", "das Ergebnis %2 %1 gibt es schon"},
        {"the output {name} is empty exists already", "das Ergebnis {name} is empty gibt es schon"},
        {"the output is a folder, not a file exists already",
         "das Ergebnis is a folder, not a file gibt es schon"},
    };
    const Language german = Language::named("de");
    for (const auto& row : rows) {
        EXPECT_EQ(german.sentence(row.english), row.german);
    }
}

TEST(Columns, CountCharactersAndNotBytes)
{
    EXPECT_EQ(charactersIn("Größe"), 5U);
    EXPECT_EQ(padded("Größe", 7), "Größe  ");
    EXPECT_EQ(padded("Größe", 3), "Größe");
}

} // namespace
