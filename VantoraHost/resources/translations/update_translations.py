"""Brings translations up to what the sources say: new texts are added, untranslated, and those that
are gone are taken out.

update_translations.py LUPDATE HELP_TEXTS SOURCE_DIR SCRATCH_DIR FILE.ts...

HELP_TEXTS is the program that prints what helps say. A file for English gets only what has plural
forms: all else is English already.
"""
import re
import shutil
import subprocess
import sys
from pathlib import Path

# Where the texts of a file stand, by what its name begins with.
SOURCES = {
    "desktop": ["VantoraHost/desktop"],
    "sentences": ["VantoraHost/core/language"],
    "terminal": ["VantoraHost/cli", "VantoraHost/core/language", "VantoraHost/core/reports"],
}

# The calls of Language, and of what passes two forms on to it.
TEXT = re.compile(r"""\b(?:language_?|streams_?\.language)\.text\(\s*(?=")""")
COUNTED = re.compile(r"""\b(?:language_?\.counted|streams_?\.language\.counted|this->counted|lines\.count)\(""")
MARKED = re.compile(r'QT_TRANSLATE_NOOP\(\s*"Terminal",\s*(?P<text>R"\(.*?\)")\)', re.DOTALL)
LITERAL = re.compile(r"""\s*("(?:[^"\\]|\\.)*"\s*)+""")


def arguments_at(text, start):
    """The arguments of a call, which begin there, and where they end."""
    arguments, depth, i, begin = [], 0, start, start
    while depth >= 0:
        literal = LITERAL.match(text, i)
        if literal:
            i = literal.end()
            continue
        depth += {"(": 1, "{": 1, ")": -1, "}": -1}.get(text[i], 0)
        if depth < 0 or (depth == 0 and text[i] == ","):
            arguments.append(text[begin:i])
            begin = i + 1
        i += 1
    return arguments, i


def counted_in(source):
    """What is counted in a source: the literals for one and for several."""
    calls = [arguments_at(source, call.end())[0][-2:] for call in COUNTED.finditer(source)]
    return [forms for forms in calls if all(LITERAL.fullmatch(form) for form in forms)]


def singular_forms(source):
    """What a source says of one thing, which other languages have under the words for several."""
    return {re.sub(r'"\s*"', "", one).strip().strip('"') for one, _ in counted_in(source)}


def terminal_texts(source):
    """What Language is asked for in a source, as a source that lupdate finds it in."""
    found = [f'"Terminal", {LITERAL.match(source, call.end())[0]}' for call in TEXT.finditer(source)]
    found += [f'"Terminal", "%n " {several.strip()}, nullptr, 2' for _, several in counted_in(source)]
    found += [f'"Terminal", {mark["text"]}' for mark in MARKED.finditer(source)]
    return "".join(f"\nvoid f() {{ QCoreApplication::translate({text}); }}" for text in found)


def in_words_of_qt(text):
    """A source that lupdate understands.

    lupdate 5.15 knows neither namespaces that are opened in one line, whose names belong to those
    of the classes in them, nor numbers with separators, after which it takes code for text.
    """
    text = text.replace("\nnamespace vantora::desktop {\n", "\nnamespace vantora { namespace desktop {\n")
    text = text.replace("\n} // namespace vantora::desktop\n", "\n}}\n")
    return re.sub(r"(?<=\d)'(?=\d)", "", text)


def prepare(kind, help_texts, source_dir, scratch_dir):
    """Copies the sources so that lupdate understands them, with those of the helps, and returns where they are."""
    copy = Path(scratch_dir) / "sources"
    shutil.rmtree(copy, ignore_errors=True)
    for folder in SOURCES[kind]:
        for path in sorted((Path(source_dir) / folder).rglob("*")):
            if path.suffix not in (".h", ".cpp", ".ui"):
                continue
            target = copy / path.relative_to(source_dir)
            target.parent.mkdir(parents=True, exist_ok=True)
            text = in_words_of_qt(path.read_text(encoding="utf-8"))
            target.write_text(terminal_texts(text) if kind == "terminal" else text, encoding="utf-8")
    if kind == "terminal":
        helps = subprocess.run([help_texts], check=True, stdout=subprocess.PIPE).stdout
        (copy / "VantoraHost/cli/AllHelpTexts.cpp").write_bytes(helps)
    return copy


def update(lupdate, help_texts, source_dir, scratch_dir, files):
    """Updates the files. Returns what lupdate complained of."""
    complaints = ""
    for file in files:
        kind, language = Path(file).stem.split("_")
        copy = prepare(kind, help_texts, source_dir, scratch_dir)
        options = ["-pluralonly"] if language == "en" else []
        done = subprocess.run(
            [lupdate, *options, "-no-obsolete", "-locations", "none", "-I", ".", "-recursive",
             *SOURCES[kind], "-ts", str(Path(file).resolve())],
            cwd=copy, check=True, stderr=subprocess.PIPE, stdout=subprocess.DEVNULL, text=True)
        complaints += done.stderr
    return complaints


if __name__ == "__main__":
    print(update(*sys.argv[1:5], sys.argv[5:]), end="")
