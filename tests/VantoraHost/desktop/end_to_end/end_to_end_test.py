"""The whole job in the real window: on a screen, with a window manager, by keys and mouse alone.

end_to_end_test.py PROGRAM

Two pages go from each of twenty documents, one of them is rescued from one document, the results are
read by other tools, the run is undone and the window closed. What is waited for is to be seen on the
screen or on the disk.
"""
import json
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
from screen import HEIGHT, PATIENCE, WIDTH, Screen, wait_for

PROGRAM = None
TITLE = "Sorrelin"
DOCUMENTS = 20
PAGES = 6
RESCUED = "document 01 page 5"

# Pages that are found on the screen by their colour.
NEIGHBOUR = "document 01 page 6"
COLOURS = {RESCUED: (0, 110, 200), NEIGHBOUR: (200, 0, 160)}
GOES, IS_BESIDE = 0.35, 0.3
# The pictures on the button that runs and stops, and the outline of a button that has the keyboard.
GREEN_OF_RUN, RED_OF_STOP, BLUE_OF_KEYBOARD = (47, 158, 97), (207, 75, 65), (38, 112, 158)
SOME_OF_A_PAGE, SOME_OF_A_BUTTON = 2000, 20


def drawn(text, opacity):
    """The colour of a page that is dimmed on white."""
    return tuple(round(255 + opacity * (part - 255)) for part in COLOURS[text])


def names():
    return [f"{number:02}.pdf" for number in range(1, DOCUMENTS + 1)]


def texts(number, without):
    return [f"document {number:02} page {page}" for page in range(1, PAGES + 1) if page not in without]


def write_document(path, pages):
    """Pages of these texts, on their colours."""
    kids = " ".join(f"{4 + 2 * at} 0 R" for at in range(len(pages)))
    bodies = ["<< /Type /Catalog /Pages 2 0 R >>", f"<< /Type /Pages /Kids [{kids}] /Count {len(pages)} >>",
              "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"]
    for at, text in enumerate(pages):
        colour = " ".join(str(part / 255) for part in COLOURS.get(text, (255, 255, 255)))
        content = f"{colour} rg 0 0 300 400 re f 0 g BT /F1 20 Tf 40 350 Td ({text}) Tj ET"
        bodies += [f"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 300 400] /Contents {5 + 2 * at} 0 R "
                   "/Resources << /Font << /F1 3 0 R >> >> >>",
                   f"<< /Length {len(content)} >>\nstream\n{content}\nendstream"]
    out, places = "%PDF-1.4\n", []
    for number, body in enumerate(bodies, 1):
        places.append(len(out))
        out += f"{number} 0 obj\n{body}\nendobj\n"
    rows = "".join(f"{place:010} 00000 n \n" for place in places)
    out += (f"xref\n0 {len(bodies) + 1}\n0000000000 65535 f \n{rows}"
            f"trailer\n<< /Size {len(bodies) + 1} /Root 1 0 R >>\nstartxref\n{len(out)}\n%%EOF\n")
    path.write_text(out)


def environment_in(folder):
    """Nothing of the person's who runs the tests, but what sanitizers are told."""
    environment = {name: value for name, value in os.environ.items() if name == "PATH" or name.endswith("SAN_OPTIONS")}
    # What the libraries of a screen keep until the end is no leak of ours.
    given = environment.get("ASAN_OPTIONS")
    environment["ASAN_OPTIONS"] = f"{given}:detect_leaks=0" if given else "detect_leaks=0"
    home = folder / "home"
    runtime = home / "runtime"
    runtime.mkdir(mode=0o700, parents=True)
    return {**environment, "HOME": str(home), "XDG_CONFIG_HOME": str(home / "config"),
            "XDG_STATE_HOME": str(home / "state"), "XDG_DATA_HOME": str(home / "data"),
            "XDG_CACHE_HOME": str(home / "cache"), "XDG_RUNTIME_DIR": str(runtime), "LANG": "C.UTF-8",
            "DBUS_SESSION_BUS_ADDRESS": "disabled:", "QT_QPA_PLATFORM": "xcb"}


