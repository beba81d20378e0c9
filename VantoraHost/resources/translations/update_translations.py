"""Brings translations up to what the window's sources say: new texts are added, untranslated, and
those that are gone are taken out.

update_translations.py LUPDATE SOURCE_DIR SCRATCH_DIR FILE.ts...

A file for English gets only what has plural forms: all else is English already.
"""
import re
import shutil
import subprocess
import sys
from pathlib import Path

SOURCES = "VantoraHost/desktop"


def prepare(source_dir, scratch_dir):
    """Copies the sources so that lupdate 5.15 understands them, and returns where they are.

    It knows neither namespaces that are opened in one line, whose names belong to those of the
    classes in them, nor numbers with separators, after which it takes code for text.
    """
    copy = Path(scratch_dir) / "sources"
    shutil.rmtree(copy, ignore_errors=True)
    for path in sorted((Path(source_dir) / SOURCES).rglob("*")):
        if path.suffix not in (".h", ".cpp", ".ui"):
            continue
        text = path.read_text(encoding="utf-8")
        text = text.replace("\nnamespace vantora::desktop {\n",
                            "\nnamespace vantora { namespace desktop {\n")
        text = text.replace("\n} // namespace vantora::desktop\n", "\n}}\n")
        text = re.sub(r"(?<=\d)'(?=\d)", "", text)
        target = copy / path.relative_to(source_dir)
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text(text, encoding="utf-8")
    return copy


def update(lupdate, source_dir, scratch_dir, files):
    """Updates the files. Returns what lupdate complained of."""
    copy = prepare(source_dir, scratch_dir)
    complaints = ""
    for file in files:
        options = ["-pluralonly"] if Path(file).stem.endswith("_en") else []
        done = subprocess.run(
            [lupdate, *options, "-no-obsolete", "-locations", "none", "-I", ".", "-recursive",
             SOURCES, "-ts", str(Path(file).resolve())],
            cwd=copy, check=True, stderr=subprocess.PIPE, stdout=subprocess.DEVNULL, text=True)
        complaints += done.stderr
    return complaints


if __name__ == "__main__":
    print(update(*sys.argv[1:4], sys.argv[4:]), end="")
