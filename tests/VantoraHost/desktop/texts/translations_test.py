"""Holds the translations of the window and of the terminal against the sources and against themselves.

translations_test.py LUPDATE HELP_TEXTS SOURCE_DIR SCRATCH_DIR
"""
import re
import shutil
import sys
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

LUPDATE, HELP_TEXTS, SOURCE_DIR, SCRATCH_DIR = (sys.argv.pop(1), sys.argv.pop(1), Path(sys.argv.pop(1)),
                                                Path(sys.argv.pop(1)))
TRANSLATIONS = SOURCE_DIR / "VantoraHost/resources/translations"
sys.path.insert(0, str(TRANSLATIONS))
sys.dont_write_bytecode = True
from update_translations import singular_forms, terminal_texts, update  # noqa: E402

GERMAN, ENGLISH = "desktop_de.ts", "desktop_en.ts"
SENTENCES, TERMINAL = "sentences_de.ts", "terminal_de.ts"
ALL = (GERMAN, ENGLISH, SENTENCES, TERMINAL)
FORMS = 2  # of plurals, in both languages


def messages(root):
    """The messages of a file: (context, source, comment) -> element."""
    return {(context.findtext("name"), message.findtext("source"), message.findtext("comment")): message
            for context in root.iter("context") for message in context.iter("message")}


def marks(text):
    """What stands for something in a text, each as often as it does."""
    return sorted(re.findall(r"%(?:\d+|n)|\{\w+\}", text))


def letters(text):
    return len(re.findall(r"&[^&\s]", text.replace("&&", "")))


def fault(message, wraps=False):
    """What is wrong with a message, whose lines may end in other places where it wraps; None for nothing."""
    source, translation = message.findtext("source"), message.find("translation")
    if translation is None or translation.get("type"):
        return "is not finished"
    plural = message.get("numerus") == "yes"
    texts = [form.text for form in translation] if plural else [translation.text]
    if plural and len(texts) != FORMS:
        return "has another number of forms"
    for text in texts:
        if not text:
            return "is empty"
        if marks(text) != marks(source):
            return "has other marks"
        if letters(text) != letters(source):
            return "has another number of letters for the keyboard"
        if not wraps and text.count("\n") != source.count("\n"):
            return "breaks in another way"
        if any(source.endswith(end) != text.endswith(end) for end in ("…", ":", "\n")):
            return "ends in another way"
    return None


def literals(path):
    """The texts of a source, of which those beside each other are one."""
    joined = re.sub(r'"\s*\n\s*"', "", path.read_text(encoding="utf-8"))
    return [text.replace('\\"', '"') for text in re.findall(r'"((?:[^"\\\n]|\\.)*)"', joined)]


MARKS = ' ",;:'  # what sentences are put together with
SHORTEST = 3  # letters of a part of a sentence: with less, anything could be said somewhere


def is_begun(words, said):
    """Whether a text begins with these words, or is their beginning and another goes on so."""
    return any(text.startswith(words) or
               (len(text) >= SHORTEST and words.startswith(text) and
                len(words) - len(text) >= SHORTEST and is_begun(words[len(text):], said))
               for text in said)


def is_said(words, said):
    """Whether sources say these words, in one text or in several that they put together."""
    return any(words in text for text in said) or any(
        any(text.endswith(words[:cut]) for text in said) and is_begun(words[cut:], said)
        for cut in range(SHORTEST, len(words) - SHORTEST + 1))


# Where sentences are made of which templates have the words.
SPEAKING = ("VantoraHost/cli", "VantoraHost/core", "VantoraHost/desktop/run", "VantoraHost/desktop/sequence",
            "VantoraHost/verification", "VantoraApp/settings", "KarvelPDFLibrary")

# What the system and the library that reads command lines say.
OF_LIBRARIES = (
    "Killed", "Terminated", "Aborted", "Segmentation fault", "Bus error", "Illegal instruction",
    "Floating point exception", "Bad system call", "No such file or directory", "Permission denied",
    "Operation not permitted", "No space left on device", "Is a directory", "Not a directory", "File exists",
    "Read-only file system", "Input/output error", "Disk quota exceeded", "Too many open files",
    "File name too long", "Too many levels of symbolic links", "Broken pipe", "Cannot allocate memory",
    "Invalid argument", "Resource temporarily unavailable", "No such device or address", "Text file busy",
    "Connection reset by peer", "Invalid cross-device link", "Operation not supported", "Directory not empty",
    "The following argument was not expected", "The following arguments were not expected", "required", "missing",
    "is required", "excludes", "requires", "was given a disallowed flag override", "At least", "At Most",
    "required but received", "Expected at least", "Expected exactly", "arguments to", "got", "Could not convert",
    "Should be true/false or a number", "too many inputs for a flag", "not found", "A subcommand is required")

