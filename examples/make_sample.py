#!/usr/bin/env python3
"""Writes a sample document of twelve pages: text, a picture, an outline and links between pages.

make_sample.py OUTPUT

The same bytes every time, with nothing but the standard library.
"""
import sys
import zlib
from pathlib import Path

WIDTH, HEIGHT = 595, 842  # A4 in points
MARGIN = 72
BLUE, GREY = "0.13 0.27 0.47", "0.35 0.35 0.35"

CHAPTERS = [
    ("The harbour", 3, "Ropes creak where the boats lie, and the tide table hangs by the door."),
    ("The lighthouse", 6, "A hundred and twelve steps lead up to the lamp and the long view west."),
    ("The island", 9, "Paths run between stone walls; the sheep know them better than the map does."),
]
PAGES = 12


def chapter_of(page):
    return next((chapter for chapter in reversed(CHAPTERS) if page >= chapter[1]), None)


class Document:
    """Objects in the order in which they are written; numbers from 1."""

    def __init__(self):
        self.objects = []

    def reserve(self):
        self.objects.append(b"")
        return len(self.objects)

    def put(self, number, body):
        self.objects[number - 1] = body if isinstance(body, bytes) else body.encode("latin-1")
        return number

    def add(self, body):
        return self.put(self.reserve(), body)

    def add_stream(self, dictionary, data):
        packed = zlib.compress(data, 9)
        head = f"<< {dictionary} /Filter /FlateDecode /Length {len(packed)} >>\nstream\n"
        return self.add(head.encode("latin-1") + packed + b"\nendstream")

    def write(self, path, root, info):
        out = bytearray(b"%PDF-1.7\n%\xe2\xe3\xcf\xd3\n")
        offsets = []
        for number, body in enumerate(self.objects, 1):
            offsets.append(len(out))
            out += b"%d 0 obj\n" % number + body + b"\nendobj\n"
        table = len(out)
        out += b"xref\n0 %d\n0000000000 65535 f \n" % (len(offsets) + 1)
        out += b"".join(b"%010d 00000 n \n" % offset for offset in offsets)
        out += b"trailer\n<< /Size %d /Root %d 0 R /Info %d 0 R >>\nstartxref\n%d\n%%%%EOF\n" % (
            len(offsets) + 1, root, info, table)
        path.write_bytes(out)


def text(x, y, size, words, font="F1", colour="0 0 0"):
    words = words.replace("\\", "\\\\").replace("(", "\\(").replace(")", "\\)")
    return f"BT {colour} rg /{font} {size} Tf {x} {y} Td ({words}) Tj ET\n"


def picture(side=160):
    """A lighthouse at dusk, as RGB samples."""
    rows = bytearray()
    for y in range(side):
        for x in range(side):
            tower = abs(x - side // 2) < 10 + (y - 40) // 12 and 40 <= y < 130
            beam = y < 60 and abs(y - 46) < abs(x - side // 2) // 5
            if tower:
                rows += bytes((200, 60, 50) if (y // 18) % 2 else (245, 245, 240))
            elif beam:
                rows += bytes((250, 225, 140))
            elif y >= 130:
                rows += bytes((30, 60 + (x + y) % 24, 90))
            else:
                rows += bytes((40 + y, 50 + y // 2, 110 + y // 4))
    return side, bytes(rows)


def content(page):
    chapter = chapter_of(page)
    out = f"{BLUE} rg {MARGIN} {HEIGHT - 84} {WIDTH - 2 * MARGIN} 1.5 re f\n"
    out += text(MARGIN, HEIGHT - 76, 10, "Three walks by the sea", colour=GREY)
    out += text(WIDTH / 2 - 8, 40, 10, str(page), colour=GREY)
    if page == 1:
        out += text(MARGIN, 620, 34, "Three walks by the sea", "F2", BLUE)
        out += text(MARGIN, 588, 14, "A sample document of twelve pages", colour=GREY)
        out += f"q 240 0 0 240 {WIDTH / 2 - 120} 260 cm /Im1 Do Q\n"
    elif page == 2:
        out += text(MARGIN, 700, 22, "Contents", "F2", BLUE)
        for row, (name, first, _) in enumerate(CHAPTERS):
            out += text(MARGIN, 660 - 28 * row, 13, f"{name}, page {first}", colour=BLUE)
    elif page == chapter[1]:
        out += text(MARGIN, 700, 22, chapter[0], "F2", BLUE)
        out += text(MARGIN, 660, 12, chapter[2])
    else:
        out += text(MARGIN, 700, 12, f"{chapter[0]}, continued on page {page}.")
    if chapter:
        for line in range(14):
            out += text(MARGIN, 620 - 20 * line, 11,
                        f"Note {page}.{line + 1}: what was seen here on walk number {7 * page + line}.")
    return out.encode("latin-1")


def build(path):
    document = Document()
    catalog, tree, outline = document.reserve(), document.reserve(), document.reserve()
    regular = document.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>")
    bold = document.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica-Bold /Encoding /WinAnsiEncoding >>")
    side, samples = picture()
    image = document.add_stream(
        f"/Type /XObject /Subtype /Image /Width {side} /Height {side} /ColorSpace /DeviceRGB /BitsPerComponent 8",
        samples)
    pages = [document.reserve() for _ in range(PAGES)]

    for page, number in enumerate(pages, 1):
        stream = document.add_stream("", content(page))
        links = []
        if page == 2:
            for row, (_, first, _) in enumerate(CHAPTERS):
                y = 656 - 28 * row
                links.append(document.add(
                    f"<< /Type /Annot /Subtype /Link /Rect [{MARGIN} {y} 300 {y + 18}] /Border [0 0 0] "
                    f"/Dest [{pages[first - 1]} 0 R /XYZ null null null] >>"))
        annotations = f"/Annots [{' '.join(f'{link} 0 R' for link in links)}] " if links else ""
        pictures = f"/XObject << /Im1 {image} 0 R >> " if page == 1 else ""
        document.put(number, f"<< /Type /Page /Parent {tree} 0 R /Contents {stream} 0 R {annotations}"
                             f"/Resources << /Font << /F1 {regular} 0 R /F2 {bold} 0 R >> {pictures}>> >>")
    document.put(tree, f"<< /Type /Pages /Count {PAGES} /MediaBox [0 0 {WIDTH} {HEIGHT}] "
                       f"/Kids [{' '.join(f'{page} 0 R' for page in pages)}] >>")

    entries = [document.reserve() for _ in CHAPTERS]
    for row, (name, first, _) in enumerate(CHAPTERS):
        before = f"/Prev {entries[row - 1]} 0 R " if row else ""
        after = f"/Next {entries[row + 1]} 0 R " if row + 1 < len(entries) else ""
        document.put(entries[row], f"<< /Title ({name}) /Parent {outline} 0 R {before}{after}"
                                   f"/Dest [{pages[first - 1]} 0 R /Fit] >>")
    document.put(outline, f"<< /Type /Outlines /First {entries[0]} 0 R /Last {entries[-1]} 0 R "
                          f"/Count {len(entries)} >>")
    document.put(catalog, f"<< /Type /Catalog /Pages {tree} 0 R /Outlines {outline} 0 R /PageMode /UseOutlines >>")
    info = document.add("<< /Title (Three walks by the sea) /Producer (make_sample.py) >>")
    document.write(path, catalog, info)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    build(Path(sys.argv[1]))
