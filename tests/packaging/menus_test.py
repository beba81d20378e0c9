"""Runs what stands in the menus of desktops and file managers with names that are hard to hand over, and looks
which arguments arrive.

menus_test.py PACKAGING_DIR
"""
import configparser
import os
import re
import shlex
import subprocess
import sys
import tempfile
import types
import unittest
from pathlib import Path
from unittest import mock

PACKAGING = None

NAMES = ["plain.pdf", "with two  spaces.pdf", "it's.pdf", 'a "quote".pdf', "-d.pdf", "--in-place", "100%.pdf",
         "%F%U%f.pdf", "$HOME `id` $(id).pdf", "back\\slash.pdf", "semi;colon & more|.pdf", "*?[a].pdf", "~.pdf",
         "#hash.pdf", "Übersicht €.pdf", "new\nline.pdf", "tab\there.pdf"]
PATHS = ["/home/a b/" + name for name in NAMES]


def entries(file):
    parser = configparser.RawConfigParser(delimiters="=", interpolation=None)
    parser.optionxform = str
    parser.read(PACKAGING / file, encoding="utf-8")
    return parser


def by_desktop_entry(command, paths):
    """The arguments that a Desktop Entry's Exec stands for, as freedesktop.org has it for "The Exec key"."""
    arguments = []
    for argument in re.findall(r'"(?:[^"\\]|\\.)*"|\S+', command):
        if argument == "%F":
            arguments += paths
        elif argument.startswith('"'):
            arguments.append(re.sub(r'\\(["`$\\])', r"\1", argument[1:-1]))
        else:
            arguments.append(argument.replace("%%", "%"))
    return arguments


def by_nemo(action, paths):
    """Nemo puts paths into the text, in the quotes that the action asks for, and splits that as a shell does."""
    quote = {"single": "'", "double": '"', "": ""}[action.get("Quote", "")]
    escaped = [path.replace("'", "'\\''") if quote == "'" else path for path in paths]
    return shlex.split(action["Exec"].replace("%F", " ".join(quote + path + quote for path in escaped)))


class Recorded(unittest.TestCase):
    """Commands are run with a program in the place of the window's that writes down its arguments."""

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.record = Path(self.folder.name) / "record"
        program = Path(self.folder.name) / "vantora-desktop"
        program.write_text('#!/bin/sh\nprintf "%s\\0" "$@" >"$RECORD"\n', encoding="ascii")
        program.chmod(0o755)

    def arrived(self, arguments):
        self.assertEqual(arguments[0], "vantora-desktop")
        environment = {"PATH": f"{self.folder.name}:{os.environ['PATH']}", "RECORD": str(self.record)}
        subprocess.run(arguments, env=environment, check=True)
        return self.record.read_text(encoding="utf-8").split("\0")[:-1]

    def expect_all(self, arguments):
        self.assertEqual(self.arrived(arguments), ["--", *PATHS])

    def test_the_desktop_hands_over_all_names(self):
        entry = entries("desktop/vantora-desktop.desktop")["Desktop Entry"]
        self.expect_all(by_desktop_entry(entry["Exec"], PATHS))

    def test_dolphin_hands_over_all_names(self):
        action = entries("filemanagers/dolphin/vantora-remove-pages.desktop")["Desktop Action removePages"]
        self.expect_all(by_desktop_entry(action["Exec"], PATHS))

    def test_thunar_hands_over_all_names(self):
        entry = entries("filemanagers/thunar/vantora-remove-pages.desktop")["Desktop Entry"]
        self.expect_all(by_desktop_entry(entry["Exec"], PATHS))

    def test_nemo_hands_over_all_names(self):
        action = entries("filemanagers/nemo/vantora-remove-pages.nemo_action")["Nemo Action"]
        self.expect_all(by_nemo(action, PATHS))

    def test_nautilus_hands_over_all_names(self):
        menu, spawned = nautilus(["de_DE", "de", "C"])
        item = menu.get_file_items([document(path) for path in PATHS])[0]
        item.activated()
        self.expect_all(spawned[0])


def document(path, mime="application/pdf"):
    location = types.SimpleNamespace(get_path=lambda: path)
    return types.SimpleNamespace(get_mime_type=lambda: mime, get_location=lambda: location)


class Item:
    def __init__(self, name, label, icon):
        self.name, self.label, self.icon, self.activated = name, label, icon, None

    def connect(self, signal, called, *data):
        assert signal == "activate"
        self.activated = lambda: called(self, *data)


def nautilus(languages):
    """The extension's provider in a session with these languages, and the list of what it will have started."""
    spawned = []
    glib = types.SimpleNamespace(get_language_names=lambda: languages,
                                 SpawnFlags=types.SimpleNamespace(SEARCH_PATH=4),
                                 spawn_async=lambda arguments, flags: spawned.append(arguments))
    repository = types.ModuleType("gi.repository")
    repository.GLib = glib
    repository.GObject = types.SimpleNamespace(GObject=type("GObject", (), {}))
    repository.Nautilus = types.SimpleNamespace(MenuProvider=type("MenuProvider", (), {}), MenuItem=Item)
    scope = {}
    with mock.patch.dict(sys.modules, {"gi": types.ModuleType("gi"), "gi.repository": repository}):
        source = PACKAGING / "filemanagers/nautilus/vantora_remove_pages.py"
        exec(compile(source.read_text(encoding="utf-8"), source, "exec"), scope)
    return scope["RemovePages"](), spawned


class Nautilus(unittest.TestCase):
    def test_offers_nothing_for_what_the_window_cannot_open(self):
        menu, _ = nautilus(["C"])
        for reason, files in [("nothing is selected", []),
                              ("not all are PDF", [document("/a.pdf"), document("/a.txt", "text/plain")]),
                              ("not on this machine", [document(None)])]:
            with self.subTest(reason):
                self.assertEqual(menu.get_file_items(files), [])

    def test_speaks_the_first_language_of_the_session_that_there_is(self):
        for languages, expected in [(["de_DE.UTF-8", "de", "C"], "Seiten entfernen …"),
                                    (["fr", "de", "C"], "Seiten entfernen …"),
                                    (["en_GB", "en", "de", "C"], "Remove Pages…"),
                                    (["fr", "C"], "Remove Pages…")]:
            with self.subTest(languages):
                menu, _ = nautilus(languages)
                self.assertEqual(menu.get_file_items("a window", [document("/a.pdf")])[0].label, expected)


class Entries(unittest.TestCase):
    def test_say_the_same_everywhere_and_in_german(self):
        for file, group in [("dolphin/vantora-remove-pages.desktop", "Desktop Action removePages"),
                            ("thunar/vantora-remove-pages.desktop", "Desktop Entry"),
                            ("nemo/vantora-remove-pages.nemo_action", "Nemo Action")]:
            with self.subTest(file):
                entry = entries("filemanagers/" + file)[group]
                self.assertEqual((entry["Name"], entry["Name[de]"]), ("Remove Pages…", "Seiten entfernen …"))


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    PACKAGING = Path(sys.argv.pop())
    unittest.main()
