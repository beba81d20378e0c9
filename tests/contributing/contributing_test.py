"""Runs the action that CONTRIBUTING.md shows, and looks for its other examples in the sources.

contributing_test.py SOURCE_DIR PROGRAM ACTION_DIR
"""
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

os.environ["XDG_CONFIG_HOME"] = "/nonexistent"  # runs without the defaults of whoever starts this

SOURCE_DIR = PROGRAM = ACTION_DIR = None


def run(*arguments, **options):
    environment = {**os.environ, "VANTORA_ACTIONS_PATH": ACTION_DIR, "QT_QPA_PLATFORM": "offscreen"}
    return subprocess.run(arguments, env=environment, capture_output=True, text=True, check=False, **options)


class ExampleAction(unittest.TestCase):
    def test_is_found_by_the_program(self):
        self.assertIn("Rotate Pages  (Pages, ", run(PROGRAM, "actions").stdout)

    def test_turns_the_pages_of_a_document(self):
        with tempfile.TemporaryDirectory() as folder:
            sample = Path(folder) / "report.pdf"
            run(sys.executable, SOURCE_DIR / "examples/make_sample.py", sample)
            result = run(PROGRAM, "run", "--action", "Rotate Pages", "--set", "degreesComboBox=180",
                         sample, "-o", Path(folder) / "turned.pdf")
            self.assertEqual(result.returncode, 0, result.stderr)
            pages = run("pdfinfo", "-l", "12", Path(folder) / "turned.pdf").stdout
            self.assertEqual(re.findall(r"Page +\d+ rot: +(\d+)", pages), ["180"] * 12)


class OtherExamples(unittest.TestCase):
    def setUp(self):
        text = (Path(SOURCE_DIR) / "CONTRIBUTING.md").read_text(encoding="utf-8")
        self.section = text[text.index("## Adding a function to the PDF library"):]

    def test_the_function_stands_in_the_library_as_it_is_shown(self):
        for file, start in [("exports/outlines.cpp", "int KPLOutlineEntryCount"),
                            ("outlines/Outline.h", "int entryCount")]:
            source = (Path(SOURCE_DIR) / "KarvelPDFLibrary" / file).read_text(encoding="utf-8")
            shown = next(block for block in re.findall(r"```cpp\n(.*?)```", self.section, re.DOTALL)
                         if start in block)
            shown = shown[shown.index(start):]
            self.assertIn(" ".join(shown.split()), " ".join(source.split()), file)


class Packages(unittest.TestCase):
    def test_that_building_needs_are_what_the_debian_package_is_built_with(self):
        listed = (Path(SOURCE_DIR) / "packages.txt").read_text(encoding="utf-8").splitlines()
        needed = {line for line in listed if line and line[0] != "#"}
        control = (Path(SOURCE_DIR) / "packaging/debian/control").read_text(encoding="utf-8")
        depends = re.search(r"^Build-Depends:(.*?)^\S", control, re.DOTALL | re.MULTILINE)[1]
        named = {entry.split()[0] for entry in depends.split(",")}
        of_other_builds = {"clang", "libbenchmark-dev"}  # sanitizers, benchmarks
        of_every_build = {"g++"}
        self.assertEqual(needed - named - of_other_builds - of_every_build, set())


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    ACTION_DIR, PROGRAM, SOURCE_DIR = sys.argv.pop(), sys.argv.pop(), Path(sys.argv.pop())
    unittest.main()
