"""Writes the files that CONTRIBUTING.md shows whole: a line with a path in backticks, then the text.

write_examples.py CONTRIBUTING.md TARGET_DIR
"""
import re
import sys
from pathlib import Path

FILE = re.compile(r"^`(VantoraActions/RotatePages/[\w.]+)`\n\n```\w+\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def main(document, target):
    files = FILE.findall(Path(document).read_text(encoding="utf-8"))
    if len(files) != 3:
        sys.exit(f"{document}: shows {len(files)} files of the example action, not 3")
    for name, text in files:
        path = Path(target) / name
        path.parent.mkdir(parents=True, exist_ok=True)
        if not path.exists() or path.read_text(encoding="utf-8") != text:
            path.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
