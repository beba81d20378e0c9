"""A screen of its own with a window manager, what is to be seen on it, and keys and a mouse."""
import os
import select
import statistics
import struct
import subprocess
import time

WIDTH, HEIGHT = 1600, 1200

# What never comes would be waited for without an end; no machine is slow enough to reach it.
PATIENCE = 300
BETWEEN_LOOKS = 0.05

# Dimmed or on a rounded edge a colour is off by one or two.
TOLERANCE = 3

WINDOW_MANAGER = """<?xml version="1.0"?>
<JWM><Group><Option>maximized</Option></Group><FocusModel>click</FocusModel><Key mask="A" key="F4">close</Key></JWM>
"""


def wait_for(what, condition, error=AssertionError):
    """Returns what the condition returns, once that is something; raises the error made of a sentence otherwise."""
    end = time.monotonic() + PATIENCE
    while True:
        found = condition()
        if found:
            return found
        if time.monotonic() > end:
            raise error(f"{what}: waited for {PATIENCE} seconds in vain")
        time.sleep(BETWEEN_LOOKS)


class Screen:
    """Lies in `folder`; gone with all that runs on it at the end of a `with`."""

    def __init__(self, folder, environment):
        self.picture = folder / "Xvfb_screen0"
        self.running = []
        self.environment = dict(environment)
        reading, writing = os.pipe()
        # No key repeats, however late a slow machine lets go of it.
        server = self.start(["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{WIDTH}x{HEIGHT}x24",
                             "-fbdir", str(folder), "-nolisten", "tcp", "-noreset", "-r"], pass_fds=[writing])
        os.close(writing)
        self.environment["DISPLAY"] = ":" + self._number(reading, server)
        settings = folder / "jwmrc"
        settings.write_text(WINDOW_MANAGER)
        self.start(["jwm", "-f", str(settings)])

    @staticmethod
    def _number(reading, server):
        with os.fdopen(reading, "rb") as pipe:
            if not select.select([pipe], [], [], PATIENCE)[0]:
                raise AssertionError("Xvfb says nothing")
            number = pipe.readline().decode().strip()
        if not number:
            raise AssertionError(f"Xvfb ended by {server.wait(PATIENCE)}")
        return number

    def __enter__(self):
        wait_for("a window manager", lambda: self.ask("xdotool", "get_num_desktops", check=False).strip())
        return self

    def __exit__(self, *_):
        for process in reversed(self.running):
            if process.poll() is None:
                process.kill()
            process.wait()

    def start(self, command, **options):
        options = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, **options}
        process = subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL, **options)
        self.running.append(process)
        return process

    def ask(self, *command, check=True):
        return subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True, check=check, timeout=PATIENCE).stdout

    def press(self, *keys):
        self.ask("xdotool", "key", *keys)

    def type(self, text):
        self.ask("xdotool", "type", text)

    def click(self, place):
        """And takes the mouse out of the way, so that no tip comes up."""
        x, y = map(str, place)
        self.ask("xdotool", "mousemove", x, y, "click", "1", "mousemove", "0", "0")

    def is_in_front(self, title):
        """Whether the window that has the keyboard is one of exactly this title."""
        return self.ask("xdotool", "getactivewindow", "getwindowname", check=False) == title + "\n"

    def lines(self):
        """What is to be seen: of each line where it is, and how red, green and blue its pixels are."""
        data = self.picture.read_bytes()
        head = struct.unpack(">25I", data[:100])
        height, stride, colours = head[5], head[12], head[19]
        begin = head[0] + 12 * colours
        for y in range(height):
            line = data[begin + y * stride:begin + (y + 1) * stride]
            yield y, line[2::4], line[1::4], line[0::4]

    def find(self, colour, least, right_of=0, below=0):
        """The middle of what has the colour in that part of the screen, if it is at least so many pixels."""
        near = [bytes(abs(value - part) <= TOLERANCE for value in range(256)) for part in colour]
        places = []
        for y, *line in self.lines():
            red, green, blue = (int.from_bytes(part.translate(table), "little") for part, table in zip(line, near))
            alike = red & green & blue
            if alike and y >= below:
                places += [(x, y) for x, pixel in enumerate(alike.to_bytes(len(line[0]), "little"))
                           if pixel and x >= right_of]
        if len(places) < least:
            return None
        return tuple(int(statistics.median(values)) for values in zip(*places))
