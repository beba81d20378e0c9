#!/usr/bin/env python3
"""Makes the documents that the benchmark runs on; equal calls make equal files.

make_inputs.py pages COUNT FILE       COUNT text pages, about 570 bytes each
make_inputs.py images COUNT BYTES FILE  COUNT pages with an incompressible image of BYTES bytes each
make_inputs.py many COUNT PAGES DIR   COUNT documents of PAGES text pages
make_inputs.py scans jpeg|fax COUNT PAGES DIR  COUNT documents of PAGES scans of A4 at 300 dpi, every fourth blank
make_inputs.py rich COUNT FILE        COUNT pages with an outline, links, tags, a form and labels
make_inputs.py damaged length|table COUNT FILE  COUNT text pages, one with a wrong stream length, or without a table
"""
import random
import re
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

FAN_OUT = 50


class Writer:
    """Writes objects one after the other and remembers where they start."""

    def __init__(self, path):
        self.file = open(path, "wb", buffering=1 << 20)
        self.offset = 0
        self.starts = {}
        self._put(b"%PDF-1.5\n%\xe2\xe3\xcf\xd3\n")

    def _put(self, data):
        self.file.write(data)
        self.offset += len(data)

    def object(self, number, body, stream=None):
        self.starts[number] = self.offset
        self._put(b"%d 0 obj\n" % number + body)
        if stream is not None:
            self._put(b"\nstream\n")
            self._put(stream)
            self._put(b"\nendstream")
        self._put(b"\nendobj\n")

    def finish(self, root):
        start = self.offset
        size = max(self.starts) + 1
        rows = [b"0000000000 65535 f \n"]
        rows += [b"%010d 00000 n \n" % self.starts[number] for number in range(1, size)]
        self._put(b"xref\n0 %d\n" % size + b"".join(rows))
        self._put(b"trailer\n<< /Size %d /Root %d 0 R /ID [<00112233445566778899AABBCCDDEEFF>"
                  b"<00112233445566778899AABBCCDDEEFF>] >>\nstartxref\n%d\n%%%%EOF\n" % (size, root, start))
        self.file.close()


def page_tree(writer, pages, first_free):
    """Writes the nodes above the page objects, FAN_OUT kids each, and returns the parent of every page."""
    levels = [[(number, 1) for number in pages]]
    parent = {}
    number = first_free
    nodes = []
    while len(levels[-1]) > 1 or len(levels) == 1:
        above = []
        for start in range(0, len(levels[-1]), FAN_OUT):
            kids = levels[-1][start:start + FAN_OUT]
            for kid, _ in kids:
                parent[kid] = number
            above.append((number, sum(count for _, count in kids)))
            nodes.append((number, kids))
            number += 1
        levels.append(above)
    for node, kids in nodes:
        body = b"<< /Type /Pages /Count %d /Kids [%s]" % (
            sum(count for _, count in kids), b" ".join(b"%d 0 R" % kid for kid, _ in kids))
        if node in parent:
            body += b" /Parent %d 0 R" % parent[node]
        writer.object(node, body + b" >>")
    return parent, levels[-1][0][0]


