"""Runs over many documents while everything goes wrong that can, and counts what is lost.

soak.py PROGRAM [--seconds S] [--seed N] [--documents N] [--actions DIR] [--only WORD]

Each round starts a run with one to three faults at random (faults.py), checks that inputs are what they were, that every
output is whole and every document done or named, and that no process or temporary file is left; then it goes on with the
run, after which nothing may be missing. --actions is the folder of an action for tests that goes by the name of the
real one, and hangs and eats memory.
The exit status is 1 when anything is lost; the seed and the number of the round tell how to see it again.
"""
import argparse
import collections
import os
import random
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

os.environ["XDG_CONFIG_HOME"] = "/nonexistent"  # runs without the defaults of whoever starts this

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "benchmarks"))

import faults as all_faults  # noqa: E402
from batch import Batch, Lost, Round  # noqa: E402


def may_mount():
    with tempfile.TemporaryDirectory() as folder:
        if subprocess.run(["mount", "-t", "tmpfs", "tmpfs", folder], capture_output=True).returncode != 0:
            return False
        subprocess.run(["umount", folder], check=True)
        return True


def usable_faults(arguments):
    chosen = [fault for fault in all_faults.ALL if arguments.only.lower() in fault.__name__.lower()]
    if not may_mount():
        print("mounting is not allowed here: no full and no read-only disk")
        chosen = [fault for fault in chosen if not issubclass(fault, all_faults.OnItsOwnFileSystem)]
    if b"__asan_init" in Path(arguments.program).read_bytes():
        print("a build with the address sanitizer knows no limit of memory: no documents that eat it")
        chosen = [fault for fault in chosen if fault is not all_faults.DocumentsEatMemory]
    if not arguments.actions:
        print("no --actions: no documents that hang or eat memory")
        chosen = [fault for fault in chosen if not issubclass(fault, all_faults.DocumentsHang)]
    return chosen


def some_of(usable, rnd):
    """One to three of them that do not stand in each other's way."""
    chosen = []
    for fault in rnd.sample(usable, min(len(usable), rnd.randrange(1, 4))):
        groups = [all_faults.OnItsOwnFileSystem, all_faults.DocumentsHang, all_faults.InputsChange,
                  (all_faults.TheRunIsKilled, all_faults.TheRunIsInterrupted),
                  (all_faults.OnItsOwnFileSystem, all_faults.TheOutputFolderIsMovedAway)]
        if not any(issubclass(fault, group) and issubclass(other, group) for group in groups for other in chosen):
            chosen.append(fault)
    return chosen


def play(batch, number, kinds):
    """One round; the faults with what they did, and how many documents were named as failed."""
    in_place = not any(issubclass(kind, all_faults.InputsChange) for kind in kinds) and batch.rnd.random() < 0.5
    round_ = Round(batch, number, in_place)
    faults = [kind(round_) for kind in kinds]
    for fault in faults:
        fault.prepare()
    try:
        round_.run(faults)
        round_.check_inputs()
        for fault in faults:
            fault.mend()
        named = round_.check()
        round_.finish()
    finally:
        for fault in faults:
            if isinstance(fault, all_faults.OnItsOwnFileSystem):
                fault.remove()
    return faults, named


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program", type=os.path.abspath)
    parser.add_argument("--seconds", type=float, default=180)
    parser.add_argument("--seed", type=int, default=int(time.time()))
    parser.add_argument("--documents", type=int, default=200)
    parser.add_argument("--actions", default="")
    parser.add_argument("--only", default="", help="faults with this word in their name")
    arguments = parser.parse_args()
    usable = usable_faults(arguments)
    folder = Path(tempfile.mkdtemp(prefix="vantora-soak-"))
    batch = Batch(arguments.program, folder, arguments.documents, random.Random(arguments.seed))
    batch.actions = os.path.abspath(arguments.actions)
    injected, rounds, named, number = collections.Counter(), collections.Counter(), 0, 0
    end = time.monotonic() + arguments.seconds
    print(f"seed {arguments.seed}, {arguments.documents} documents a round", flush=True)
    while time.monotonic() < end:
        number += 1
        batch.rnd = random.Random(f"{arguments.seed} {number}")
        kinds = some_of(usable, batch.rnd)
        try:
            faults, failed = play(batch, number, kinds)
        except Lost as lost:
            print(f"LOST in round {number} with {', '.join(kind.__name__ for kind in kinds)}: {lost}\n"
                  f"messages: {(folder / 'messages').read_text()[-2000:]}\nwhat there is: {folder}")
            return 1
        named += failed
        for fault in faults:
            injected[type(fault).__name__] += fault.injected
            rounds[type(fault).__name__] += 1
    for kind in usable:
        print(f"{kind.__name__:28} {rounds[kind.__name__]:5} rounds {injected[kind.__name__]:7} times")
    print(f"{number} rounds, {number * arguments.documents} documents, {sum(injected.values())} faults, {named} documents "
          f"named as failed and done when all was well; documents lost: none")
    shutil.rmtree(folder)
    return 0


if __name__ == "__main__":
    sys.exit(main())
