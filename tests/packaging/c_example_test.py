"""Builds the C example against the library's header as a C program, and runs it.

c_example_test.py SOURCE_DIR HEADER_DIR LIBRARY
"""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE_DIR = HEADER_DIR = LIBRARY = None


class Example(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.scratch.cleanup)
        cls.folder = Path(cls.scratch.name)
        cls.program = cls.folder / "remove_pages"
        subprocess.run(["cc", "-std=c99", "-pedantic", "-Wall", "-Wextra", "-Wstrict-prototypes", "-Werror",
                        f"-I{HEADER_DIR}", SOURCE_DIR / "examples/c/remove_pages.c", "-o", cls.program,
                        f"-L{LIBRARY.parent}", f"-l:{LIBRARY.name}", f"-Wl,-rpath,{LIBRARY.parent}"], check=True)
        cls.sample = cls.folder / "Sämple.pdf"
        subprocess.run([sys.executable, SOURCE_DIR / "examples/make_sample.py", cls.sample], check=True)

    def run_it(self, *arguments):
        return subprocess.run([self.program, *arguments], env={"LC_ALL": "C.UTF-8"}, capture_output=True,
                              text=True, encoding="utf-8", check=False)

    def test_removes_pages(self):
        result = self.folder / "Ergebnis.pdf"
        done = self.run_it(self.sample, result, "2", "3")
        self.assertEqual((done.returncode, done.stdout), (0, f"{result}: 9 pages left\n"), done.stderr)
        subprocess.run(["qpdf", "--check", result], stdout=subprocess.DEVNULL, check=True)
        pages = subprocess.run(["qpdf", "--show-npages", result], capture_output=True, text=True, check=True)
        self.assertEqual(pages.stdout, "9\n")

    def test_says_why_nothing_was_done(self):
        for reason, arguments, status, said in [
                ("no such file", ["nowhere.pdf", "out.pdf", "1", "1"], 1, "nowhere.pdf"),
                ("no such page", [self.sample, "out.pdf", "12", "2"], 1, "(code 10)"),
                ("not a number", [self.sample, "out.pdf", "x", "2"], 1, "(code "),
                ("too few arguments", [self.sample], 2, "usage: ")]:
            with self.subTest(reason):
                failed = self.run_it(*arguments)
                self.assertEqual(failed.returncode, status)
                self.assertIn(said, failed.stderr)


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    LIBRARY, HEADER_DIR, SOURCE_DIR = Path(sys.argv.pop()), Path(sys.argv.pop()), Path(sys.argv.pop())
    unittest.main()
