#!/usr/bin/env python3
"""Damages copies of real documents by a seed, removes a page from each, and says what came of it.

    fuzz/damaged_files.py build/release/bin/vantora [FOLDER] [--copies 300] [--seed 1] [--seconds 600]

FOLDER holds whole documents (without it, those are some forms of the sample document); each copy is one
of them, damaged in one of several ways. The first table counts what became of the copies, without and with --salvage; the second one why they were refused, and
how many of these qpdf and poppler open. What must not happen is listed by its copy and makes the exit
status 1: another page removed than the one meant, a page lost or blanked without a word. --keep FOLDER
keeps these copies.
"""
import argparse
import collections
import json
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile
import time

os.environ["XDG_CONFIG_HOME"] = "/nonexistent"  # runs without the defaults of whoever starts this

WORDS = [b"endobj", b"endstream", b"stream", b"obj", b"xref", b"trailer", b"startxref", b"/Kids", b"/Count",
         b"/Contents", b"/Length", b"/Type", b"/Page", b"/Parent", b"/Root", b">>", b"<<", b" R"]


def flipped_bytes(data, chance):
    for _ in range(chance.choice([1, 10, 100])):
        data[chance.randrange(len(data))] ^= 1 << chance.randrange(8)
    return data


def cut_end(data, chance):
    return data[:int(len(data) * chance.uniform(0.3, 1))]


def lost_block(data, chance):
    size = chance.choice([512, 4096])
    start = chance.randrange(max(1, len(data) - size))
    data[start:start + size] = bytes(min(size, len(data) - start))
    return data


def moved_table(data, chance):
    start = chance.randrange(len(data))
    junk = bytes(chance.randrange(256) for _ in range(chance.choice([1, 7, 300])))
    return data[:start] + junk + data[start:]


def missing_bytes(data, chance):
    start = chance.randrange(len(data))
    del data[start:start + chance.choice([1, 3, 50])]
    return data


def swapped_words(data, chance):
    for _ in range(chance.choice([1, 3])):
        word = chance.choice([w for w in WORDS if w in data] or [data[:1]])
        places = [match.start() for match in re.finditer(re.escape(word), data)]
        start = chance.choice(places)
        data[start:start + len(word)] = chance.choice(WORDS)
    return data


WAYS = [flipped_bytes, cut_end, lost_block, moved_table, missing_bytes, swapped_words]


def run(*command, seconds=300):
    try:
        done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              timeout=seconds, check=False)
        return done.returncode, done.stdout.decode(errors="replace"), done.stderr.decode(errors="replace")
    except subprocess.TimeoutExpired:
        return None, "", "took too long"


def page_texts(path):
    """The words of each page; none when poppler doesn't open the document."""
    status, text, _ = run("pdftotext", "-enc", "UTF-8", path, "-")
    return [" ".join(page.split()) for page in text.split("\f")[:-1]] if status == 0 else None


def pages_of(path):
    status, text, _ = run("pdfinfo", path)
    found = re.search(r"^Pages:\s+(\d+)", text, re.M)
    return int(found.group(1)) if status == 0 and found else None


class Outcome:
    """What the program made of a copy."""

    def __init__(self, program, copy, output, page, options):
        output.unlink(missing_ok=True)
        self.status, text, self.said = run(program, "run", *options, "--pages", page, copy, "-o", output, "--json",
                                           "-j", 0, "--overwrite")
        lines = [json.loads(line) for line in text.splitlines() if line.startswith("{")]
        self.report = lines[0] if lines else {}
        self.is_done = self.report.get("status") == "done"
        self.losses = self.report.get("losses", [])
        self.texts = page_texts(output) if self.is_done else None

    def kind(self):
        if self.is_done:
            return "losses" if self.losses else "done"
        return "refused" if self.status == 1 and self.report else "broken"

    def why(self):
        errors = self.report.get("errors") or [{"reason": "broken", "text": self.said.strip()[-200:]}]
        return errors[0]["reason"] + ": " + re.sub(r"\d+", "N", errors[0]["text"])[:110]


