"""What the programs' help says, their manual pages say, too.

documents_test.py PROGRAM BUILD_DIR
"""
import functools
import re
import subprocess
import sys
import unittest
from pathlib import Path

PROGRAM = BUILD_DIR = None
SAVED = ["lists", "favourites", "settings"]
COMMANDS = [[name] for name in ["run", "watch", "pages", "desktop", "configure", "info", "verify", "undo", "config", "actions", *SAVED]] + [
    [name, verb] for name in SAVED for verb in ["show", "add", "change", "remove"]]
OPTION = re.compile(r"(?<![\w-])(--?[a-z0-9][a-z-]*)")


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


@functools.lru_cache(maxsize=None)
def help_of(*command):
    return output_of(PROGRAM, *command, "--help")


def help_version():
    return output_of(PROGRAM, "--version").split()[1]


def options_listed(text):
    """The options that a help lists, without those of its examples; --[no-]verify are two."""
    lines = [line.split("   ")[0] for line in text.splitlines() if re.match(r"  -", line)]
    both = [line.replace("[no-]", no) for line in lines for no in ("", "no-")]
    return {option for line in both for option in OPTION.findall(line)}


def options_of(*command):
    return options_listed(help_of(*command))


def manual_pages():
    return sorted(BUILD_DIR.glob("share/man/man?/*"))


def manual(page):
    return (BUILD_DIR / f"share/man/man1/{page}.1").read_text().replace("\\-", "-")


def explained_in(page):
    """The options that have a paragraph of their own in a page."""
    return {option for line in re.findall(r"\.TP\n\.[BIR]+ (.*)", manual(page)) for option in OPTION.findall(line)}


class Documents(unittest.TestCase):
    def test_the_help_lists_options_at_all(self):
        self.assertIn("--pages", options_of("run"))

    def test_each_manual_page_explains_exactly_the_options_of_its_command(self):
        for name in [name for name, *verbs in COMMANDS if not verbs]:
            options = set().union(*(options_of(*command) for command in COMMANDS if command[0] == name))
            if name == "desktop":  # a program, too
                options |= options_listed(output_of(Path(PROGRAM).parent / "vantora-desktop", "--help"))
            self.assertEqual(explained_in(f"vantora-{name}"), options, name)
        self.assertEqual(explained_in("vantora"), options_of())

    def test_the_overview_names_exactly_the_commands(self):
        named = re.findall(r"\.TP\n\.BR vantora-(\w+) \(1\)\n(.*)\n", manual("vantora"))
        commands = re.findall(r"^  (\w+) {3,}(.*)", help_of().partition("Commands:\n")[2], re.MULTILINE)
        self.assertEqual([name for name, _ in named], [name for name, _ in commands])
        self.assertEqual([name for name, *verbs in COMMANDS if not verbs], [name for name, _ in commands])

    def test_each_page_that_another_names_is_there(self):
        others = {("sha256sum", "1")}
        pages = {(path.stem, path.suffix[1:]) for path in manual_pages()}
        for path in manual_pages():
            named = set(re.findall(r"^\.BR ([\w.-]+) \((\d)\)", path.read_text().replace("\\-", "-"), re.MULTILINE))
            self.assertEqual(named - pages - others, set(), path.name)
            self.assertIn(f'"vantora {help_version()}"', path.read_text().partition("\n")[0])

    def test_the_manual_pages_are_without_formatting_mistakes(self):
        self.assertEqual(len(manual_pages()), len([name for name, *verbs in COMMANDS if not verbs]) + 2)
        for page in manual_pages():
            result = subprocess.run(["man", "--warnings", "-l", page], capture_output=True, text=True,
                                    env={"PATH": "/usr/bin:/bin", "MANWIDTH": "80"})
            self.assertEqual((result.stderr, result.returncode), ("", 0), page)
            self.assertNotIn("shared/", result.stdout)


if __name__ == "__main__":
    PROGRAM, BUILD_DIR = sys.argv[1], Path(sys.argv[2])
    unittest.main(argv=sys.argv[:1])
