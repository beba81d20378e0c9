#!/usr/bin/env python3
"""Times vantora beside other tools, in one run, and prints a table.

run.py [--runs N] [--large] [--only WORD] [--inputs DIR] [--scans N] [--documents DIR]

Inputs are made once and kept in the inputs folder. Tools that are not installed are named and left
out; one that takes longer than LIMIT seconds is cut off and named. Commands of one row run in turn,
so that a noisy machine slows all of them; times are medians, ratios are to vantora's median. Every
output's pages are counted, and vantora's are checked by qpdf.
"""
import argparse
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

os.environ["XDG_CONFIG_HOME"] = "/nonexistent"  # runs without the defaults of whoever starts this

ROOT = Path(__file__).resolve().parent.parent
VANTORA = ROOT / "build" / "release" / "bin" / "vantora"
MAKE_INPUTS = ROOT / "benchmarks" / "make_inputs.py"
LIMIT = 120      # seconds after which a tool is cut off
RUN_ONCE = 15    # a command that takes longer is not repeated


class Measurement:
    def __init__(self):
        self.seconds = []
        self.peak = 0  # kilobytes, of the largest process
        self.note = ""

    def add(self, command):
        start = time.monotonic()
        process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, start_new_session=True)
        try:
            errors = process.communicate(timeout=LIMIT)[1]
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, 9)
            process.communicate()
            self.note = f"cut off after {LIMIT} s"
            return False
        self.seconds.append(time.monotonic() - start)
        if process.returncode not in (0, 3):  # qpdf: 3 is success with warnings
            self.note = "failed: " + errors.decode(errors="replace").strip().splitlines()[-1][:80]
            return False
        return self.seconds[-1] < RUN_ONCE

    @property
    def median(self):
        return statistics.median(self.seconds) if self.seconds and not self.note else None


def peak_memory(command):
    """Peak memory of one run in kilobytes, measured by a process of its own."""
    code = ("import resource, subprocess, sys; subprocess.run(sys.argv[1:], stdout=subprocess.DEVNULL, "
            "stderr=subprocess.DEVNULL); print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)")
    return int(subprocess.run([sys.executable, "-c", code, *map(str, command)], capture_output=True, text=True).stdout)


