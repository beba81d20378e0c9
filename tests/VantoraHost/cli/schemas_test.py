"""What the programs print in JSON is what the schemas in docs/schemas say.

schemas_test.py PROGRAM SOURCE_DIR
"""
import copy
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import jsonschema

os.environ["XDG_CONFIG_HOME"] = "/nonexistent"  # runs without the defaults of whoever starts this

PROGRAM = SOURCE_DIR = None
COMMANDS = ["run", "info", "pages", "verify", "config"]

# Two pages; a field for a signature, page labels and an attachment.
FORM = """%PDF-1.7
1 0 obj
<< /Type /Catalog /Pages 2 0 R /AcroForm << /Fields [5 0 R] /SigFlags 1 >>
   /PageLabels << /Nums [0 << /S /r >>] >> /Names << /EmbeddedFiles << /Names [(a.txt) 6 0 R] >> >>
   /OCProperties << /OCGs [8 0 R] /D << /Order [8 0 R] >> >> >>
endobj
2 0 obj
<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 /MediaBox [0 0 300 400] >>
endobj
3 0 obj
<< /Type /Page /Parent 2 0 R /Annots [5 0 R] >>
endobj
4 0 obj
<< /Type /Page /Parent 2 0 R >>
endobj
5 0 obj
<< /Type /Annot /Subtype /Widget /FT /Sig /T (Approval) /Rect [0 0 0 0] /F 132 /P 3 0 R >>
endobj
6 0 obj
<< /Type /Filespec /F (a.txt) /UF (a.txt) /EF << /F 7 0 R >> >>
endobj
7 0 obj
<< /Type /EmbeddedFile /Length 1 >>
stream
a
endstream
endobj
8 0 obj
<< /Type /OCG /Name (Layer) >>
endobj
trailer
<< /Root 1 0 R >>
"""

# Each a command with what it reads and says; together they print every member that there is.
LINES = [
    "run --pages 2,4-6 sample.pdf -o cut.pdf --json --checksums sums --report-hashes --report cut.jsonl",
    "run --pages 1 form.pdf -o labels.pdf --json --certificate kept.pdf",
    "run --pages 1 sample.pdf locked.pdf missing.pdf --dry-run --json",
    "run --pages 1 sample.pdf -o cut.pdf --json --skip-existing",
    "run --pages 1-3 sample.pdf form.pdf -n --json -j 1",
    "run --ranges ranges.tsv sample.pdf form.pdf -n --json",
    "run --pages 1 torn.pdf -o salvaged.pdf --json --salvage",
    "run --pages --json",
    "info sample.pdf form.pdf locked.pdf missing.pdf --json",
    "info -v sample.pdf form.pdf --json",
    "info --json",
    "pages --choose blank --choose last:2 sample.pdf form.pdf locked.pdf --json",
    "pages --keep first sample.pdf --json",
    "verify sample.pdf cut.pdf --pages 2,4-6 --json",
    "verify sample.pdf cut.pdf --pages 2,4 --json",
    "verify sample.pdf missing.pdf --pages 1 --json",
    "config --json",
    "config --profile scans --json",
    "config --profile none --json",
]


def schema_of(command):
    return json.loads((SOURCE_DIR / f"docs/schemas/{command}.schema.json").read_text())


def parts_of(schema):
    """The schema and all schemas in it."""
    yield schema
    for key in ("properties", "$defs"):
        for part in schema.get(key, {}).values():
            yield from parts_of(part)
    if isinstance(schema.get("items"), dict):
        yield from parts_of(schema["items"])


def closed(schema):
    """The schema with no member allowed that it does not name."""
    result = copy.deepcopy(schema)
    for part in parts_of(result):
        if "properties" in part:
            part["additionalProperties"] = False
    return result


def members_of(value):
    """The names of all members in a value."""
    if isinstance(value, dict):
        for name, member in value.items():
            yield name
            yield from members_of(member)
    if isinstance(value, list):
        for one in value:
            yield from members_of(one)


def changed(value):
    """The value with one of its members missing, named otherwise or of another type, one after the other."""
    if isinstance(value, list):
        for index, one in enumerate(value):
            for other in changed(one):
                yield value[:index] + [other] + value[index + 1:]
    if not isinstance(value, dict):
        return
    for name, member in value.items():
        rest = {key: kept for key, kept in value.items() if key != name}
        yield {**rest, name + "_": member}
        yield {**rest, name: {"another": "type"} if not isinstance(member, dict) else 1}
        for other in changed(member):
            yield {**rest, name: other}


