"""Looks for includes that point upward, sideways or past the layer path. The layers, and what each
may include from, are the table of docs/architecture.md.

layers_test.py SOURCE_DIR
"""
import re
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE_DIR = None

# A row of the table: a folder, and the folders it includes from. A name that does not start
# with a house is one of a folder beside the row's own.
ROW = re.compile(r"^\| `([\w/]+)` \| ([\w/` ]*?) ?\|", re.MULTILINE)
# Made in the build tree; all other quoted includes start with a layer.
GENERATED = re.compile(r"ui_\w+\.h|exports\.h|\w+\.moc")
WITHOUT_QT = ["KarvelPDFLibrary", "VantoraApp/binding"]
HOUSES = ["VantoraHost", "VantoraActions", "VantoraApp", "KarvelPDFLibrary"]

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)


def read_layers(document):
    """The rows of the table, the highest first: folder -> folders it may include from."""
    layers = {}
    for folder, cell in ROW.findall(document):
        beside = folder.rpartition("/")[0]
        names = re.findall(r"[\w/]+", cell)
        layers[folder] = [name if name.split("/")[0] in HOUSES else f"{beside}/{name}" for name in names]
    return layers


def layer_of(path, layers):
    holding = [layer for layer in layers if path.startswith(layer + "/")]
    return max(holding, key=len, default=None)


def is_source(path):
    return path.suffix in (".h", ".cpp")


def sources(root):
    return (path for path in sorted(root.rglob("*"))
            if is_source(path) and path.relative_to(root).parts[0] in HOUSES)


def includes(path):
    return INCLUDE.findall(path.read_text(encoding="utf-8"))


def complaint(layer, layers, opening, included):
    if opening == "<":
        without_qt = any((layer + "/").startswith(folder + "/") for folder in WITHOUT_QT)
        return "is Qt's" if without_qt and re.match(r"Q[A-Z]|Qt", included) else None
    if GENERATED.fullmatch(included):
        return None
    target = layer_of(included, layers)
    if target is None:
        return "does not start with a layer"
    if target != layer and target not in layers[layer]:
        return f"points from {layer} to {target}"
    return None


def violations(root, layers):
    found = []
    for path in sources(root):
        relative = path.relative_to(root).as_posix()
        layer = layer_of(relative, layers)
        if layer is None:
            found.append(f"{relative}: is in no layer")
            continue
        for opening, included in includes(path):
            reason = complaint(layer, layers, opening, included)
            if reason:
                found.append(f'{relative}: "{included}" {reason}')
    return found


class Layers(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        text = (SOURCE_DIR / "docs/architecture.md").read_text(encoding="utf-8")
        cls.layers = read_layers(text)

    def test_the_sources_have_no_include_that_the_table_does_not_name(self):
        self.assertEqual(violations(SOURCE_DIR, self.layers), [])

    def test_each_row_names_only_rows_below_it(self):
        rows = list(self.layers)
        for place, row in enumerate(rows):
            for target in self.layers[row]:
                self.assertIn(target, rows[place + 1:], f"{row} stands on {target}")

    def test_each_folder_with_sources_has_a_row_and_each_row_a_folder(self):
        with_sources = {path.parent.relative_to(SOURCE_DIR).as_posix() for path in sources(SOURCE_DIR)}
        self.assertEqual(with_sources, set(self.layers))

    def test_the_table_names_nothing_that_no_file_includes(self):
        used = {}
        for path in sources(SOURCE_DIR):
            layer = layer_of(path.relative_to(SOURCE_DIR).as_posix(), self.layers)
            used.setdefault(layer, set()).update(layer_of(name, self.layers) for _, name in includes(path))
        for layer, targets in self.layers.items():
            self.assertEqual([name for name in targets if name not in used.get(layer, ())], [], layer)

    def test_wrong_includes_are_found(self):
        rows = [
            ("VantoraHost/core/A.cpp", '#include "VantoraHost/cli/B.h"'),
            ("VantoraHost/core/A.cpp", '#include "VantoraHost/core/outputs/B.h"'),
            ("VantoraHost/core/A.cpp", '#include "VantoraActions/DeletePages/deletepages.h"'),
            ("VantoraActions/DeletePages/A.cpp", '#include "VantoraHost/core/B.h"'),
            ("VantoraApp/settings/A.cpp", '#include "VantoraApp/dialogs/B.h"'),
            ("VantoraApp/binding/A.h", '#  include "VantoraApp/CActionUtils.h"'),
            ("VantoraApp/binding/A.h", "#include <QtCore/QString>"),
            ("KarvelPDFLibrary/base/A.h", '#include "KarvelPDFLibrary/document/B.h"'),
            ("KarvelPDFLibrary/page_tree/A.h", '#include "KarvelPDFLibrary/document/B.h"'),
            ("KarvelPDFLibrary/document/A.h", '#include "KarvelPDFLibrary/instance/B.h"'),
            ("KarvelPDFLibrary/document/A.h", "#include <QString>"),
            ("VantoraApp/binding/A.cpp", '#include "KarvelPDFLibrary/base/Error.h"'),
            ("VantoraApp/binding/A.cpp", '#include "A.h"'),
            ("VantoraApp/binding/A.cpp", '#include "../VantoraHost/core/B.h"'),
            ("KarvelPDFLibrary/elsewhere/A.cpp", "#include <vector>"),
        ]
        for name, line in rows:
            with self.subTest(name=name, line=line), tempfile.TemporaryDirectory() as folder:
                file = Path(folder) / name
                file.parent.mkdir(parents=True)
                file.write_text(f"#pragma once\n\n{line}\n")
                self.assertEqual(len(violations(Path(folder), self.layers)), 1)

    def test_right_includes_are_let_pass(self):
        rows = [
            ("VantoraApp/binding/A.cpp", '#include "VantoraApp/binding/A.h"'),
            ("VantoraActions/DeletePages/A.cpp", '#include "ui_saveAsActionlistDialog.h"'),
            ("VantoraActions/DeletePages/A.cpp", "#include <QtCore/QString>"),
            ("VantoraActions/DeletePages/A.cpp", '#include "VantoraApp/binding/B.h"'),
            ("KarvelPDFLibrary/deletion/A.cpp", '#include "KarvelPDFLibrary/document/B.h"'),
            ("KarvelPDFLibrary/exports/A.cpp", '#include "KarvelPDFLibrary/instance/B.h"'),
        ]
        for name, line in rows:
            with self.subTest(name=name, line=line), tempfile.TemporaryDirectory() as folder:
                file = Path(folder) / name
                file.parent.mkdir(parents=True)
                file.write_text(line + "\n")
                self.assertEqual(violations(Path(folder), self.layers), [])


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    SOURCE_DIR = Path(sys.argv.pop())
    unittest.main()
