#!/usr/bin/env python3
"""Times the window beside other programs, in one run, and prints what was reached.

desktop.py [--runs N] [--documents N] [--inputs DIR] [--only start|document|documents] [--details]

Everything runs in turn, in a display of its own (Xvfb) and with a home of its own. Times are medians, ratios are of
medians: of elapsed times, and of processor times with all processes that took part, which are what to look at on a
machine that does other things. "start" and "document" run N times, "documents" a third as often. --details prints
all that was seen as JSON.
"""
import argparse
import json
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "release"
WINDOW = BUILD / "benchmarks" / "desktop_window"
EMPTY_WINDOW = BUILD / "benchmarks" / "empty_window"
VANTORA = BUILD / "bin" / "vantora"
MAKE_INPUTS = ROOT / "benchmarks" / "make_inputs.py"
FRAME = 16  # milliseconds
PAGES = 10000


class Times:
    """Elapsed and processor times of one command in milliseconds."""

    def __init__(self):
        self.elapsed = []
        self.busy = []

    def add(self, elapsed, busy):
        self.elapsed.append(elapsed)
        self.busy.append(busy)

    def ratios(self, other):
        """To another's: of elapsed and of processor times, rounded."""
        return (statistics.median(self.elapsed) / statistics.median(other.elapsed),
                statistics.median(self.busy) / statistics.median(other.busy))

    def __str__(self):
        return f"{statistics.median(self.elapsed):.0f} ms ({statistics.median(self.busy):.0f} of a processor)"


