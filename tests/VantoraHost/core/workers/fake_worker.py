"""Stands in for a worker process, and is a bad one as the environment variable FAKE_WORKER says. While it only waits, there
is a file at FAKE_WORKER_WAITS."""
import json
import os
import signal
import sys
import time

HOW = os.environ["FAKE_WORKER"]
WAITS = os.environ["FAKE_WORKER_WAITS"]


def wait():
    with open(WAITS, "w"):
        pass
    time.sleep(10000)


def answer(**message):
    print(json.dumps(message), flush=True)


def written(task, path):
    status = os.stat(path)
    report = {"schema": 1, "input": task["input"], "output": task["name"], "pages_before": 2, "pages_after": 1,
              "bytes_after": status.st_size, "output_modified": str(status.st_mtime_ns), "status": "done",
              "warnings": [], "errors": [], "seconds": 0.1}
    answer(number=task["number"], written=[str(status.st_dev), str(status.st_ino)], report=report)


def work(tasks):
    temporaries = []
    for task in tasks:
        temporaries.append(task["name"] + ".new")
        with open(temporaries[-1], "w") as file:
            file.write("the output of " + task["input"])
        written(task, temporaries[-1])
    if HOW == "asks for leave to give names":
        answer(naming=True)
        if "name" not in json.loads(sys.stdin.readline()):
            sys.exit(1)
    if HOW == "dies before it gives names":
        os.kill(os.getpid(), signal.SIGKILL)
    os.rename(temporaries[0], tasks[0]["name"])
    if HOW == "dies between two names":
        os.kill(os.getpid(), signal.SIGKILL)
    for task, temporary in zip(tasks[1:], temporaries[1:]):
        os.rename(temporary, task["name"])
    if HOW == "dies after it gave names" or HOW.startswith("dies after its first") and starts == 1:
        os.kill(os.getpid(), signal.SIGKILL)
    if HOW == "hangs after it gave names":
        wait()
    if HOW == "names what it was not given":
        answer(placed=[999])
    answer(placed=[task["number"] for task in tasks])


if os.path.exists(WAITS):
    os.remove(WAITS)
if HOW == "sleeps":
    wait()
if HOW == "leaves a process that holds its answers":
    if os.fork() == 0:
        os.close(2)  # which is the test's own
        while os.path.exists(os.path.dirname(WAITS)):  # until the test is over, which is not to wait for it
            time.sleep(0.1)
        os._exit(0)
    wait()
if HOW == "prints garbage":
    print("Hello, I am no worker", flush=True)
    time.sleep(10000)
while HOW == "prints without an end":
    os.write(1, b"x" * 65536)
if HOW == "dies after its first document and while it begins":
    with open(os.environ["FAKE_WORKER_STARTS"], "a+") as file:
        file.write("x")
        file.flush()
        file.seek(0)
        starts = len(file.read())
    if 1 < starts < 8:
        os.kill(os.getpid(), signal.SIGKILL)
sys.stdin.readline()
answer(ready=11)
while line := sys.stdin.readline():
    work(json.loads(line)["documents"])
answer(end=None, asked=False)