def text_pages(path, count, seed=1):
    source = random.Random(seed)
    words = ["".join(source.choices("abcdefghijklmnopqrstuvwxyz", k=source.randint(3, 9))) for _ in range(500)]
    writer = Writer(path)
    pages = list(range(3, 3 + 2 * count, 2))
    parent, root = page_tree(writer, pages, 3 + 2 * count)
    writer.object(1, b"<< /Type /Catalog /Pages %d 0 R >>" % root)
    writer.object(2, b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>")
    for index, page in enumerate(pages):
        text = " ".join(source.choices(words, k=28))
        content = b"BT /F1 11 Tf 72 770 Td (Page %d of %d) Tj 0 -16 Td (%s) Tj ET" % (index + 1, count, text.encode())
        writer.object(page, b"<< /Type /Page /Parent %d 0 R /MediaBox [0 0 595 842] /Contents %d 0 R "
                            b"/Resources << /Font << /F1 2 0 R >> >> >>" % (parent[page], page + 1))
        writer.object(page + 1, b"<< /Length %d >>" % len(content), content)
    writer.finish(1)


def damage(path, kind):
    """Makes the length of the stream in the middle too small, or takes the cross-reference table away."""
    data = Path(path).read_bytes()
    if kind == "length":
        length = re.compile(rb"/Length (\d+)").search(data, len(data) // 2)
        wrong = b"%0*d" % (len(length[1]), int(length[1]) - 7)
        data = data[:length.start(1)] + wrong + data[length.end(1):]
    else:
        data = data[:data.rindex(b"xref\n0 ")] + data[data.rindex(b"trailer"):]
    Path(path).write_bytes(data)


def image_pages(path, count, size):
    source = random.Random(2)
    writer = Writer(path)
    pages = list(range(2, 2 + 3 * count, 3))
    parent, root = page_tree(writer, pages, 2 + 3 * count)
    writer.object(1, b"<< /Type /Catalog /Pages %d 0 R >>" % root)
    width = 1024
    height = size // width
    for page in pages:
        content = b"q 595 0 0 842 0 0 cm /Im Do Q"
        writer.object(page, b"<< /Type /Page /Parent %d 0 R /MediaBox [0 0 595 842] /Contents %d 0 R "
                            b"/Resources << /XObject << /Im %d 0 R >> >> >>" % (parent[page], page + 1, page + 2))
        writer.object(page + 1, b"<< /Length %d >>" % len(content), content)
        writer.object(page + 2, b"<< /Type /XObject /Subtype /Image /Width %d /Height %d /BitsPerComponent 8 "
                                b"/ColorSpace /DeviceGray /Length %d >>" % (width, height, width * height),
                      source.randbytes(width * height))
    writer.finish(1)


def rich_pages(path, count):
    """Every page has an outline entry, ten links (half of them by name), a text field and a tagged paragraph."""
    source = random.Random(3)
    writer = Writer(path)
    links = 10
    per_page = 6 + links  # page, content, outline entry, field, structure element, destination name, links
    base = 9
    page_of = [base + index * per_page for index in range(count)]
    parent, root = page_tree(writer, page_of, base + count * per_page)
    writer.object(1, b"<< /Type /Catalog /Pages %d 0 R /Outlines 3 0 R /Names << /Dests 4 0 R >> /AcroForm 5 0 R "
                     b"/StructTreeRoot 6 0 R /MarkInfo << /Marked true >> /PageLabels << /Nums [0 << /S /r >> 4 << /S /D >>] >> >>"
                  % root)
    writer.object(2, b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>")
    writer.object(3, b"<< /Type /Outlines /First %d 0 R /Last %d 0 R /Count %d >>" % (page_of[0] + 2, page_of[-1] + 2, count))
    names = b" ".join(b"(p%07d) %d 0 R" % (index, page + 5) for index, page in enumerate(page_of))
    writer.object(4, b"<< /Names [%s] >>" % names)
    writer.object(5, b"<< /Fields [%s] /DR << /Font << /F1 2 0 R >> >> /DA (/F1 10 Tf) >>"
                  % b" ".join(b"%d 0 R" % (page + 3) for page in page_of))
    writer.object(6, b"<< /Type /StructTreeRoot /K 7 0 R /ParentTree 8 0 R /ParentTreeNextKey %d >>" % count)
    writer.object(7, b"<< /Type /StructElem /S /Document /P 6 0 R /K [%s] >>" % b" ".join(b"%d 0 R" % (page + 4) for page in page_of))
    writer.object(8, b"<< /Nums [%s] >>" % b" ".join(b"%d [%d 0 R]" % (index, page + 4) for index, page in enumerate(page_of)))
    for index, page in enumerate(page_of):
        content = b"/P << /MCID 0 >> BDC BT /F1 11 Tf 72 770 Td (Page %d) Tj ET EMC" % (index + 1)
        annotations = b" ".join(b"%d 0 R" % (page + 6 + link) for link in range(links))
        writer.object(page, b"<< /Type /Page /Parent %d 0 R /MediaBox [0 0 595 842] /Contents %d 0 R /StructParents %d "
                            b"/Annots [%d 0 R %s] /Resources << /Font << /F1 2 0 R >> >> >>"
                      % (parent[page], page + 1, index, page + 3, annotations))
        writer.object(page + 1, b"<< /Length %d >>" % len(content), content)
        before = b"/Prev %d 0 R " % (page_of[index - 1] + 2) if index else b""
        after = b"/Next %d 0 R " % (page_of[index + 1] + 2) if index + 1 < count else b""
        writer.object(page + 2, b"<< /Title (Page %d) /Parent 3 0 R %s%s/Dest [%d 0 R /XYZ 72 770 0] >>" % (index + 1, before, after, page))
        writer.object(page + 3, b"<< /Type /Annot /Subtype /Widget /FT /Tx /T (field%d) /V (value) /Rect [72 700 200 720] /P %d 0 R "
                                b"/F 4 /DA (/F1 10 Tf) >>" % (index, page))
        writer.object(page + 4, b"<< /Type /StructElem /S /P /P 7 0 R /Pg %d 0 R /K 0 >>" % page)
        writer.object(page + 5, b"<< /D [%d 0 R /XYZ 72 770 0] >>" % page)
        for link in range(links):
            target = source.randrange(count)
            where = b"(p%07d)" % target if link % 2 else b"[%d 0 R /Fit]" % page_of[target]
            writer.object(page + 6 + link, b"<< /Type /Annot /Subtype /Link /Rect [72 %d 200 %d] /Border [0 0 0] /Dest %s >>"
                          % (100 + 20 * link, 115 + 20 * link, where))
    writer.finish(1)


SCAN = (2480, 3508)  # pixels of A4 at 300 dpi


def noisy(picture, source):
    """A grey picture with noise of three bits in each pixel, and paper that is not quite white."""
    head, pixels = picture[:-SCAN[0] * SCAN[1]], picture[-SCAN[0] * SCAN[1]:]
    size = len(pixels)
    base = int.from_bytes(pixels, "big") & int.from_bytes(b"\xf0" * size, "big")
    noise = int.from_bytes(source.randbytes(size), "big") & int.from_bytes(b"\x07" * size, "big")
    return head + (base + noise).to_bytes(size, "big")


def strip_of(tiff):
    """The data of a TIFF file of one strip, in which pdftoppm has 1 for white."""
    order = "<" if tiff[:2] == b"II" else ">"
    directory, = struct.unpack_from(order + "I", tiff, 4)
    count, = struct.unpack_from(order + "H", tiff, directory)
    found = {}
    for entry in range(count):
        tag, kind, _, value = struct.unpack_from(order + "HHII", tiff, directory + 2 + 12 * entry)
        found[tag] = value if kind == 4 else value & 0xFFFF if order == "<" else value >> 16
    assert found[262] == 1
    return tiff[found[273]:found[273] + found[279]]


def scanned_images(kind, count):
    """Different scans, made by pdftoppm, cjpeg and tiffcp from text pages; the first is blank."""
    source = random.Random(4)
    images = []
    with tempfile.TemporaryDirectory() as folder:
        folder = Path(folder)
        text_pages(folder / "text.pdf", count)
        blank = Writer(folder / "blank.pdf")
        blank.object(1, b"<< /Type /Catalog /Pages 2 0 R >>")
        blank.object(2, b"<< /Type /Pages /Count 1 /Kids [3 0 R] >>")
        blank.object(3, b"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] >>")
        blank.finish(1)
        for page in range(1, count + 1):
            mode = ["-gray"] if kind == "jpeg" else ["-mono", "-tiff"]
            box = ["-scale-to-x", str(SCAN[0]), "-scale-to-y", str(SCAN[1])]
            drawn = folder / ("blank.pdf" if page == 1 else "text.pdf")
            subprocess.run(["pdftoppm", "-singlefile", "-f", str(page), "-l", str(page), *mode, *box, drawn, folder / "page"],
                           check=True)
            if kind == "jpeg":
                picture = noisy((folder / "page.pgm").read_bytes(), source)
                images.append(subprocess.run(["cjpeg", "-quality", "75"], input=picture, capture_output=True, check=True).stdout)
            else:
                subprocess.run(["tiffcp", "-c", "g4", "-r", str(SCAN[1]), folder / "page.tif", folder / "g4.tif"], check=True)
                images.append(strip_of((folder / "g4.tif").read_bytes()))
    return images


def scan_pages(path, kind, images, count):
    writer = Writer(path)
    pages = list(range(2, 2 + 3 * count, 3))
    parent, root = page_tree(writer, pages, 2 + 3 * count)
    writer.object(1, b"<< /Type /Catalog /Pages %d 0 R >>" % root)
    filters = b"/Filter /DCTDecode /BitsPerComponent 8"
    if kind == "fax":
        filters = b"/Filter /CCITTFaxDecode /DecodeParms << /K -1 /Columns %d /Rows %d >> /BitsPerComponent 1 /Decode [1 0]" % SCAN
    for index, page in enumerate(pages):
        image = images[0] if index % 4 == 3 else images[1 + index % (len(images) - 1)]
        content = b"q 595.2 0 0 841.9 0 0 cm /Im Do Q"
        writer.object(page, b"<< /Type /Page /Parent %d 0 R /MediaBox [0 0 595.2 841.9] /Contents %d 0 R "
                            b"/Resources << /XObject << /Im %d 0 R >> >> >>" % (parent[page], page + 1, page + 2))
        writer.object(page + 1, b"<< /Length %d >>" % len(content), content)
        writer.object(page + 2, b"<< /Type /XObject /Subtype /Image /Width %d /Height %d /ColorSpace /DeviceGray %s "
                                b"/Length %d >>" % (*SCAN, filters, len(image)), image)
    writer.finish(1)


def main():
    if len(sys.argv) == 4 and sys.argv[1] == "pages":
        text_pages(sys.argv[3], int(sys.argv[2]))
    elif len(sys.argv) == 4 and sys.argv[1] == "rich":
        rich_pages(sys.argv[3], int(sys.argv[2]))
    elif len(sys.argv) == 5 and sys.argv[1] == "images":
        image_pages(sys.argv[4], int(sys.argv[2]), int(sys.argv[3]))
    elif len(sys.argv) == 5 and sys.argv[1] == "damaged" and sys.argv[2] in ("length", "table"):
        text_pages(sys.argv[4], int(sys.argv[3]))
        damage(sys.argv[4], sys.argv[2])
    elif len(sys.argv) == 5 and sys.argv[1] == "many":
        folder = Path(sys.argv[4])
        folder.mkdir(parents=True, exist_ok=True)
        for index in range(int(sys.argv[2])):
            text_pages(folder / f"document-{index:05}.pdf", int(sys.argv[3]), seed=index)
    elif len(sys.argv) == 6 and sys.argv[1] == "scans":
        folder = Path(sys.argv[5])
        folder.mkdir(parents=True, exist_ok=True)
        images = scanned_images(sys.argv[2], 8)
        for index in range(int(sys.argv[3])):
            scan_pages(folder / f"scan-{index:05}.pdf", sys.argv[2], images, int(sys.argv[4]))
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main()
