"""What the programs' help says, their manual pages say, too.

documents_test.py PROGRAM BUILD_DIR
"""
import functools
import re
import subprocess
import sys
import tempfile
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


def manual(page, folder="share/man/man1"):
    return (BUILD_DIR / folder / f"{page}.1").read_text().replace("\\-", "-")


def german_pages():
    return sorted(BUILD_DIR.glob("share/man/de/man?/*"))


def has_words(text):
    """Whether a message of po4a has more than names, options and what is typed, which it writes as B<--json>."""
    if text.endswith("\\n"):  # lines that stand as they are
        return False
    return re.search("[a-zA-Z]{2}", re.sub(r"[BI]<[^<>]*>|^VANTORA\S*$|^vantora [\d.]+$", "", text)) is not None


def explained_in(page, folder="share/man/man1"):
    """The options that have a paragraph of their own in a page."""
    text = re.sub(r"\\f[A-Z]", " ", manual(page, folder))  # as po4a writes what is bold
    return {option for line in re.findall(r"\.TP *\n(?:\.[BIR]+ )?(.*)", text) for option in OPTION.findall(line)}


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
        for page in [*manual_pages(), *german_pages()]:
            result = subprocess.run(["man", "--warnings", "-l", page], capture_output=True, text=True,
                                    env={"PATH": "/usr/bin:/bin", "MANWIDTH": "80", "LC_ALL": "C.UTF-8"})
            self.assertEqual((result.stderr, result.returncode), ("", 0), page)
            self.assertNotIn("shared/", result.stdout)

    def test_the_german_pages_explain_the_same(self):
        self.assertEqual([page.name for page in german_pages()], [page.name for page in manual_pages()])
        for page in [page for page in german_pages() if page.suffix == ".1"]:
            self.assertEqual(explained_in(page.stem, "share/man/de/man1"), explained_in(page.stem), page.name)

    def test_each_text_of_the_pages_is_translated(self):
        with tempfile.TemporaryDirectory() as folder:
            messages = Path(folder) / "de.po"
            task = (BUILD_DIR / "docs/man/po4a.cfg").read_text()
            (translation,) = re.findall(r"de:(\S+/de\.po)", task)
            messages.write_text(Path(translation).read_text())
            paths = f"[po4a_paths] {folder}/pages.pot de:{messages}"
            (Path(folder) / "po4a.cfg").write_text(re.sub(r"(?m)^\[po4a_paths\].*", paths, task))
            output_of("po4a", "--force", "--no-translations", "--no-backups", f"{folder}/po4a.cfg")
            for kind in ("--only-fuzzy", "--only-obsolete"):
                self.assertEqual(output_of("msgattrib", kind, "--no-wrap", messages), "", kind)
            missing = output_of("msgattrib", "--untranslated", "--no-wrap", messages)
        texts = re.findall(r'^msgid "(.+)"$', missing, re.MULTILINE)
        self.assertGreater(len(texts), 50)  # names and options alone, which stay as they are
        self.assertEqual([text for text in texts if has_words(text)], [])


if __name__ == "__main__":
    PROGRAM, BUILD_DIR = sys.argv[1], Path(sys.argv[2])
    unittest.main(argv=sys.argv[:1])
