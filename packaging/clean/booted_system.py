"""The clean Debian with systemd as its first process, in a container."""
import os
import signal
import subprocess
from pathlib import Path

import screen
from clean_system import USER, failed, run

PACKAGES = ["systemd-sysv", "dbus", "dbus-user-session", "libpam-systemd"]


def wait_for(what, condition):
    """Returns what the condition returns, once that is something; ends the check otherwise."""
    return screen.wait_for(what, condition, failed)


class BootedSystem:
    """Runs from the beginning to the end of a `with`, on a CleanSystem that has PACKAGES."""

    def __init__(self, system):
        self.root = system.root
        self.log = system.root.parent / "boot.log"
        self.container = None
        self.first = None

    def __enter__(self):
        command = ["systemd-nspawn", "--quiet", "--register=no", "--boot", "--console=passive", "--resolv-conf=off",
                   "--machine=clean-debian", "--directory", str(self.root),
                   # Nothing is refused but what the units themselves refuse.
                   "--system-call-filter=@known"]
        if not os.path.exists("/run/systemd/system"):
            command.append("--keep-unit")
        if os.path.exists("/dev/fuse"):
            command.append("--bind=/dev/fuse")
        with open(self.log, "wb") as log:
            self.container = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                              env={**os.environ, "SYSTEMD_NSPAWN_UNIFIED_HIERARCHY": "1"})
        self.first = wait_for("the first process", self._first)
        wait_for("the end of booting", lambda: self.state() in ("running", "degraded"))
        # A container covers it with a file that is gone, which a user's units then can't cover again.
        self.inside("umount", "/proc/kmsg")
        return self

    def __exit__(self, *why):
        if self.first:
            os.kill(self.first, signal.SIGRTMIN + 4)  # systemd(1): power off
        try:
            self.container.wait(screen.PATIENCE if self.first else 0.1)
        except subprocess.TimeoutExpired:
            self.container.kill()
            self.container.wait()
        for path in Path("/sys/fs/cgroup").glob("unified/*"):  # nobody else does where systemd is not at work
            if path.name in ("payload", "supervisor"):
                subprocess.run(["find", str(path), "-depth", "-type", "d", "-exec", "rmdir", "{}", "+"], check=False)

    def _first(self):
        if self.container.poll() is not None:
            raise failed(f"the container ended by {self.container.returncode}:\n{self.log.read_text(errors='replace')}")
        children = Path(f"/proc/{self.container.pid}/task/{self.container.pid}/children").read_text(encoding="ascii")
        for child in children.split():
            if Path(f"/proc/{child}/comm").read_text(encoding="ascii").strip() == "systemd":
                return int(child)
        return None

    def command(self, *command, user="root"):
        """What runs a command inside."""
        enter = ["nsenter", f"--target={self.first}", "--all", "env", "-i", "-C", "/",
                 "PATH=/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL=C.UTF-8", "SYSTEMD_PAGER=", "SYSTEMD_COLORS=0"]
        if user != "root":
            enter += ["HOME=/home/" + user, "sh", "-euc",
                      f'exec runuser -u {user} -- env XDG_RUNTIME_DIR=/run/user/$(id -u {user}) "$@"', "sh"]
        return [*enter, *map(str, command)]

    def inside(self, *command, user="root"):
        return run(*self.command(*command, user=user))

    def as_user(self, *command):
        return self.inside(*command, user=USER)

    def state(self):
        done = subprocess.run(self.command("systemctl", "is-system-running"), stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, check=False)
        return done.stdout.strip()
