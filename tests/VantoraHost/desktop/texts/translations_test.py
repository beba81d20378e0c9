"""Holds the translations of the window against its sources and against themselves.

translations_test.py LUPDATE SOURCE_DIR SCRATCH_DIR
"""
import re
import shutil
import sys
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

LUPDATE, SOURCE_DIR, SCRATCH_DIR = sys.argv.pop(1), Path(sys.argv.pop(1)), Path(sys.argv.pop(1))
TRANSLATIONS = SOURCE_DIR / "VantoraHost/resources/translations"
sys.path.insert(0, str(TRANSLATIONS))
sys.dont_write_bytecode = True
from update_translations import update  # noqa: E402

GERMAN, ENGLISH = "desktop_de.ts", "desktop_en.ts"
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


def fault(message):
    """What is wrong with a message; None for nothing."""
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
        if text.count("\n") != source.count("\n") or source.endswith("…") != text.endswith("…"):
            return "ends or breaks in another way"
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


class Translations(unittest.TestCase):
    def updated(self, name):
        SCRATCH_DIR.mkdir(parents=True, exist_ok=True)
        copy = SCRATCH_DIR / name
        shutil.copy(TRANSLATIONS / name, copy)
        complaints = update(LUPDATE, SOURCE_DIR, SCRATCH_DIR, [copy])
        self.assertEqual(complaints, "", "lupdate may have overlooked texts")
        return ElementTree.parse(copy).getroot()

    def test_they_have_the_texts_of_the_sources_and_no_others(self):
        for name in (GERMAN, ENGLISH):
            before = messages(ElementTree.parse(TRANSLATIONS / name).getroot())
            after = messages(self.updated(name))
            self.assertGreater(len(after), 20)
            self.assertEqual(set(before), set(after), f"{name}: build the target update_translations")

    def test_each_text_is_translated_with_all_that_stands_in_it(self):
        for name in (GERMAN, ENGLISH):
            faults = {key: fault(message) for key, message
                      in messages(ElementTree.parse(TRANSLATIONS / name).getroot()).items()}
            if name == ENGLISH:  # "removing a document" is better English
                faults = {key: why for key, why in faults.items() if why != "has other marks"}
            self.assertEqual({key: why for key, why in faults.items() if why}, {}, name)

    def test_texts_belong_to_what_the_program_looks_them_up_by(self):
        contexts = {context for context, _, _ in messages(self.updated(GERMAN))}
        self.assertEqual(contexts & {"", "vantora", "vantora::desktop"}, set())
        self.assertLessEqual({"vantora::desktop::MainWindow", "RunBar", "RunRemedy"}, contexts)

    def test_each_template_of_a_sentence_is_one_that_other_sources_say(self):
        said = {text for folder in ("VantoraHost/core", "VantoraHost/desktop/run",
                                    "VantoraHost/desktop/sequence", "VantoraApp/settings",
                                    "KarvelPDFLibrary/document", "KarvelPDFLibrary/page_tree")
                for path in (SOURCE_DIR / folder).rglob("*.cpp") for text in literals(path)}
        # What a dialog says begins with a capital letter and ends with a full stop.
        said |= {text[:1].lower() + text[1:].rstrip(".") for text in said}
        templates = [source for context, source, _ in
                     messages(ElementTree.parse(TRANSLATIONS / GERMAN).getroot())
                     if context == "Sentences"]
        self.assertGreater(len(templates), 50)
        gone = [template for template in templates
                for words in re.split(r"%\d", template)
                if words.strip(MARKS) and not is_said(words.strip(MARKS), said)]
        self.assertEqual(gone, [])
        for words in ("there is no such filee", "there is no such page", " exists alreadi"):
            self.assertFalse(is_said(words, said), words)

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
