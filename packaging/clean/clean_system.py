"""A Debian without anything on it, in a folder, in which commands run and packages are installed."""
import os
import shutil
import subprocess
import sys
from pathlib import Path

SUITE = "bookworm"
USER = "somebody"
# Of what a package leaves, these are the system's own notes of what was installed and when.
NOTES = ("/dev/", "/proc/", "/run/", "/tmp/", "/var/cache/", "/var/lib/apt/", "/var/lib/dpkg/", "/var/log/")


def say(text):
    print(text, flush=True)


def failed(sentence):
    """The end of the check, to be raised."""
    return SystemExit(f"{Path(sys.argv[0]).name}: error: {sentence}")


def expect(found, expected, what):
    if found != expected:
        raise failed(f"{what}: {found!r}, not {expected!r}")


def run(*command, **options):
    """Runs a command and gives what it prints; one that fails is shown whole, and ends the check."""
    done = subprocess.run([str(part) for part in command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False, **options)
    if done.returncode != 0:
        raise failed(f"{' '.join(map(str, command))} ended by {done.returncode}:\n{done.stdout}")
    return done.stdout


def packages_in(folder):
    """The built packages by their names."""
    found = {file.name.split("_")[0]: file for file in sorted(folder.glob("vantora*.deb"))}
    missing = {"vantora", "vantora-desktop", "vantora-dev"} - set(found)
    if missing:
        raise failed(f"{folder}: has no package {', '.join(sorted(missing))}; packaging/deb builds them")
    return found


class CleanSystem:
    """Unpacked anew from a tarball in `folder`, which is made once, and with an archive of packages that were
    downloaded before."""

    def __init__(self, folder):
        self.root = folder / "root"
        self.archives = folder / "archives"
        base = folder / "base.tar"
        self.archives.mkdir(parents=True, exist_ok=True)
        if not base.exists():
            half = folder / "half.tar"
            run("mmdebstrap", "--mode=root", "--variant=minbase", SUITE, half)
            half.rename(base)
        shutil.rmtree(self.root, ignore_errors=True)
        self.root.mkdir()
        run("tar", "-C", self.root, "--numeric-owner", "-xf", base)
        for package in self.archives.glob("*.deb"):
            os.link(package, self.root / "var/cache/apt/archives" / package.name)
        run("cp", "/etc/resolv.conf", self.root / "etc/resolv.conf")
        self.inside("apt-get", "update", "-qq")
        self.inside("useradd", "--create-home", "--shell", "/bin/sh", USER)
        self.home = self.root / "home" / USER

    def command(self, *command, user="root", **environment):
        """What runs a command inside, with processes of its own that end with it."""
        home = "/root" if user == "root" else f"/home/{USER}"
        surroundings = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "HOME": home, "LC_ALL": "C.UTF-8",
                        "DEBIAN_FRONTEND": "noninteractive", **environment}
        return ["unshare", "--mount", "--pid", "--fork", "--kill-child", f"--mount-proc={self.root}/proc", "chroot",
                *([] if user == "root" else [f"--userspec={user}:{user}"]), str(self.root), "env", "-i", "-C", home,
                *(f"{name}={value}" for name, value in surroundings.items()), *map(str, command)]

    def inside(self, *command, **options):
        return run(*self.command(*command, **options))

    def as_user(self, *command, **environment):
        return self.inside(*command, user=USER, **environment)

    def refused(self, *command):
        """What a command says that has to fail for the user."""
        done = subprocess.run(self.command(*command, user=USER), stdin=subprocess.DEVNULL, capture_output=True,
                              text=True, check=False)
        if done.returncode == 0:
            raise failed(f"{' '.join(command)} did not fail: {done.stdout}")
        return done.stderr

    def install(self, *packages):
        """Files of packages are put inside first; everything else comes from the archive of the distribution."""
        names = []
        for package in packages:
            if isinstance(package, Path):
                shutil.copy(package, self.root / "tmp")
                names.append(f"/tmp/{package.name}")
            else:
                names.append(package)
        self.inside("apt-get", "install", "--yes", "--no-install-recommends", *names)
        for package in (self.root / "var/cache/apt/archives").glob("*.deb"):
            if not (self.archives / package.name).exists():
                os.link(package, self.archives / package.name)

    def give(self, file, name):
        """Puts a file into the user's home, as the user's."""
        shutil.copy(file, self.home / name)
        status = self.home.stat()
        os.chown(self.home / name, status.st_uid, status.st_gid)

    def files(self):
        """All there is but the system's notes, as paths inside."""
        found = set()
        for folder, folders, files in os.walk(self.root):
            inside = "/" + os.path.relpath(folder, self.root) if folder != str(self.root) else ""
            found.update(f"{inside}/{name}" for name in folders + files)
        return {path for path in found if not (path + "/").startswith(NOTES)}
