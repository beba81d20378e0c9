"""The examples of docs/other-languages.md print what the page says.

other_languages_test.py PROGRAM SOURCE_DIR
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM = SOURCE_DIR = None
BLOCK = re.compile(r"^```(\w+)\n(.*?)^```$", re.MULTILINE | re.DOTALL)


class OtherLanguages(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        (self.folder / "scans").mkdir()
        sample = self.folder / "scans/a.pdf"
        subprocess.run([sys.executable, SOURCE_DIR / "examples/make_sample.py", sample], check=True)
        shutil.copy(sample, self.folder / "scans/b.pdf")
        subprocess.run(["qpdf", "--encrypt", "secret", "secret", "256", "--", sample, self.folder / "scans/locked.pdf"],
                       check=True)
        self.page = (SOURCE_DIR / "docs/other-languages.md").read_text()

    def output_of(self, *command):
        environment = {**os.environ, "PATH": f"{Path(PROGRAM).parent}:{os.environ['PATH']}",
                       "XDG_CONFIG_HOME": "/nonexistent"}
        return subprocess.run(command, cwd=self.folder, env=environment, stdout=subprocess.PIPE, text=True).stdout

    def test_each_example_prints_what_stands_below_it(self):
        blocks = BLOCK.findall(self.page)
        examples = [(language, text, blocks[index + 1]) for index, (language, text) in enumerate(blocks)
                    if language in ("sh", "python")]
        self.assertEqual([language for language, _, _ in examples], ["sh", "sh", "sh", "python"])
        for language, text, (kind, expected) in examples:
            with self.subTest(text):
                interpreter = {"sh": "sh", "python": sys.executable}[language]
                self.assertEqual(kind, "text")
                self.assertEqual(self.output_of(interpreter, "-c", text), expected)

    def test_the_containers_command_prints_what_stands_below_it(self):
        (console,) = [text for language, text in BLOCK.findall(self.page) if language == "console"]
        command, expected = re.search(r"^\$ docker run .* (vantora run .*\n)(.*\n)", console, re.MULTILINE).groups()
        self.assertEqual(self.output_of("sh", "-c", command), expected)

    def test_the_recipe_of_the_image_has_commands_that_a_shell_reads(self):
        recipe = (SOURCE_DIR / "packaging/docker/Dockerfile").read_text().replace("\\\n", " ")
        commands = re.findall(r"^RUN (?:--mount\S+ )?(.*)$", recipe, re.MULTILINE)
        self.assertEqual(len(commands), 2)
        for command in commands:
            self.assertEqual(subprocess.run(["sh", "-n", "-c", command]).returncode, 0, command)
        self.assertIn('\nENTRYPOINT ["vantora"]\n', recipe)

    def test_the_page_names_every_schema(self):
        schemas = {path.name for path in (SOURCE_DIR / "docs/schemas").iterdir()}
        self.assertEqual(set(re.findall(r"\(schemas/(.*?)\)", self.page)), schemas)


if __name__ == "__main__":
    PROGRAM, SOURCE_DIR = sys.argv[1], Path(sys.argv[2])
    unittest.main(argv=sys.argv[:1])
