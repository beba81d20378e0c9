"""Shares of one run, started by GNU parallel as docs/scaling.md shows it.

scaling_test.py PROGRAM SOURCE_DIR
"""
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

os.environ["XDG_CONFIG_HOME"] = "/nonexistent"  # runs without the defaults of whoever starts this

PROGRAM = SOURCE_DIR = None
DOCUMENTS = 60
PAGE = "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]>>"


def document(pages):
    """A small PDF; its cross-reference table is left to be repaired."""
    kids = " ".join(f"{3 + n} 0 R" for n in range(pages))
    bodies = ["<</Type/Catalog/Pages 2 0 R>>", f"<</Type/Pages/Count {pages}/Kids[{kids}]>>", *[PAGE] * pages]
    objects = "".join(f"{n} 0 obj\n{body}\nendobj\n" for n, body in enumerate(bodies, 1))
    return f"%PDF-1.7\n{objects}trailer\n<</Root 1 0 R/Size {len(bodies) + 1}>>\nstartxref\n0\n%%EOF\n"


def shown_command(shares):
    """The command of the document, for so many shares on this machine."""
    text = (SOURCE_DIR / "docs/scaling.md").read_text()
    command = re.search(r"```sh\n(seq 8 \| parallel .*?)```", text, re.DOTALL).group(1)
    command, changes = re.subn(r" --sshlogin \S+", "", command)
    assert changes == 1
    return command.replace("seq 8", f"seq {shares}").replace("{}/8", f"{{}}/{shares}")


class Shares(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        (self.folder / "cut").mkdir()
        for number in range(DOCUMENTS):
            folder = self.folder / "scans" / str(number % 3)
            folder.mkdir(parents=True, exist_ok=True)
            (folder / f"{number}.pdf").write_text(document(3))

    def run_shares(self):
        environment = {**os.environ, "PATH": f"{Path(PROGRAM).parent}:{os.environ['PATH']}", "HOME": str(self.folder)}
        return subprocess.run(["bash", "-c", shown_command(3)], cwd=self.folder, env=environment, capture_output=True,
                              text=True)

    def reports(self):
        lines = [line for file in self.folder.glob("cut-*.jsonl") for line in file.read_text().splitlines()]
        return [json.loads(line) for line in lines]

    def outputs(self):
        return {str(file.relative_to(self.folder / "cut")) for file in (self.folder / "cut").rglob("*") if file.is_file()}

    def test_do_every_document_once(self):
        result = self.run_shares()
        self.assertEqual(result.returncode, 0, result.stderr)
        inputs = {str(file.relative_to(self.folder / "scans")) for file in (self.folder / "scans").rglob("*.pdf")}
        self.assertEqual(self.outputs(), inputs)
        reports = self.reports()
        self.assertEqual(sorted(report["input"] for report in reports), sorted(f"scans/{name}" for name in inputs))
        self.assertEqual({report["pages_after"] for report in reports}, {2})
        self.assertEqual(len(list(self.folder.glob("cut-*.jsonl"))), 3)

    def test_are_gone_on_with_by_the_same_command(self):
        broken = self.folder / "scans/1/1.pdf"
        whole = broken.read_text()
        broken.write_text("no PDF")
        self.assertNotEqual(self.run_shares().returncode, 0)
        self.assertEqual(len(self.outputs()), DOCUMENTS - 1)
        broken.write_text(whole)
        result = self.run_shares()
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(len(self.outputs()), DOCUMENTS)
        self.assertEqual([report["status"] for report in self.reports() if report["input"] == "scans/1/1.pdf"],
                         ["failed", "done"])
        self.assertEqual(len(self.reports()), DOCUMENTS + 1)


if __name__ == "__main__":
    PROGRAM, SOURCE_DIR = sys.argv[1], Path(sys.argv[2])
    unittest.main(argv=sys.argv[:1])
