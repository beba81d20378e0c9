"""What bash, zsh and fish offer for command lines of vantora, each asked itself.

completion_test.py PROGRAM SOURCE_DIR
"""
import os
import re
import shlex
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM = SOURCE_DIR = None
OPTION = re.compile(r"(?<![\w-])(--?[a-z0-9][a-z-]*)")

# A list as it is saved, with a space in its name.
LIST = """[General]
SequenceName=My list
ActionName0=Delete Pages
ActionPrefs0=@Variant(\\0\\0\\0\\x8\\0\\0\\0\\0)
"""


class Shells(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.notes = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.notes.cleanup)

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        lists = self.folder / "data/orvex software/Tollera/Actions"
        lists.mkdir(parents=True)
        (lists / "My_list.xqq").write_text(LIST)
        (self.folder / "config/vantora").mkdir(parents=True)
        (self.folder / "config/vantora/vantora.toml").write_text("[profile.scans]\n[profile.'my letters']\n")
        (self.folder / "desk").mkdir()
        for name in ("one.pdf", "TWO.PDF", "a letter.pdf", "notes.txt", "clean.tsf"):
            (self.folder / "desk" / name).touch()
        (self.folder / "desk/cut here").mkdir()

    def ask(self, *command):
        environment = {"PATH": f"{Path(PROGRAM).parent}:/usr/bin:/bin", "HOME": str(self.folder), "TERM": "dumb",
                       "LC_ALL": "C.UTF-8", "XDG_DATA_HOME": str(self.folder / "data"),
                       "XDG_CONFIG_HOME": str(self.folder / "config")}
        done = subprocess.run(command, cwd=self.folder / "desk", env=environment, check=True, capture_output=True, text=True)
        self.assertEqual(done.stderr, "")
        return done.stdout.splitlines()

    def bash(self, line):
        """The words that take the place of the last one, as bash would write them."""
        words = re.findall(r"=|(?:\\.|[^\s=])+", line) + ([""] if line.endswith(" ") else [])
        script = (f"source {SOURCE_DIR}/packaging/completion/vantora.bash; compopt() {{ :; }}; "
                  f"COMP_WORDS=({' '.join(map(shlex.quote, words))}); COMP_CWORD={len(words) - 1}; "
                  f"$(complete -p {words[0]} | grep -o '_vantora '); printf '%s\\n' \"${{COMPREPLY[@]}}\"")
        return {re.sub(r"\\(.)", r"\1", word) for word in self.ask("bash", "--norc", "-c", script)} - {""}

    def zsh(self, line):
        offers = self.ask("zsh", "-f", str(Path(__file__).parent / "complete_in_zsh"),
                          str(SOURCE_DIR / "packaging/completion"), f"{self.notes.name}/zsh", line)
        return {re.sub(r"\\(.)", r"\1", word) for word in offers}

    def fish(self, line):
        script = f"source {SOURCE_DIR}/packaging/completion/vantora.fish; complete -C {shlex.quote(line)}"
        return {word.partition("\t")[0].rstrip("/") for word in self.ask("fish", "--no-config", "-c", script)}

    def every_shell_offers(self, line, expected, after_equals=""):
        for shell in (self.bash, self.zsh, self.fish):
            with self.subTest(shell=shell.__name__, line=line):
                before = "" if shell == self.bash else after_equals
                self.assertEqual(shell(line), {before + word for word in expected})

    def test_offer_exactly_the_options_that_the_help_lists(self):
        text = self.ask(PROGRAM, "run", "--help")
        lines = [line.split("   ")[0] for line in text if re.match(r"  -", line)]
        both = [line.replace("[no-]", no) for line in lines for no in ("", "no-")]
        options = {option for line in both for option in OPTION.findall(line)}
        self.assertIn("--no-verify", options)
        self.assertEqual(self.bash("vantora run -"), options)
        long = {option for option in options if option.startswith("--")}
        self.assertEqual(self.zsh("vantora run --"), long)
        self.assertEqual(self.fish("vantora run --"), long)

    def test_offer_commands_and_their_verbs(self):
        self.every_shell_offers("vantora ru", {"run"})
        self.every_shell_offers("vantora lists ", {"show", "add", "change", "remove"})

    def test_offer_the_same_to_the_program_with_the_window(self):
        self.every_shell_offers("vantora-desktop ", {"one.pdf", "TWO.PDF", "a letter.pdf", "cut here"})
        self.every_shell_offers("vantora-desktop --n", {"--new-window"})

    def test_offer_names_with_spaces_as_one_word(self):
        self.every_shell_offers("vantora run --action D", {"Delete Pages"})
        self.every_shell_offers("vantora lists change ", {"My list"})
        self.every_shell_offers("vantora run --profile ", {"scans", "my letters"})
        self.every_shell_offers("vantora lists show My\\ l", {"My list"})

    def test_offer_values_that_the_program_knows(self):
        self.every_shell_offers("vantora run --choose la", {"last", "label:", "landscape"})
        self.every_shell_offers("vantora run --if-empty=", {"blank", "skip", "fail"}, after_equals="--if-empty=")

    def test_offer_files_of_the_kind_that_is_wanted(self):
        documents = {"one.pdf", "TWO.PDF", "a letter.pdf", "cut here"}
        self.every_shell_offers("vantora run --strict ", documents)
        self.every_shell_offers("vantora run -d ", {"cut here"})
        self.every_shell_offers("vantora settings show ", {"clean.tsf", "cut here"})
        self.every_shell_offers("vantora run --report n", {"notes.txt"})


if __name__ == "__main__":
    PROGRAM, SOURCE_DIR = sys.argv[1], Path(sys.argv[2])
    unittest.main(argv=sys.argv[:1])