class Display:
    """A display, and a home, for as long as it lives."""

    def __enter__(self):
        self.home = tempfile.mkdtemp()
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "1920x1080x24", "-nolisten", "tcp"],
            pass_fds=[write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as told:
            number = told.readline().strip()
        if not number:
            sys.exit("Xvfb does not start")
        self.environment = {**os.environ, "DISPLAY": f":{number}", "QT_QPA_PLATFORM": "xcb", "LC_ALL": "C.UTF-8"}
        for name in ("HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR",
                     "TMPDIR"):
            self.environment[name] = self.home
        return self

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()
        shutil.rmtree(self.home)

    def time(self, command, times):
        """Runs a command and returns what it printed."""
        with tempfile.TemporaryFile() as out:
            begun = time.monotonic()
            process = subprocess.Popen([*map(str, command)], stdout=out, env=self.environment)
            _, status, used = os.wait4(process.pid, 0)
            elapsed = time.monotonic() - begun
            process.returncode = os.waitstatus_to_exitcode(status)
            if process.returncode != 0:
                sys.exit(f"{command[0]} failed: {process.returncode}")
            times.add(elapsed * 1e3, (used.ru_utime + used.ru_stime) * 1e3)
            out.seek(0)
            return out.read()


def median(seen, *path):
    """The median of a number that is found by this path in each of the objects."""
    values = []
    for value in seen:
        for name in path:
            value = value[name]
        values.append(value)
    return statistics.median(values)


def row(goal, figure, is_reached):
    print(f"| {goal} | {figure} | {'reached' if is_reached else 'missed'} |", flush=True)


def ratio_row(goal, ours, other, other_name, limit):
    elapsed, busy = ours.ratios(other)
    row(goal, f"{elapsed:.2f} times elapsed, {busy:.2f} times of a processor: {ours} and {other_name} {other}",
        elapsed <= limit)


def start(display, runs):
    window, empty = Times(), Times()
    for _ in range(runs):
        display.time([EMPTY_WINDOW], empty)
        display.time([WINDOW, "start"], window)
    ratio_row("start to window: at most 1.5 times an empty window with a tree", window, empty, "the empty one", 1.5)


def document(display, runs, file):
    picture, seen = Times(), []
    for _ in range(runs):
        display.time(["pdftoppm", "-r", "30", "-f", "1", "-l", "1", file, Path(display.home) / "page"], picture)
        seen.append(json.loads(display.time([WINDOW, "document", file], Times())))
    beside = statistics.median(picture.elapsed)
    first = median(seen, "firstPicture")
    row(f"first thumbnail of {PAGES:,} pages: at most 1.5 times what pdftoppm takes for a page",
        f"{first / beside:.1f} times elapsed: {first:.0f} ms, all {seen[0]['pictures']} that can be seen "
        f"{median(seen, 'allPictures'):.0f} ms, {median(seen, 'ready'):.0f} ms of it until it is read; pdftoppm {picture}",
        first <= 1.5 * beside)
    for name, title in (("wheel", "by the wheel, 400 notches"), ("wholeDocument", "through all of it by pages"),
                        ("jumps", "to 200 places anywhere in it")):
        waits = [one["scrolling"][name] for one in seen]
        row(f"scrolling {title}: the event loop waits for {FRAME} ms at most",
            f"of {median(waits, 'asked'):.0f} answers {median(waits, 'lateBusy'):.0f} took more of a processor, the longest "
            f"{median(waits, 'longestBusy'):.1f} ms; {median(waits, 'late'):.0f} took longer, {median(waits, 'longest'):.0f} ms",
            all(one["lateBusy"] == 0 for one in waits))
    for when, title in (("memoryOpen", "opened"), ("memoryScrolled", "scrolled through")):
        window, all_of_it = median(seen, when, "window") / 1024, median(seen, when, "proportional") / 1024
        row(f"memory with it {title}: at most 150 MB",
            f"the window {window:.0f} MB; with its {median(seen, when, 'processes'):.0f} confined processes "
            f"{all_of_it:.0f} MB, what they share counted once", max(window, all_of_it) <= 150)
    for name, title in (("selectAllPages", "choosing"), ("addMarks", "marking"), ("clearMarks", "clearing"),
                        ("markOdd", "marking every odd one of"), ("invertMarks", "inverting these among"),
                        ("undo", "undoing that among")):
        acts = [one["marking"][name] for one in seen]
        busy = median(acts, "paintedBusy")
        row(f"{title} {PAGES:,} pages: one frame",
            f"painted after {median(acts, 'painted'):.0f} ms, {busy:.1f} of a processor", busy <= FRAME)
    return seen


def documents(display, runs, folder, count):
    info, window, seen = Times(), Times(), []
    for _ in range(max(1, runs // 3)):
        display.time([VANTORA, "info", "--json", "-r", folder], info)
        seen.append(json.loads(display.time([WINDOW, "documents", folder, count], Times())))
        window.add(seen[-1]["ready"], seen[-1]["readyBusy"])
    ratio_row(f"{count:,} documents listed, counted and ready: at most 2 times `vantora info --json`", window, info, "info", 2)
    waits = [one["waits"] for one in seen]
    row(f"the event loop meanwhile waits for {FRAME} ms at most",
        f"of {median(waits, 'asked'):.0f} answers {median(waits, 'lateBusy'):.0f} took more of a processor, the longest "
        f"{median(waits, 'longestBusy'):.0f} ms; all listed after {median(seen, 'listed'):.0f} ms",
        all(one["lateBusy"] == 0 for one in waits))
    return seen


def made(path, *call):
    if not path.exists():
        print(f"making {path.name} ...", file=sys.stderr)
        partial = path.with_name(path.name + ".partial")
        shutil.rmtree(partial, ignore_errors=True)
        subprocess.run([MAKE_INPUTS, *map(str, call), partial], check=True)
        partial.rename(path)
    return path


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--documents", type=int, default=10000)
    parser.add_argument("--inputs", default=str(ROOT / "build" / "benchmark-inputs"))
    parser.add_argument("--only", choices=["start", "document", "documents"])
    parser.add_argument("--details", action="store_true", help="all that was seen, as JSON")
    given = parser.parse_args()
    if not (WINDOW.exists() and EMPTY_WINDOW.exists()):
        sys.exit("build first: ./run --version")
    inputs = Path(given.inputs)
    inputs.mkdir(parents=True, exist_ok=True)
    asked = [given.only] if given.only else ["start", "document", "documents"]
    seen = {}
    with Display() as display:
        print(f"load {os.getloadavg()[0]:.1f} on {os.cpu_count()} processors\n\n| Goal | Measured | |\n|---|---|---|")
        if "start" in asked:
            start(display, given.runs)
        if "document" in asked:
            file = made(inputs / "10000.pdf", "pages", PAGES)
            seen["document"] = document(display, given.runs, file)
        if "documents" in asked:
            many = made(inputs / {1000: "many"}.get(given.documents, f"many-{given.documents}"), "many", given.documents, 10)
            seen["documents"] = documents(display, given.runs, many, given.documents)
        print(f"\nload {os.getloadavg()[0]:.1f} at the end")
    if given.details:
        print(json.dumps(seen, indent=1))


if __name__ == "__main__":
    main()
