"""What the program's help says, its manual page and its completion say, too.

documents_test.py PROGRAM SOURCE_DIR
"""
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM = SOURCE_DIR = None
SAVED = ["lists", "favourites", "settings"]
COMMANDS = [[name] for name in ["run", "pages", "desktop", "configure", "info", "verify", "undo", "config", "actions", *SAVED]] + [
    [name, verb] for name in SAVED for verb in ["show", "add", "change", "remove"]]
OPTION = re.compile(r"(?<![\w-])(--?[a-z0-9][a-z-]*)")


def help_of(*command):
    return subprocess.run([PROGRAM, *command, "--help"], check=True, capture_output=True, text=True).stdout


def options_of(*command):
    """The options that the help lists, without those of its examples; --[no-]verify are two."""
    lines = [line.split("   ")[0] for line in help_of(*command).splitlines() if re.match(r"  -", line)]
    both = [line.replace("[no-]", no) for line in lines for no in ("", "no-")]
    return {option for line in both for option in OPTION.findall(line)}


def completed(*words, data="/nonexistent", config="/nonexistent"):
    script = (f"source {SOURCE_DIR}/packaging/completion/vantora.bash; compopt() {{ :; }}; "
              f"COMP_WORDS=({' '.join(words)} ''); COMP_CWORD={len(words)}; "
              "COMP_WORDS[COMP_CWORD]=${LAST-}; _vantora; printf '%s\\n' \"${COMPREPLY[@]}\"")
    return lambda last: set(subprocess.run(["bash", "-c", script], check=True, capture_output=True, text=True,
                                           env={"LAST": last, "PATH": "/usr/bin:/bin",
                                                "XDG_DATA_HOME": data,
                                                "XDG_CONFIG_HOME": config}).stdout.split("\n")) - {""}


class Documents(unittest.TestCase):
    def test_the_help_lists_options_at_all(self):
        self.assertIn("--pages", options_of("run"))

    def test_the_manual_page_explains_every_option(self):
        manual = (SOURCE_DIR / "docs/vantora.1").read_text().replace("\\-", "-")
        for command in ([], *COMMANDS):
            for option in options_of(*command):
                self.assertRegex(manual, rf"(?<![\w-]){option}(?![\w-])", f"{command} {option}")

    def test_the_manual_page_has_no_option_that_is_not_there(self):
        known = set().union(options_of(), *(options_of(*command) for command in COMMANDS))
        manual = (SOURCE_DIR / "docs/vantora.1").read_text().replace("\\-", "-")
        explained = {option for line in re.findall(r"\.TP\n\.B\S* (.*)", manual) for option in OPTION.findall(line)}
        self.assertEqual(explained - known, set())

    def test_the_completion_offers_exactly_the_options(self):
        for command in COMMANDS:
            self.assertEqual(completed(PROGRAM, *command)("-"), options_of(*command), command)
        self.assertEqual(completed(PROGRAM)("-"), options_of())

    def test_the_completion_offers_the_commands(self):
        self.assertEqual(completed(PROGRAM)("r"), {"run"})
        self.assertEqual(completed(PROGRAM, "lists")(""), {"show", "add", "change", "remove"})

    def test_the_completion_offers_the_actions_that_are_installed(self):
        self.assertEqual(completed(PROGRAM, "run", "--action")("D"), {"Delete\\ Pages"})
        self.assertEqual(completed(PROGRAM, "configure")("D"), {"Delete\\ Pages"})

    def test_the_completion_offers_the_profiles(self):
        with tempfile.TemporaryDirectory() as config:
            (Path(config) / "vantora").mkdir()
            (Path(config) / "vantora/vantora.toml").write_text("[profile.scans]\n[profile.'my scans']\n")
            for command in ("run", "config"):
                self.assertEqual(completed(PROGRAM, command, "--profile", config=config)(""), {"scans", "my\\ scans"})
        self.assertEqual(completed(PROGRAM, "run", "--profile")(""), set())

    def test_the_completion_offers_the_windows_to_configure_inside_of(self):
        self.assertEqual(completed(PROGRAM, "configure", "--inside")(""), {"main-window", "preview"})

    def test_the_completion_offers_what_the_user_has_saved(self):
        with tempfile.TemporaryDirectory() as data:
            folder = Path(data) / "orvex software/Tollera/Actions"
            folder.mkdir(parents=True)
            (folder / "My_list.xqq").write_text(
                "[General]\nSequenceName=My list\nActionName0=Delete Pages\n"
                "ActionPrefs0=@Variant(\\0\\0\\0\\x8\\0\\0\\0\\0)\n")
            self.assertIn("My\\ list", completed(PROGRAM, "run", "--list", data=data)("M"))
            self.assertIn("My\\ list", completed(PROGRAM, "lists", "change", data=data)("M"))

    def test_the_manual_page_is_without_formatting_mistakes(self):
        result = subprocess.run(["man", "--warnings", "-l", str(SOURCE_DIR / "docs/vantora.1")],
                                capture_output=True, text=True, env={"PATH": "/usr/bin:/bin", "MANWIDTH": "80"})
        self.assertEqual(result.stderr, "")


if __name__ == "__main__":
    PROGRAM, SOURCE_DIR = sys.argv[1], Path(sys.argv[2])
    unittest.main(argv=sys.argv[:1])
