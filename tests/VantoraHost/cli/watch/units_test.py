"""The units that watch folders are what systemd takes, and leave little open.

units_test.py PROGRAM FOLDER_OF_SERVICES FOLDER_OF_TIMERS
"""
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

os.environ["XDG_CONFIG_HOME"] = "/nonexistent"  # runs without the defaults of whoever starts this

PROGRAM = FOLDERS = None


class Units(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        (self.folder / "run").mkdir(mode=0o700)
        self.units = {kind: self.units_of(kind) for kind in ("system", "user")}

    def units_of(self, kind):
        """Copies that start the program that was built."""
        (self.folder / kind).mkdir()
        for source in [path for folder in FOLDERS for path in (folder / kind).iterdir()
                       if path.suffix in (".service", ".timer")]:
            text = re.sub(r"(?m)^ExecStart=\S+", f"ExecStart={PROGRAM}", source.read_text())
            (self.folder / kind / source.name).write_text(text)
        return sorted((self.folder / kind).iterdir())

    def analyze(self, kind, *arguments):
        result = subprocess.run(["systemd-analyze", f"--{kind}", *map(str, arguments)], capture_output=True, text=True,
                                env={**os.environ, "XDG_RUNTIME_DIR": str(self.folder / "run"), "LC_ALL": "C.UTF-8"})
        return result.returncode, result.stdout + result.stderr

    def test_are_there_for_the_system_and_for_users(self):
        for kind, units in self.units.items():
            self.assertEqual([unit.name for unit in units],
                             ["vantora-watch-once@.service", "vantora-watch-once@.timer", "vantora-watch@.service"], kind)

    def test_have_nothing_that_systemd_does_not_take(self):
        for kind, units in self.units.items():
            self.assertEqual(self.analyze(kind, "verify", "--man=no", *units), (0, ""), kind)

    def test_leave_little_open(self):
        for kind, most in [("system", 10), ("user", 40)]:
            for unit in self.units[kind]:
                if unit.suffix == ".service":
                    status, said = self.analyze(kind, "security", "--offline=yes", f"--threshold={most}", unit)
                    self.assertEqual(status, 0, said)

    def test_give_options_that_the_program_has(self):
        for units in self.units.values():
            for unit in units:
                for line in re.findall(r"(?m)^ExecStart=(.*)", unit.read_text()):
                    line = line.replace("$FOLDERS", "/nonexistent").replace("${OUTPUTS}", "/").replace("$OPTIONS", "-p 1")
                    result = subprocess.run(line.split(), capture_output=True, text=True)
                    self.assertEqual((result.returncode, result.stderr.split(";")[0]),
                                     (1, "vantora: error: /nonexistent: there is no such folder"))


if __name__ == "__main__":
    PROGRAM, FOLDERS = sys.argv[1], [Path(folder) for folder in sys.argv[2:]]
    unittest.main(argv=sys.argv[:1])