class Schemas(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.TemporaryDirectory()
        cls.folder = Path(cls.scratch.name)
        cls.make_inputs()
        cls.printed = {command: [] for command in COMMANDS}
        for line in LINES:
            words = line.split()
            done = subprocess.run([PROGRAM, *words], cwd=cls.folder, capture_output=True, text=True,
                                  env={**os.environ, "XDG_CONFIG_HOME": str(cls.folder)})
            cls.printed[words[0]] += [(line, json.loads(text)) for text in done.stdout.splitlines()]
        cls.printed["run"] += [("report", json.loads(text))
                               for text in (cls.folder / "cut.jsonl").read_text().splitlines()]

    @classmethod
    def tearDownClass(cls):
        cls.scratch.cleanup()

    @classmethod
    def make_inputs(cls):
        def qpdf(*arguments):
            subprocess.run(["qpdf", "--warning-exit-0", *arguments], cwd=cls.folder, check=True, capture_output=True)

        subprocess.run([sys.executable, SOURCE_DIR / "examples/make_sample.py", cls.folder / "sample.pdf"], check=True)
        (cls.folder / "form.txt").write_text(FORM)
        qpdf("form.txt", "form.pdf")
        qpdf("--encrypt", "secret", "secret", "256", "--", "sample.pdf", "locked.pdf")
        qpdf("--qdf", "--object-streams=disable", "sample.pdf", "torn.pdf")
        torn = (cls.folder / "torn.pdf").read_bytes()
        (cls.folder / "torn.pdf").write_bytes(re.sub(rb"(%% Page 5\n.*\n\d+ 0) obj", rb"\1 xxx", torn))
        (cls.folder / "ranges.tsv").write_text("sample.pdf\t1-2\n")
        (cls.folder / "vantora").mkdir()
        (cls.folder / "vantora/vantora.toml").write_text(
            "strict = true\njobs = 2\n[profile.scans]\nchoose = ['blank', 'last:2']\nname = '{name}{ext}'\n")

    def test_the_schemas_are_schemas(self):
        for command in COMMANDS:
            with self.subTest(command):
                jsonschema.Draft202012Validator.check_schema(schema_of(command))

    def test_what_is_printed_is_valid_and_has_no_member_that_a_schema_does_not_name(self):
        for command in COMMANDS:
            validator = jsonschema.Draft202012Validator(closed(schema_of(command)))
            self.assertGreater(len(self.printed[command]), 2)
            for line, value in self.printed[command]:
                with self.subTest(line=line):
                    best = jsonschema.exceptions.best_match(validator.iter_errors(value))
                    self.assertIsNone(best, f"{value}\n{best}")

    def test_every_member_that_a_schema_names_is_printed_by_some_command(self):
        for command in COMMANDS:
            named = {name for part in parts_of(schema_of(command)) for name in part.get("properties", {})}
            printed = {name for _, value in self.printed[command] for name in members_of(value)}
            self.assertEqual(named - printed, set(), command)

    def test_a_member_that_is_changed_is_found(self):
        free = {"options", "reasons"}  # whose members have names of their own
        for command in COMMANDS:
            validator = jsonschema.Draft202012Validator(closed(schema_of(command)))
            line, value = self.printed[command][0]
            tried = 0
            for other in changed({key: member for key, member in value.items() if key != "run"}):
                whole = {**other, "run": value["run"]} if "run" in value else other
                if not free & set(members_of(other)) or command == "config":
                    self.assertFalse(validator.is_valid(whole), f"{line}: {whole}")
                    tried += 1
            self.assertGreater(tried, 10, command)

    def test_a_failure_is_told_in_the_same_words_by_every_command(self):
        definitions = [schema_of(command)["$defs"] for command in COMMANDS]
        for other in definitions[1:]:
            self.assertEqual(other["failure"], definitions[0]["failure"])
            self.assertEqual(other["error"], definitions[0]["error"])


if __name__ == "__main__":
    PROGRAM, SOURCE_DIR = sys.argv[1], Path(sys.argv[2])
    unittest.main(argv=sys.argv[:1])