# Layers whose sentences the terminal shows.
SHOWN_IN_TERMINAL = ("VantoraHost/cli", "VantoraHost/core", "VantoraHost/verification", "KarvelPDFLibrary/deletion",
                     "KarvelPDFLibrary/document", "KarvelPDFLibrary/page_tree", "KarvelPDFLibrary/saving",
                     "KarvelPDFLibrary/viewer")

# The templates themselves; what is written into files, certificates and for other programs; what tells
# only why a slower way is gone.
NOT_SHOWN_FROM = ("core/language/", "/certificates/CertificateDrawing", "run/Metrics.cpp", "HelpTexts.cpp",
                  "pages/Sheet.cpp", "saving/VerbatimWriter.cpp", "saving/RenumberedObjects.cpp",
                  "saving/LinearizedWriter.cpp", "saving/CrossReferences.cpp", "document/IndexDoubts.cpp",
                  "document/MissingTrailer.cpp", "document/Version.cpp", "page_tree/WriteTree.cpp")

# What is no sentence, or is none that a run, a look or a verification meets.
NO_SENTENCES = frozenset((
    "files pdf", "files tsf", "files html", "files xqq", "a direct object", "(not a name)", "new document",
    "a damaged file ", "of which parts may be lost", "that is encrypted", "a damaged file with an unusual page tree",
    "Attempting to reconstruct", "# SHA-256 of outputs; sha256sum -c checks them. Inputs stand above them.\n",
    '["blank", "last:2"]', "; the manual page explains them"))


def said_in(path):
    """The texts of a source as the program says them, without comments."""
    source = re.sub(r"(?m)^\s*(?://|#include).*$|\s//\s.*$", "", path.read_text(encoding="utf-8"))
    source = re.sub(r'R"\(.*?\)"', '""', source, flags=re.DOTALL)  # of helps, which German.IsAskedFor… looks after
    joined = re.sub(r'"\s*\n\s*"', "", source)
    return {text.replace('\\"', '"').replace("\\n", "\n") for text in re.findall(r'"((?:[^"\\\n]|\\.)*)"', joined)}


def is_english(text):
    """Whether a text has words of a sentence, rather than a name, a format or syntax of PDF."""
    words = re.findall(r"(?:^|(?<=[ (\"]))[a-z']{2,}(?=[ ,;:.)\"]|$)", text)
    return len(words) >= 2 and not re.search(r"<<|>>|/[A-Z]", text)


def is_covered(words, known):
    return any(words in text for text in known)