def faults_of(outcome, whole, seen, page):
    """What must not happen. `whole` are the texts of the whole document, `seen` what a viewer shows of the copy."""
    if outcome.kind() == "broken":
        return [outcome.why()]
    if not outcome.is_done:
        return []
    if outcome.texts is None:
        return ["the output can't be opened"]
    gone = {page} | {loss["page"] for loss in outcome.losses if "left out" in loss["text"]}
    poor = {loss["page"] for loss in outcome.losses}
    kept = [number for number in range(1, outcome.report["pages_before"] + 1) if number not in gone]
    faults = []
    if len(outcome.texts) != len(kept):
        faults.append(f"{len(outcome.texts)} pages where {len(kept)} were to stay")
    if outcome.report["pages_before"] != len(whole):
        # Fewer pages than the whole one are right only where a viewer sees no more either.
        if seen is None or outcome.report["pages_before"] < len(seen):
            faults.append(f"has {outcome.report['pages_before']} of {len(whole)} pages, no word")
        return faults
    for number, text in zip(kept, outcome.texts):
        before = whole[number - 1]
        if before and not text and number not in poor and seen and number <= len(seen) and seen[number - 1]:
            faults.append(f"page {number} is blank")
        if text and text != before and text in whole and whole.count(text) == 1:
            faults.append(f"page {whole.index(text) + 1} is in the place of page {number}")
    return faults


def documents_in(folder):
    """The texts of the pages by the document's path."""
    documents = {}
    for path in sorted(folder.glob("**/*.pdf")):
        texts = page_texts(path) if path.stat().st_size < 3_000_000 else None
        if texts and len(texts) > 1 and pages_of(path) == len(texts):
            documents[path] = texts
    if not documents:
        sys.exit("no document of two pages and more can be read there")
    return documents


def made_documents(folder):
    """A folder with the sample document as it is, with object streams, and linearised."""
    made = folder / "documents"
    made.mkdir()
    sample = made / "plain.pdf"
    subprocess.run([sys.executable, pathlib.Path(__file__).parents[1] / "examples/make_sample.py", sample], check=True)
    for name, form in (("packed", "--object-streams=generate"), ("linearised", "--linearize")):
        subprocess.run(["qpdf", form, sample, made / f"{name}.pdf"], check=True)
    return made


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("folder", type=pathlib.Path, nargs="?")
    parser.add_argument("--copies", type=int, default=300)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--seconds", type=float, default=float("inf"))
    parser.add_argument("--modes", default="plain,salvage")
    parser.add_argument("--keep", type=pathlib.Path)
    arguments = parser.parse_args()

    with tempfile.TemporaryDirectory() as folder:
        return try_copies(arguments, pathlib.Path(folder))


def try_copies(arguments, folder):
    documents = documents_in(arguments.folder or made_documents(folder))
    kinds = collections.Counter()
    reasons = collections.defaultdict(collections.Counter)
    bad = []
    tried = 0
    end = time.monotonic() + arguments.seconds
    copy, output = folder / "copy.pdf", folder / "out.pdf"
    for number in range(arguments.copies):
        if time.monotonic() > end:
            break
        tried += 1
        chance = random.Random(arguments.seed * 1_000_000 + number)
        path = chance.choice(list(documents))
        way = chance.choice(WAYS)
        copy.write_bytes(way(bytearray(path.read_bytes()), chance))
        page = chance.randrange(1, len(documents[path]) + 1)
        seen = page_texts(copy)
        qpdf = run("qpdf", "--check", copy)[0] in (0, 3)
        for name in arguments.modes.split(","):
            options = [] if name == "plain" else ["--" + name]
            outcome = Outcome(arguments.program, copy, output, page, options)
            kinds[way.__name__, name, outcome.kind()] += 1
            if outcome.kind() in ("refused", "broken"):
                count = reasons[name, outcome.why()]
                count["copies"] += 1
                count["qpdf"] += qpdf
                count["poppler"] += bool(seen)
            for fault in faults_of(outcome, documents[path], seen, page):
                bad.append(f"copy {number} ({path.name}, {way.__name__}, {name}, page {page}): {fault}")
                if arguments.keep:
                    arguments.keep.mkdir(exist_ok=True)
                    shutil.copy(copy, arguments.keep / f"{number}.pdf")

    print(f"{tried} damaged copies of {len(documents)} documents, seed {arguments.seed}\n")
    print(f"{'damage':16}{'mode':10}{'done':>8}{'losses':>8}{'refused':>8}{'broken':>8}")
    for way in [way.__name__ for way in WAYS]:
        for name in arguments.modes.split(","):
            counts = "".join(f"{kinds[way, name, kind]:8}" for kind in ("done", "losses", "refused", "broken"))
            print(f"{way:16}{name:10}{counts}")
    print(f"\n{'mode':10}{'copies':>7}{'qpdf':>6}{'poppler':>8}  why")
    for (name, why), count in sorted(reasons.items(), key=lambda item: (item[0][0], -item[1]["copies"])):
        print(f"{name:10}{count['copies']:7}{count['qpdf']:6}{count['poppler']:8}  {why}")
    print(f"\n{len(bad)} that must not happen" + "".join("\n  " + line for line in bad))
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
