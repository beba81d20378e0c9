"""Documents to run over, with what must come of each."""
import json
import os
import shutil
import subprocess
from pathlib import Path

import make_inputs

PAGES = "1"  # what runs remove
KINDS = [2, 3, 10, 60]  # documents by their number of pages


class Lost(Exception):
    """A document came to harm, or nobody said what became of it."""


class Batch:
    """A folder with documents of a few kinds in subfolders, and the output that each kind must have:
    equal documents give equal bytes, so that comparing them finds everything that is not right."""

    def __init__(self, program, folder, documents, rnd):
        self.program, self.folder, self.rnd = program, folder, rnd
        self.expected = {}  # input -> output, as bytes
        self.kinds = []
        for pages in KINDS:
            original = folder / f"kind-{pages}.pdf"
            make_inputs.text_pages(original, pages)
            subprocess.run([program, "run", "-j", "0", "-q", "-p", PAGES, original, "-o", f"{original}.cut"], check=True)
            self.kinds.append(original.read_bytes())
            self.expected[self.kinds[-1]] = Path(f"{original}.cut").read_bytes()
        self.originals = {}
        for number in range(documents):
            path = folder / f"in/{number % 3}/{number:04}.pdf"
            path.parent.mkdir(parents=True, exist_ok=True)
            # Few of the first kind, which the action for tests hangs and eats memory at.
            kind = 0 if number % 40 == 7 else rnd.randrange(1, len(KINDS))
            self.originals[path] = self.kinds[kind]
            path.write_bytes(self.kinds[kind])
        self.inputs = sorted(self.originals)

    def result_of(self, content):
        """The output that a document with this content must have; none when it must fail."""
        if content not in self.expected:
            document, output = self.folder / "other.pdf", self.folder / "other.cut"
            document.write_bytes(content)
            output.unlink(missing_ok=True)
            subprocess.run([self.program, "run", "-j", "0", "-q", "-p", PAGES, document, "-o", output],
                           stderr=subprocess.DEVNULL)
            self.expected[content] = output.read_bytes() if output.exists() else None
        return self.expected[content]

    def restore(self):
        for path, content in self.originals.items():
            if not path.exists() or path.read_bytes() != content:
                path.write_bytes(content)


