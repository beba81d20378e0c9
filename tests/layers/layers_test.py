"""Looks for includes that point upward, sideways or past the layer path (docs/architecture.md).

layers_test.py SOURCE_DIR
"""
import re
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE_DIR = None

# Folders that a layer may include from, besides its own. The longest layer that a file lies in
# counts; an entry covers its subfolders unless they are layers of their own.
LIBRARY_BASE = ["KarvelPDFLibrary/base", "KarvelPDFLibrary/io"]
SHARED = ["VantoraApp", "VantoraApp/binding"]
# The library's texts and error numbers know nothing of its documents.
CORE = ["VantoraHost/core", *SHARED, *LIBRARY_BASE]
CORE_PARTS = [f"VantoraHost/core/{part}" for part in ("actions", "reports", "outputs", "documents", "workers")]
LAYERS = {
    "VantoraHost/cli": ["VantoraHost/core", *CORE_PARTS, *SHARED],
    "VantoraHost/desktop": ["VantoraHost/core", *CORE_PARTS, *SHARED],
    "VantoraHost/core": CORE,
    "VantoraHost/core/actions": CORE,
    "VantoraHost/core/reports": CORE,
    "VantoraHost/core/outputs": [*CORE, "VantoraHost/core/reports"],
    "VantoraHost/core/documents": [*CORE, *CORE_PARTS[:3]],
    "VantoraHost/core/workers": [*CORE, *CORE_PARTS[:4]],
    "VantoraActions": SHARED,
    "VantoraApp": ["VantoraApp/binding"],
    "VantoraApp/binding": [],
    "KarvelPDFLibrary/exports": ["KarvelPDFLibrary", "KarvelPDFLibrary/instance", *LIBRARY_BASE],
    "KarvelPDFLibrary/instance": ["KarvelPDFLibrary", *LIBRARY_BASE],
    "KarvelPDFLibrary": LIBRARY_BASE,
    "KarvelPDFLibrary/base": LIBRARY_BASE,
    "KarvelPDFLibrary/io": LIBRARY_BASE,
}
# Made in the build tree; all other quoted includes start with a layer.
GENERATED = re.compile(r"ui_\w+\.h|exports\.h|\w+\.moc")
WITHOUT_QT = ["KarvelPDFLibrary", "VantoraApp/binding"]

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)


def layer_of(path):
    holding = [layer for layer in LAYERS if path.startswith(layer + "/")]
    return max(holding, key=len, default=None)


def complaint(layer, opening, included):
    if opening == "<":
        without_qt = any((layer + "/").startswith(folder + "/") for folder in WITHOUT_QT)
        return "is Qt's" if without_qt and re.match(r"Q[A-Z]|Qt", included) else None
    if GENERATED.fullmatch(included):
        return None
    target = layer_of(included)
    if target is None:
        return "does not start with a layer"
    if target != layer and target not in LAYERS[layer]:
        return f"points from {layer} to {target}"
    return None


def violations(root):
    found = []
    for path in sorted(root.rglob("*")):
        relative = path.relative_to(root).as_posix()
        layer = layer_of(relative)
        if layer is None or path.suffix not in (".h", ".cpp"):
            continue
        for opening, included in INCLUDE.findall(path.read_text(encoding="utf-8")):
            reason = complaint(layer, opening, included)
            if reason:
                found.append(f'{relative}: "{included}" {reason}')
    return found


class Layers(unittest.TestCase):
    def test_the_sources_have_no_include_that_points_upward(self):
        self.assertEqual(violations(SOURCE_DIR), [])

    def test_every_layer_that_is_there_was_looked_at(self):
        for layer in ("VantoraApp", "VantoraApp/binding", "VantoraActions", "KarvelPDFLibrary/base"):
            self.assertTrue(list((SOURCE_DIR / layer).rglob("*.h")), layer)

    def test_wrong_includes_are_found(self):
        rows = [
            ("VantoraApp/A.h", '#include "VantoraHost/core/B.h"'),
            ("VantoraApp/A.cpp", '#include "VantoraActions/DeletePages/deletepages.h"'),
            ("VantoraHost/core/A.cpp", '#include "VantoraHost/cli/B.h"'),
            ("VantoraHost/core/A.cpp", '#include "VantoraActions/DeletePages/deletepages.h"'),
            ("VantoraHost/core/A.cpp", '#include "VantoraHost/core/outputs/B.h"'),
            ("VantoraHost/core/reports/A.cpp", '#include "VantoraHost/core/outputs/B.h"'),
            ("VantoraActions/X/A.cpp", '#include "VantoraHost/core/B.h"'),
            ("VantoraApp/binding/A.h", '#  include "VantoraApp/CActionUtils.h"'),
            ("VantoraApp/binding/A.h", "#include <QtCore/QString>"),
            ("KarvelPDFLibrary/base/A.h", '#include "KarvelPDFLibrary/document/B.h"'),
            ("KarvelPDFLibrary/document/A.h", '#include "KarvelPDFLibrary/instance/B.h"'),
            ("KarvelPDFLibrary/document/A.h", "#include <QString>"),
            ("VantoraApp/A.cpp", '#include "KarvelPDFLibrary/base/Error.h"'),
            ("VantoraApp/A.cpp", '#include "A.h"'),
            ("VantoraApp/A.cpp", '#include "../VantoraHost/core/B.h"'),
        ]
        for name, line in rows:
            with self.subTest(name=name, line=line), tempfile.TemporaryDirectory() as folder:
                file = Path(folder) / name
                file.parent.mkdir(parents=True)
                file.write_text(f"#pragma once\n\n{line}\n")
                self.assertEqual(len(violations(Path(folder))), 1)

    def test_right_includes_are_let_pass(self):
        rows = [
            ("VantoraApp/A.cpp", '#include "VantoraApp/A.h"'),
            ("VantoraApp/A.cpp", '#include "ui_saveAsActionlistDialog.h"'),
            ("VantoraApp/A.cpp", "#include <QtCore/QString>"),
            ("VantoraHost/cli/A.cpp", '#include "VantoraApp/binding/B.h"'),
            ("KarvelPDFLibrary/deletion/A.cpp", '#include "KarvelPDFLibrary/document/B.h"'),
            ("KarvelPDFLibrary/exports/A.cpp", '#include "KarvelPDFLibrary/instance/B.h"'),
        ]
        for name, line in rows:
            with self.subTest(name=name, line=line), tempfile.TemporaryDirectory() as folder:
                file = Path(folder) / name
                file.parent.mkdir(parents=True)
                file.write_text(line + "\n")
                self.assertEqual(violations(Path(folder)), [])


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    SOURCE_DIR = Path(sys.argv.pop())
    unittest.main()