class Translations(unittest.TestCase):
    def updated(self, name):
        SCRATCH_DIR.mkdir(parents=True, exist_ok=True)
        copy = SCRATCH_DIR / name
        shutil.copy(TRANSLATIONS / name, copy)
        complaints = update(LUPDATE, HELP_TEXTS, SOURCE_DIR, SCRATCH_DIR, [copy])
        self.assertEqual(complaints, "", "lupdate may have overlooked texts")
        return ElementTree.parse(copy).getroot()

    def test_they_have_the_texts_of_the_sources_and_no_others(self):
        for name in ALL:
            before = messages(ElementTree.parse(TRANSLATIONS / name).getroot())
            after = messages(self.updated(name))
            self.assertGreater(len(after), 20)
            self.assertEqual(set(before), set(after), f"{name}: build the target update_translations")

    def test_each_text_is_translated_with_all_that_stands_in_it(self):
        for name in ALL:
            faults = {key: fault(message, wraps=name == TERMINAL) for key, message
                      in messages(ElementTree.parse(TRANSLATIONS / name).getroot()).items()}
            if name == ENGLISH:  # "removing a document" is better English
                faults = {key: why for key, why in faults.items() if why != "has other marks"}
            self.assertEqual({key: why for key, why in faults.items() if why}, {}, name)

    def test_texts_belong_to_what_the_program_looks_them_up_by(self):
        contexts = {context for context, _, _ in messages(self.updated(GERMAN))}
        self.assertEqual(contexts & {"", "vantora", "vantora::desktop"}, set())
        self.assertLessEqual({"vantora::desktop::MainWindow", "RunBar", "RunRemedy"}, contexts)

    def templates(self):
        found = [source for _, source, _ in messages(ElementTree.parse(TRANSLATIONS / SENTENCES).getroot())]
        self.assertGreater(len(found), 300)
        return found

    def test_each_template_of_a_sentence_is_one_that_other_sources_say(self):
        said = {text for folder in SPEAKING for path in (SOURCE_DIR / folder).rglob("*.*")
                if path.suffix in (".cpp", ".h") and "core/language" not in str(path) for text in literals(path)}
        # What a dialog says begins with a capital letter and ends with a full stop.
        said |= {text[:1].lower() + text[1:].rstrip(".") for text in said}
        said |= set(OF_LIBRARIES)
        gone = [template for template in self.templates()
                for words in re.split(r"%\d|\b1 ", template)
                if words.strip(MARKS) and not is_said(words.strip(MARKS), said)]
        self.assertEqual(gone, [])
        for words in ("there is no such filee", "there is no such page", " exists alreadi"):
            self.assertFalse(is_said(words, said), words)

    def test_each_sentence_that_the_terminal_may_show_has_a_template_or_is_a_text(self):
        known = {words.strip(MARKS) for template in self.templates() for words in re.split(r"%\d", template)}
        for name in (TERMINAL, GERMAN):
            known |= {source.replace("%n ", "").strip(MARKS) for _, source, _ in
                      messages(ElementTree.parse(TRANSLATIONS / name).getroot())}
        known |= {text[:1].upper() + text[1:] + "." for text in known}
        untranslated = [f"{path.relative_to(SOURCE_DIR)}: {text}" for folder in SHOWN_IN_TERMINAL
                        for path in sorted((SOURCE_DIR / folder).rglob("*.cpp"))
                        if not any(part in str(path) for part in NOT_SHOWN_FROM)
                        for text in said_in(path) - singular_forms(path.read_text(encoding="utf-8"))
                        if is_english(text) and text not in NO_SENTENCES and
                        not is_covered(text.strip(MARKS), known)]
        self.assertEqual(untranslated, [])
        for text in ("the document went for a walk", "nobody says that"):
            self.assertTrue(is_english(text) and not is_covered(text, known))

    def test_what_the_terminal_is_told_is_found_in_its_sources(self):
        source = """language.text("one %1", {x}); streams_.language.text(
            "two"); language_.counted(f(a, g(b)), "page", "pages"); counted(bytes, "byte", "bytes")"""
        self.assertEqual(terminal_texts(source).count('translate("Terminal", '), 3)

    def test_faults_are_found(self):
        rows = [
            ("unfinished", "<source>a</source><translation type='unfinished'>b</translation>"),
            ("gone from the sources", "<source>a</source><translation type='vanished'>b</translation>"),
            ("empty", "<source>a</source><translation></translation>"),
            ("without a mark", "<source>%1 of %2</source><translation>%1 von</translation>"),
            ("with a mark twice", "<source>%1</source><translation>%1 %1</translation>"),
            ("without its name", "<source>{name}</source><translation>{Name}</translation>"),
            ("without a letter", "<source>&amp;File</source><translation>Datei</translation>"),
            ("with two letters", "<source>&amp;File</source><translation>&amp;Da&amp;tei</translation>"),
            ("without its dots", "<source>Open…</source><translation>Öffnen</translation>"),
        ]
        for name, text in rows:
            with self.subTest(name=name):
                self.assertIsNotNone(fault(ElementTree.fromstring(f"<message>{text}</message>")))
        plural = ("<message numerus='yes'><source>%n page(s)</source><translation>"
                  "<numerusform>%n Seite</numerusform>{}</translation></message>")
        self.assertIsNotNone(fault(ElementTree.fromstring(plural.format(""))))
        self.assertIsNotNone(fault(ElementTree.fromstring(
            plural.format("<numerusform>Seiten</numerusform>"))))
        self.assertIsNone(fault(ElementTree.fromstring(
            plural.format("<numerusform>%n Seiten</numerusform>"))))


if __name__ == "__main__":
    unittest.main()
