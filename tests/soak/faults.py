"""What can happen to a run. A fault is made for one round; `injected` counts how often it happened."""
import os
import signal
import subprocess


class Fault:
    arguments = ()
    work = ""  # what the action for tests, which then takes the place of the real one, does over each document
    needs_timeout = False  # whether documents must be given up after a second
    needs_output = False  # whether the run's standard output is a pipe that the fault reads

    def __init__(self, round_):
        self.round, self.rnd = round_, round_.rnd
        self.injected = 0
        self.threshold = self.rnd.randrange(1, max(2, len(round_.batch.inputs) * 2 // 3))

    def is_due(self):
        """Once, at some point in the run."""
        return self.injected == 0 and self.round.finished() >= self.threshold

    def prepare(self):
        """Before the run starts."""

    def disturb(self):
        """Every few milliseconds while it goes on."""

    def mend(self):
        """After it has ended."""


class WorkersAreKilled(Fault):
    """One before anything is done, and one each time that something more is: where no worker lives long enough to begin,
    a run is right to give up."""
    signals = (signal.SIGKILL, signal.SIGSEGV, signal.SIGTERM, signal.SIGABRT)

    def prepare(self):
        self.threshold = 0

    def disturb(self):
        workers = self.round.living_workers()
        if workers and self.round.finished() >= self.threshold and self.rnd.random() < 0.2:
            try:
                os.kill(self.rnd.choice(workers), self.rnd.choice(self.signals))
            except ProcessLookupError:
                return
            self.injected += 1
            self.threshold = self.round.finished() + self.rnd.randrange(1, 10)


class AWorkerIsStopped(Fault):
    needs_timeout = True

    def disturb(self):
        if self.is_due() and (children := self.round.living_workers()):
            try:
                os.kill(self.rnd.choice(children), signal.SIGSTOP)
                self.injected += 1
            except ProcessLookupError:
                pass


class TheRunIsKilled(Fault):
    def disturb(self):
        if self.is_due():
            self.round.killed = True
            self.round.process.kill()
            self.injected += 1


class TheRunIsInterrupted(Fault):
    signals = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)

    def disturb(self):
        if self.is_due():
            self.round.process.send_signal(self.rnd.choice(self.signals))
            self.injected += 1


class TheRunIsInterruptedTwice(TheRunIsInterrupted):
    def disturb(self):
        super().disturb()
        if self.injected == 1 and self.rnd.random() < 0.3:
            self.round.killed = True
            self.round.process.send_signal(signal.SIGINT)
            self.round.process.send_signal(signal.SIGTERM)
            self.injected += 1


class InputsChange(Fault):
    """Some inputs, whether they were read by then or not."""

    def disturb(self):
        if self.round.finished() >= self.threshold and self.injected < 8 and self.rnd.random() < 0.2:
            path = self.rnd.choice(self.round.batch.inputs)
            if path.exists():
                self.round.change(path, self.other_content(path), self.write)
                self.injected += 1

    def mend(self):
        self.round.batch.restore()

    def other_content(self, path):
        return self.rnd.choice([kind for kind in self.round.batch.kinds if kind != self.round.batch.originals[path]])


class InputsAreReplaced(InputsChange):
    @staticmethod
    def write(path, content):
        new = path.with_suffix(".new")
        new.write_bytes(content)
        new.rename(path)


class InputsAreWrittenOver(InputsChange):
    @staticmethod
    def write(path, content):
        with open(path, "r+b") as file:
            file.write(content)
            file.truncate()


class InputsShrink(InputsChange):
    def other_content(self, path):
        return self.round.batch.originals[path][: self.rnd.randrange(0, 2000)]

    @staticmethod
    def write(path, content):
        os.truncate(path, len(content))


class InputsAreRemoved(InputsChange):
    def other_content(self, path):
        return b""

    @staticmethod
    def write(path, content):
        path.unlink()


class TheOutputFolderIsMovedAway(Fault):
    def disturb(self):
        if self.is_due():
            self.away().mkdir()
            for path in self.round.output.iterdir():
                path.rename(self.away() / path.name)
            self.injected += 1

    def mend(self):
        if self.injected:
            for path in self.away().rglob("*.pdf"):
                target = self.round.output / path.relative_to(self.away())
                target.parent.mkdir(parents=True, exist_ok=True)
                if not target.exists():
                    path.rename(target)

    def away(self):
        return self.round.output.with_name(f"{self.round.output.name}-away")


class OnItsOwnFileSystem(Fault):
    """The output folder is a small file system in memory. Needs the right to mount."""

    def prepare(self):
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=4m", "tmpfs", self.round.output], check=True,
                       stderr=subprocess.PIPE)

    def mend(self):
        subprocess.run(["mount", "-o", "remount,rw", self.round.output], check=True)

    def remove(self):
        subprocess.run(["umount", self.round.output], check=True)
        self.round.output.rmdir()


class TheDiskIsFull(OnItsOwnFileSystem):
    def disturb(self):
        if self.is_due():
            try:
                with open(self.filler(), "wb", buffering=0) as filler:
                    while filler.write(bytes(4096)):
                        pass
            except OSError:
                pass
            self.injected += 1

    def mend(self):
        self.filler().unlink(missing_ok=True)

    def filler(self):
        return self.round.output / "filler"


class TheDiskIsReadOnly(OnItsOwnFileSystem):
    def disturb(self):
        # Refused while a file is open for writing; tried again then.
        if self.is_due() and subprocess.run(["mount", "-o", "remount,ro", self.round.output],
                                            stderr=subprocess.DEVNULL).returncode == 0:
            self.injected += 1
            self.round.nothing_removable = True


class StandardOutputCloses(Fault):
    needs_output = True
    arguments = ("--json",)

    def disturb(self):
        if self.injected == 0:
            output = self.round.process.stdout.fileno()
            os.set_blocking(output, False)
            try:
                os.read(output, 1 << 16)
            except BlockingIOError:
                pass
            if self.round.finished() >= self.threshold:
                self.round.process.stdout.close()
                self.injected += 1


class DocumentsHang(Fault):
    needs_timeout = True
    work = "hang at a document of 2 pages"

    def mend(self):
        self.injected = sum(report["status"] == "failed" and report["errors"][0]["reason"] == self.reason
                            for report in self.round.reports().values())

    reason = "timed-out"


class DocumentsEatMemory(DocumentsHang):
    needs_timeout = False
    arguments = ("--memory-limit", "300M")
    work = "eat memory at a document of 2 pages"
    reason = "out-of-memory"


ALL = [WorkersAreKilled, AWorkerIsStopped, TheRunIsKilled, TheRunIsInterrupted, TheRunIsInterruptedTwice,
       InputsAreReplaced, InputsAreWrittenOver, InputsShrink, InputsAreRemoved, TheOutputFolderIsMovedAway,
       TheDiskIsFull, TheDiskIsReadOnly, StandardOutputCloses, DocumentsHang, DocumentsEatMemory]