class Round:
    """One run over the documents of a batch in which faults happen, and another that does what is left."""

    def __init__(self, batch, number, in_place):
        self.batch, self.rnd, self.in_place = batch, batch.rnd, in_place
        self.output = batch.folder / f"out-{number}"
        self.report = batch.folder / f"report-{number}.jsonl"
        self.output.mkdir()
        self.changed = {}  # input -> contents that it had at some time in the run
        self.process = None
        self.workers = {}  # process -> when it started
        self.killed = False  # the run itself
        self.nothing_removable = False  # at the end of the run, so that temporary files stay

    def environment(self, faults):
        work = "".join(fault.work for fault in faults)
        if not work:
            return None
        return {**os.environ, "VANTORA_ACTIONS_PATH": self.batch.actions, "SCRIPTED_WORK": work}

    def command(self, *more):
        where = ["-r", self.output.name, "-i"] if self.in_place else ["-r", "in", "-d", self.output.name, "--overwrite"]
        return [self.batch.program, "run", *where, "-j", "2", "--report", self.report.name, "--resume", self.report.name,
                *more, "--pages", PAGES]

    def living_workers(self):
        try:
            pid = self.process.pid
            children = [int(child) for child in Path(f"/proc/{pid}/task/{pid}/children").read_text().split()]
        except OSError:
            return []
        found = [child for child in children if is_worker(child)]
        for child in found:
            self.workers.setdefault(child, state_of(child)[1])
        return found

    def finished(self):
        """How many documents have an output by now, about."""
        try:
            return len(self.report.read_bytes().splitlines())
        except OSError:
            return 0

    def change(self, path, content, write):
        """Gives an input other content, by write(path, content)."""
        self.changed.setdefault(path, {self.batch.originals[path]}).add(content)
        write(path, content)

    def run(self, faults, time_limit=1200):
        """Starts the run and lets the faults at it until it ends."""
        if self.in_place:
            shutil.copytree(self.batch.folder / "in", self.output, dirs_exist_ok=True)
        arguments = [argument for fault in faults for argument in fault.arguments]
        if any(fault.needs_timeout for fault in faults):
            arguments += ["--timeout", "1"]
        with open(self.batch.folder / "messages", "wb") as messages:
            self.process = subprocess.Popen(self.command(*arguments), cwd=self.batch.folder, stderr=messages,
                                            env=self.environment(faults),
                                            stdout=subprocess.PIPE if any(f.needs_output for f in faults)
                                            else subprocess.DEVNULL)
        try:
            deadline = Deadline(time_limit)
            while self.process.poll() is None:
                self.living_workers()
                for fault in faults:
                    fault.disturb()
                deadline.check("the run does not end")
                try:
                    self.process.wait(0.002)
                except subprocess.TimeoutExpired:
                    pass
        finally:
            self.process.kill()
            self.process.wait()
            if self.process.stdout:
                self.process.stdout.close()

    def reports(self):
        """The last report of each document."""
        found = {}
        if self.report.exists():
            for line in self.report.read_text().splitlines():
                report = json.loads(line)
                path = self.batch.folder / report["input"]
                found[self.batch.folder / "in" / path.relative_to(self.output) if self.in_place else path] = report
        return found

    def output_of(self, path):
        return self.output / path.relative_to(self.batch.folder / "in")

    def check(self):
        """Every output is whole, every document done or named. Returns how many were named."""
        reports = self.reports()
        named = 0
        for path in self.batch.inputs:
            output, report = self.output_of(path), reports.get(path)
            contents = self.changed.get(path, {self.batch.originals[path]})
            results = [self.batch.result_of(content) for content in contents]
            # A killed run may have said so of what had not got its name yet.
            if self.in_place and (self.killed or report is None or report["status"] != "done"):
                results += contents
            if output.exists() and output.read_bytes() not in results:
                raise Lost(f"{output} is not the result of its input")
            if report is None:
                if not self.killed and self.process.returncode != 130:
                    raise Lost(f"{path}: the run ended without a word about it")
            elif report["status"] == "done":
                if not output.exists():
                    raise Lost(f"{path} is called done and has no output")
            else:
                named += 1
        self.check_workers()
        if not self.killed and not self.nothing_removable and (left := self.temporary_files()):
            raise Lost(f"temporary files are left: {left[:3]}")
        return named

    def check_inputs(self):
        for path, content in self.batch.originals.items():
            if path not in self.changed and path.read_bytes() != content:
                raise Lost(f"the input {path} was changed")

    def check_workers(self):
        deadline = Deadline(300)
        while living := [pid for pid, started in self.workers.items() if is_alive(pid, started)]:
            deadline.check(f"workers outlive the run: {living}")

    def temporary_files(self):
        return [str(path) for path in self.output.rglob(".*")]

    def finish(self):
        """Goes on with the run, now that all is well, and checks that nothing is missing then."""
        # What a killed run left half said is either done and found to be, or done now: never twice.
        result = subprocess.run(self.command("-q"), cwd=self.batch.folder, capture_output=True, text=True, timeout=1200)
        if result.returncode != 0:
            raise Lost(f"going on fails: {result.stderr}")
        for path, content in self.batch.originals.items():
            if path not in self.changed and self.output_of(path).read_bytes() != self.batch.expected[content]:
                raise Lost(f"{self.output_of(path)} is not the result of its input")
            if path in self.changed and not self.output_of(path).exists():
                raise Lost(f"{path} has no output")
        if left := self.temporary_files():
            raise Lost(f"temporary files are left in the end: {left[:3]}")
        shutil.rmtree(self.output, ignore_errors=True)  # a mounted one stays
        self.report.unlink()


def is_worker(pid):
    """Not so of what the leak sanitizer starts when the run ends, which the run waits for without an end."""
    try:
        return Path(f"/proc/{pid}/cmdline").read_bytes() == b"vantora\0worker\0"
    except OSError:
        return False


def state_of(pid):
    """A process's state, a letter, and when it started; none when there is no such process."""
    try:
        fields = Path(f"/proc/{pid}/stat").read_text().rsplit(") ", 1)[1].split()
    except OSError:
        return None, None
    return fields[0], fields[19]


def is_alive(pid, started):
    """Also while it dies: a process loses its memory before it lets go of its files."""
    state, since = state_of(pid)
    return state is not None and since == started and state not in "ZX"


class Deadline:
    def __init__(self, seconds):
        self.end = os.times().elapsed + seconds

    def check(self, complaint):
        if os.times().elapsed > self.end:
            raise Lost(complaint)