class EndToEnd(unittest.TestCase):
    def setUp(self):
        kept = tempfile.TemporaryDirectory()
        self.addCleanup(kept.cleanup)
        self.folder = Path(kept.name)
        self.results = self.folder / "results"
        inputs = self.folder / "inputs"
        inputs.mkdir()
        self.results.mkdir()
        for number, name in enumerate(names(), 1):
            write_document(inputs / name, texts(number, without=()))
        self.inputs = [inputs / name for name in names()]
        self.originals = [path.read_bytes() for path in self.inputs]
        self.environment = environment_in(self.folder)
        self.state = self.folder / "home/state/vantora"

    def test_two_pages_go_from_twenty_documents_and_come_back(self):
        with Screen(self.folder, self.environment) as screen:
            with open(self.folder / "said", "wb") as said:
                window = screen.start([PROGRAM, *map(str, self.inputs)], stdout=said, stderr=said)
            self.screen = screen
            wait_for("the window", lambda: self.living(window) and screen.is_in_front(TITLE))
            self.type_the_range()
            self.rescue_one_page()
            self.run_into_a_folder()
            self.check_results()
            self.undo_the_run()
            screen.press("alt+F4")
            self.assertEqual(window.wait(PATIENCE), 0)
        self.assertEqual((self.folder / "said").read_text(), "")
        self.assertEqual(list((self.state / "windows").iterdir()), [], "what was kept for a crash")

    def living(self, window):
        self.assertIsNone(window.poll(), (self.folder / "said").read_text())
        return True

    def wait_to_see(self, what, colour):
        return wait_for(what, lambda: self.screen.find(colour, SOME_OF_A_PAGE))

    def button(self, colour):
        """Where a button with the colour is among those at the right of the results and of the run."""
        return self.screen.find(colour, SOME_OF_A_BUTTON, right_of=WIDTH * 3 // 4, below=HEIGHT // 2)

    def wait_to_be_kept(self, what, is_so):
        """What a crash would bring back is what the window has understood."""
        def condition():
            kept = sorted((self.state / "windows").glob("*.json"))
            return kept and is_so(json.loads(kept[0].read_text()))
        wait_for(what, condition)

    def type_the_range(self):
        self.wait_to_see("the pages of the first document", COLOURS[RESCUED])
        self.screen.press("alt+p")
        self.screen.type("2,5")
        self.wait_to_see("the page crossed out", drawn(RESCUED, GOES))
        self.wait_to_be_kept("the range", lambda work: work["range"] == "2,5" and len(work["documents"]) == DOCUMENTS)

    def rescue_one_page(self):
        self.screen.press("alt+v", "v")
        self.wait_to_see("the review, with what is beside pages that go", drawn(NEIGHBOUR, IS_BESIDE))
        self.screen.click(self.wait_to_see("the page to rescue", drawn(RESCUED, GOES)))
        self.wait_to_see("the page rescued", COLOURS[RESCUED])
        self.wait_to_be_kept("the page only there", lambda work: [one.get("range") for one in work["documents"]] ==
                             ["2"] + [None] * (DOCUMENTS - 1))

    def run_into_a_folder(self):
        self.screen.press("alt+s", "Tab")
        self.screen.type(str(self.results))
        self.wait_to_be_kept("the folder", lambda work: work["settings"]["folder"] == str(self.results))
        self.screen.click(wait_for("a run that can begin", lambda: self.button(GREEN_OF_RUN)))
        wait_for("the results", lambda: all((self.results / name).exists() for name in names()))
        wait_for("the end of the run", lambda: not self.button(GREEN_OF_RUN) and not self.button(RED_OF_STOP))

    def check_results(self):
        self.assertEqual(sorted(path.name for path in self.results.iterdir()), names())
        for number, name in enumerate(names(), 1):
            with self.subTest(name):
                result = str(self.results / name)
                checked = subprocess.run(["qpdf", "--check", result], capture_output=True, text=True, check=False)
                self.assertEqual((checked.returncode, checked.stderr), (0, ""))
                read = subprocess.run(["pdftotext", result, "-"], capture_output=True, text=True, check=True).stdout
                self.assertEqual([page.strip() for page in read.split("\f")[:-1]],
                                 texts(number, without={2} if number == 1 else {2, 5}))
        self.check_originals()

    def check_originals(self):
        self.assertEqual([path.read_bytes() for path in self.inputs], self.originals)

    def undo_the_run(self):
        self.screen.press("alt+u")
        wait_for("the question before undoing", lambda: self.button(BLUE_OF_KEYBOARD))
        self.screen.press("space")
        wait_for("the results gone", lambda: not list(self.results.iterdir()))
        self.check_originals()


if __name__ == "__main__":
    PROGRAM = sys.argv[1]
    unittest.main(argv=sys.argv[:1])