def processor_time(command):
    """Seconds of a processor that a command takes, its processes included."""
    process = subprocess.Popen(list(map(str, command)), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    used = os.wait4(process.pid, 0)[2]
    process.returncode = 0
    return used.ru_utime + used.ru_stime


def pages_of(path):
    return int(subprocess.run(["qpdf", "--show-npages", path], capture_output=True, text=True).stdout or -1)


class Bench:
    def __init__(self, arguments):
        self.runs = arguments.runs
        self.only = arguments.only
        self.inputs = Path(arguments.inputs)
        self.inputs.mkdir(parents=True, exist_ok=True)
        self.out = self.inputs / "out"
        self.out.mkdir(exist_ok=True)
        self.trash = self.inputs / "trash"
        shutil.rmtree(self.trash, ignore_errors=True)
        self.trash.mkdir()

    def make(self, name, *call):
        path = self.inputs / name
        if not path.exists():
            print(f"making {name} ...", file=sys.stderr)
            partial = self.inputs / (name + ".partial")
            shutil.rmtree(partial, ignore_errors=True)
            subprocess.run([MAKE_INPUTS, *map(str, call), partial], check=True)
            partial.rename(path)
        return path

    def written(self, name, source, option):
        """What qpdf makes of a document with an option."""
        path = self.inputs / name
        if not path.exists():
            subprocess.run(["qpdf", option, source, path], check=True)
        return path

    def pages_file(self, name, pages):
        path = self.inputs / name
        path.write_text(pages)
        return f"@{path}"

    def row(self, title, commands, expected_pages=None):
        """Runs commands (name -> argument list, with OUT for the output) in turn and prints their table."""
        if self.only and self.only not in title:
            return
        print(f"\n### {title}\n")
        results = {name: Measurement() for name in commands}
        active = {name for name, command in commands.items() if shutil.which(str(command[0]))}
        for name in commands.keys() - active:
            results[name].note = "not installed"
        for _ in range(self.runs):
            for name in list(commands):
                if name in active:
                    self.clean()
                    os.sync()  # what others left for the disk to do is not this one's time
                    if not results[name].add(self.filled(commands[name], name)):
                        active.discard(name)
                    self.check(name, results[name], expected_pages)
        for name, result in results.items():
            if result.median is not None and result.median < RUN_ONCE:
                self.clean()
                result.peak = peak_memory(self.filled(commands[name], name))
        self.print(results)

    def filled(self, command, name):
        out = self.out / (name.replace(" ", "-").replace("/", "-") + ".pdf")
        return [str(out) if part == "OUT" else str(self.out) if part == "OUTDIR" else str(part) for part in command]

    def clean(self):
        # Creating thousands of files just after as many were removed is slow on ext4, which passes over their inodes
        # for a while; so they go only at the end.
        if sum(1 for _ in zip(self.out.iterdir(), range(100))) == 100:
            self.out.rename(tempfile.mkdtemp(dir=self.trash))
        else:
            shutil.rmtree(self.out)
        self.out.mkdir()

    def check(self, name, result, expected_pages):
        outputs = sorted(self.out.glob("**/*.pdf"))
        if result.note or expected_pages is None or name.startswith("cp"):
            return
        pages = pages_of(outputs[0]) if outputs else 0
        if pages != expected_pages:
            result.note = f"wrong: {pages} pages instead of {expected_pages}"
        if name == "vantora" and len(result.seconds) == 1:
            checked = subprocess.run(["qpdf", "--check", outputs[0]], capture_output=True)
            if checked.returncode != 0:
                result.note = "wrong: qpdf --check finds errors"

    @staticmethod
    def print(results):
        ours = results["vantora"].median
        print("| | median s | min to max | times vantora | peak MB |")
        print("|---|---|---|---|---|")
        for name, result in results.items():
            if result.median is None:
                print(f"| {name} | {result.note} | | | |")
                continue
            ratio = f"{result.median / ours:.2f}" if ours else "?"
            span = f"{min(result.seconds):.3f} to {max(result.seconds):.3f}"
            peak = f"{result.peak / 1024:.0f}" if result.peak else ""
            print(f"| {name} | {result.median:.3f} | {span} | {ratio} | {peak} |")
        sys.stdout.flush()


def odd_pages(bench, count, document, title):
    odd = bench.pages_file(f"odd-{count}.txt", ",".join(str(page) for page in range(1, count + 1, 2)))
    even = [str(page) for page in range(2, count + 1, 2)]
    merge = ["mutool", "merge", "-o", "OUT"]
    for start in range(0, len(even), 10000):  # an argument has a largest length
        merge += [document, ",".join(even[start:start + 10000])]
    bench.row(title, {
        "vantora": [VANTORA, "run", "--quiet", "--pages", odd, document, "-o", "OUT"],
        "qpdf rewriting only": ["qpdf", "--stream-data=preserve", document, "OUT"],
        "mutool merge": merge,
        "pdftk cat": ["pdftk", document, "cat", "1-endeven", "output", "OUT"],
        "qpdf --pages": ["qpdf", document, "--pages", ".", "1-z:even", "--", "OUT"],
        "cp": ["cp", document, "OUT"],
    })


def in_workers(folder):
    """One page of each document in a folder, with a worker process for each processor, with one and with none."""
    command = [VANTORA, "run", "--quiet", "--pages", "2", "--recursive", folder, "-d", "OUTDIR"]
    return {"vantora": command, "vantora -j 1": [*command, "-j", "1"], "vantora -j 0": [*command, "-j", "0"]}


def choosing(bench, documents):
    """What choosing pages costs: blank ones among scans of 100 pages a document, and by their text."""
    loop = 'for file in "$0"/*.pdf; do {} ; done'
    missing = [tool for tool in ("pdftoppm", "cjpeg", "tiffcp") if not shutil.which(tool)]
    if missing:
        print(f"\nno rows of scans: {', '.join(missing)} not installed")
    for kind in () if missing else ("jpeg", "fax"):
        scans = bench.make(f"scans-{kind}-{documents}", "scans", kind, documents, 100)
        bench.row(f"blank pages of {documents * 100} scans of 300 dpi, {kind}, two workers", {
            "vantora": [VANTORA, "run", "--quiet", "--choose", "blank", "--dry-run", "-j", "2", "-r", scans],
            "pdftoppm -r 50 -gray": ["sh", "-c", loop.format('pdftoppm -r 50 -gray "$file" "$1/page"'), scans, "OUTDIR"],
        })
    texts = bench.make(f"texts-{documents}", "many", documents * 10, 100)
    bench.row(f"pages by their text of {documents * 1000} pages, two workers", {
        "vantora": [VANTORA, "run", "--quiet", "--choose", "text:nowhere at all", "--dry-run", "-j", "2", "-r", texts],
        "pdfgrep -c": ["sh", "-c", 'pdfgrep -c "nowhere at all" "$0"/*.pdf; true', texts],
    })


def real_documents(bench, folder):
    """Documents of other programs, those with two pages or more, in one run beside loops over other tools; and which of
    them takes how much longer than with qpdf, in processor time beyond what each takes for ten plain pages."""
    documents = bench.inputs / "real"
    shutil.rmtree(documents, ignore_errors=True)
    documents.mkdir()
    for document in sorted(Path(folder).glob("**/*.pdf")):
        if pages_of(document) >= 2:
            shutil.copyfile(document, documents / document.name)
    count = sum(1 for _ in documents.iterdir())
    loop = 'for file in "$0"/*.pdf; do {} ; done; true'
    title = f"page 2 of each of {count} real documents"
    bench.row(title, {
        "vantora": ["sh", "-c", '"$2" run --quiet --pages 2 -r "$0" -d "$1" || true', documents, "OUTDIR", VANTORA],
        "shell loop over mutool": ["sh", "-c", loop.format('mutool merge -o "$1/${file##*/}" "$file" 1,3-N'), documents, "OUTDIR"],
        "shell loop over qpdf": ["sh", "-c", loop.format('qpdf "$file" --pages . 1,3-z -- "$1/${file##*/}"'), documents, "OUTDIR"],
    })
    if bench.only and bench.only not in title:
        return

    def beyond_start(document, reference):
        out = bench.out / "one.pdf"
        commands = {
            "vantora": lambda file: [VANTORA, "run", "--quiet", "--pages", "2", "-j", "0", file, "-o", out],
            "qpdf": lambda file: ["qpdf", file, "--pages", ".", "1,3-z", "--", out],
        }
        taken = {}
        for tool, command in commands.items():
            figures = {document: [], reference: []}
            for file in (document, reference) * bench.runs:
                out.unlink(missing_ok=True)
                figures[file].append(processor_time(command(file)))
            taken[tool] = min(figures[document]) - min(figures[reference])
        return taken

    print("\n| document | vantora ms | qpdf ms |\n|---|---|---|")
    ten = bench.make("10.pdf", "pages", 10)
    for document in sorted(documents.iterdir()):
        taken = beyond_start(document, ten)
        if taken["vantora"] > taken["qpdf"] + 0.02:
            print(f"| {document.name} | {taken['vantora'] * 1000:.0f} | {taken['qpdf'] * 1000:.0f} |", flush=True)
    print("\nThe other documents take at most 20 ms more than with qpdf.")
    shutil.rmtree(documents)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--large", action="store_true", help="a million pages too")
    parser.add_argument("--only", default="", help="only rows whose title has this word")
    parser.add_argument("--inputs", default=str(ROOT / "build" / "benchmark-inputs"))
    parser.add_argument("--scans", type=int, default=10, help="documents of 100 scans")
    parser.add_argument("--documents", help="a folder of documents that other programs made")
    bench = Bench(parser.parse_args())
    large = parser.parse_args().large
    if not VANTORA.exists():
        sys.exit("build first: ./run --version")

    small = bench.make("20000.pdf", "pages", 20000)
    big = bench.make("100000.pdf", "pages", 100000)
    packed = bench.written("100000-object-streams.pdf", big, "--object-streams=generate")
    images = bench.make("500MB.pdf", "images", 500, 1024 * 1024)
    rich = bench.make("rich-5000.pdf", "rich", 5000)
    ten = bench.make("10.pdf", "pages", 10)
    many = bench.make("many", "many", 1000, 10)

    odd_pages(bench, 20000, small, "every odd page of 20,000 pages, 10 MB")
    odd_pages(bench, 100000, big, "every odd page of 100,000 pages, 51 MB")
    odd_pages(bench, 100000, packed, "every odd page of 100,000 pages in object streams, 29 MB")
    bench.row("one run of 50,000 of 100,000 pages", {
        "vantora": [VANTORA, "run", "--quiet", "--pages", "25001-75000", big, "-o", "OUT"],
        "mutool merge": ["mutool", "merge", "-o", "OUT", big, "1-25000,75001-100000"],
        "pdftk cat": ["pdftk", big, "cat", "1-25000", "75001-end", "output", "OUT"],
        "qpdf --pages": ["qpdf", big, "--pages", ".", "1-25000,75001-z", "--", "OUT"],
    }, 50000)
    odd_pages(bench, 5000, rich, "every odd page of 5,000 pages with outline, links, tags and form, 11 MB")
    linearized = bench.written("rich-5000-linearised.pdf", rich, "--linearize")
    bench.row("one page of 5,000 with outline, links, tags and form, linearised, 12 MB", {
        "vantora": [VANTORA, "run", "--quiet", "--pages", "2", linearized, "-o", "OUT"],
        "qpdf --linearize only": ["qpdf", "--linearize", linearized, "OUT"],
        "mutool merge": ["mutool", "merge", "-o", "OUT", linearized, "1,3-5000"],
    })
    plain = bench.written("5000-linearised.pdf", bench.make("5000.pdf", "pages", 5000), "--linearize")
    bench.row("one page of 5,000 plain pages, linearised, 2 MB", {
        "vantora": [VANTORA, "run", "--quiet", "--pages", "2", plain, "-o", "OUT"],
        "qpdf --linearize only": ["qpdf", "--linearize", plain, "OUT"],
        "mutool merge": ["mutool", "merge", "-o", "OUT", plain, "1,3-5000"],
    })
    whole = bench.make("10000.pdf", "pages", 10000)
    damaged = {kind: bench.make(f"10000-{kind}.pdf", "damaged", kind, 10000) for kind in ("length", "table")}
    bench.row("one page of 10,000 in damaged documents, 5 MB", {
        "vantora": [VANTORA, "run", "--quiet", "--pages", "2", whole, "-o", "OUT"],
        "vantora, a wrong length": [VANTORA, "run", "--quiet", "--pages", "2", damaged["length"], "-o", "OUT"],
        "vantora, no table": [VANTORA, "run", "--quiet", "--pages", "2", damaged["table"], "-o", "OUT"],
    }, 9999)
    bench.row("one page of 500, 500 MB", {
        "vantora": [VANTORA, "run", "--quiet", "--pages", "250", images, "-o", "OUT"],
        "cp and sync": ["sh", "-c", 'cp "$0" "$1" && sync "$1" "$(dirname "$1")"', images, "OUT"],
        "qpdf --pages": ["qpdf", images, "--pages", ".", "1-249,251-z", "--", "OUT"],
        "mutool merge": ["mutool", "merge", "-o", "OUT", images, "1-249,251-500"],
    }, 499)
    bench.row("one page of a 10-page document, start to end", {
        "vantora": [VANTORA, "run", "--quiet", "--pages", "2", ten, "-o", "OUT"],
        "qpdf --pages": ["qpdf", ten, "--pages", ".", "1,3-z", "--", "OUT"],
        "mutool merge": ["mutool", "merge", "-o", "OUT", ten, "1,3-10"],
    }, 9)
    loop = 'for file in "$0"/*.pdf; do {} ; done'
    bench.row("one page of each of 1,000 documents of 10 pages", {
        **in_workers(many),
        "shell loop over qpdf": ["sh", "-c", loop.format('qpdf "$file" --pages . 1,3-z -- "$1/${file##*/}"'), many, "OUTDIR"],
        "shell loop over mutool": ["sh", "-c", loop.format('mutool merge -o "$1/${file##*/}" "$file" 1,3-10'), many, "OUTDIR"],
    }, 9)
    # Loops over other tools take ten times what they take in the row before.
    bench.row("one page of each of 10,000 documents of 10 pages", in_workers(bench.make("many-10000", "many", 10000, 10)), 9)
    bench.row("starting and ending", {"vantora": [VANTORA, "--version"], "qpdf": ["qpdf", "--version"]})
    choosing(bench, parser.parse_args().scans)
    if parser.parse_args().documents:
        real_documents(bench, parser.parse_args().documents)
    if large:
        odd_pages(bench, 1000000, bench.make("1000000.pdf", "pages", 1000000), "every odd page of 1,000,000 pages")
    shutil.rmtree(bench.trash)


if __name__ == "__main__":
    main()
