"""Printing for real: quillon.exe prints a document of a few hundred lines, some wider than the page, to
the cups-pdf printer of a private CUPS scheduler (the `printer` CTest fixture), and the PDF is read back
with poppler's tools; the print preview is paged through (screenshots kept); and with no printer at all
the print commands say so."""
import os
import re
import subprocess
import time
import unittest

import harness as h

PDF_DIR = os.environ.get("QUILLON_PDF_DIR", os.path.join(h.BUILD_DIR, "cups", "pdf"))
TITLE_TAIL = " - Quillon"
LINES = 300


tearDownModule = h.end_wine


def document():
    """Numbered lines; every 25th is a sentence wider than the page, line 150 a word wider than it."""
    lines = []
    for n in range(1, LINES + 1):
        if n == 150:
            lines.append("%04d %s" % (n, "".join(chr(ord("a") + i % 26) for i in range(170))))
        elif n % 25 == 0:
            lines.append("%04d %s" % (n, " ".join("word%d.%d" % (n, i) for i in range(30))))
        elif n % 40 == 0:
            lines.append("%04d\tcolumn\tafter\ttabs" % n)
        else:
            lines.append("%04d plain line of text" % n)
    return "\n".join(lines) + "\n"


def pdfs():
    return set(os.listdir(PDF_DIR)) if os.path.isdir(PDF_DIR) else set()


def new_pdf(before, timeout=60):
    """The PDF that appeared since `before`, once cups-pdf has finished writing it."""
    def ready():
        fresh = sorted(pdfs() - before)
        if not fresh:
            return None
        path = os.path.join(PDF_DIR, fresh[0])
        probe = subprocess.run(["pdfinfo", path], capture_output=True, text=True)
        return path if probe.returncode == 0 else None
    return h.eventually(ready, timeout=timeout, what="a new PDF in " + PDF_DIR)


def read_pdf(path):
    """(page count, [text of each page]) as poppler reads them."""
    info = subprocess.run(["pdfinfo", path], capture_output=True, text=True, check=True).stdout
    pages = int(re.search(r"^Pages:\s+(\d+)", info, re.M).group(1))
    text = subprocess.run(["pdftotext", "-layout", path, "-"], capture_output=True, check=True).stdout
    return pages, text.decode("utf-8").split("\f")[:pages]


def preview_bar():
    """The print preview's bar: {control id: Control}."""
    return {c.id: c for c in h.window_texts("winPrintPreview")[1:] if c.cls in ("Button", "Static")}


def page_label():
    """The text of the preview bar's one label, which counts the pages; None while there is no preview."""
    return next((c.text for c in preview_bar().values() if c.cls == "Static"), None)


class Printing(h.QuillonTestCase):
    def open_document(self, env=None):
        folder = h.scratch_dir(self.id().split(".")[-1])
        path = os.path.join(folder, "report.txt")
        with open(path, "w", encoding="utf-8") as f:
            f.write(document())
        self.start(h.wine_path(path), env=env)
        return path, h.wait_window(re.escape("report.txt" + TITLE_TAIL))

    def open_preview(self, wid):
        """Opens the print preview; the page count it shows."""
        h.key(wid, "alt+f", "v")
        label = h.eventually(page_label, what="the preview's page label")
        return int(re.fullmatch(r"Page 1 of (\d+)", label).group(1))

    def assert_printed(self, path, pages):
        count, texts = read_pdf(path)
        self.assertEqual(count, pages, "pages printed against the preview's count")
        body = []
        for number, text in enumerate(texts, 1):
            lines = [line.strip() for line in text.splitlines() if line.strip()]
            self.assertEqual(lines[-1], "Page %d" % number, "the foot of page %d" % number)
            body += lines[:-1]
        numbers = [int(line[:4]) for line in body if re.match(r"\d{4}\b", line)]
        self.assertEqual(numbers, list(range(1, LINES + 1)), "every line, in order, at the start of a line")
        self.assertEqual("".join("".join(body).split()), "".join(document().split()),
                         "every character printed, none cut, nothing added")
        wrapped = [i for i, line in enumerate(body) if line.startswith("0025 ")][0]
        self.assertTrue(body[wrapped + 1].startswith("word25."), "a wide line wraps onto the next: %r" %
                        body[wrapped:wrapped + 2])

    def test_print_and_print_direct_give_the_pages_the_preview_counts(self):
        _, wid = self.open_document()
        pages = self.open_preview(wid)
        self.assertGreater(pages, 5)
        h.key(wid, "Escape")

        before = pdfs()
        started = time.monotonic()
        h.key(wid, "ctrl+p")
        dialog = h.wait_window("^Print$")
        h.key(dialog, "Return")
        printed = new_pdf(before)
        print("Ctrl+P to PDF: %.1f s, %d pages" % (time.monotonic() - started, pages))
        self.assert_printed(printed, pages)

        before = pdfs()
        h.post_command("winFrame", h.ID.ID_FILE_PRINT_DIRECT)
        self.assert_printed(new_pdf(before), pages)
        self.assertNotIn("Print", h.visible_titles(), "Print Direct asks nothing")

    def test_preview_pages_through_and_gives_the_caret_back(self):
        path, wid = self.open_document()
        h.key(wid, "ctrl+Home", "Down", "Down")
        pages = self.open_preview(wid)
        first = h.screenshot("preview-page-1", wid)
        steps = [
            (("alt+n",), "Page 2 of %d" % pages, "preview-page-2"),
            (("End",), "Page %d of %d" % (pages, pages), "preview-last-page"),
            (("Home", "alt+t"), "Pages 1-2 of %d" % pages, "preview-two-pages"),
            (("alt+i", "alt+i"), "Page 1 of %d" % pages, "preview-zoomed"),
        ]
        for keys, expected, shot in steps:
            h.key(wid, *keys)
            h.eventually(lambda: page_label() == expected, what=expected)
            h.screenshot(shot, wid)

        # the sheet: white paper with dark text in the middle, the grey ground at the edge
        paper = first.crop(first.width // 3, first.height // 4, first.width * 2 // 3, first.height * 3 // 4)
        white = sum(1 for y in range(0, paper.height, 4) for x in range(0, paper.width, 4)
                    if min(paper.pixel(x, y)) > 240)
        self.assertGreater(white, (paper.height // 4) * (paper.width // 4) // 2, "mostly paper")
        self.assertGreater(paper.ink(0, paper.height), 200, "text on the paper")
        # beside the sheet, half-way down: the frame's status bar runs along the window's foot
        self.assertLess(sum(first.pixel(8, first.height // 2)), 3 * 200, "the ground around the sheet")

        h.key(wid, "Escape")
        h.eventually(lambda: not preview_bar(), what="the preview to close")
        h.type_text(wid, "X")
        h.key(wid, "ctrl+s")
        saved = h.eventually(lambda: open(path, "rb").read() if b"X" in open(path, "rb").read() else None,
                             what="the save")
        self.assertEqual(saved.split(b"\r\n")[2][:5], b"X0003", "typed where the caret was before the preview")

    def test_without_a_printer_the_print_commands_say_so(self):
        nowhere = os.path.join(h.scratch_dir("no-printer"), "no-cups.sock")
        _, wid = self.open_document(env={"CUPS_SERVER": nowhere})
        for keys in (("ctrl+p",), ("alt+f", "v"), ("alt+f", "r")):
            h.key(wid, *keys)
            box = h.wait_window("^Quillon$", timeout=30)
            texts = [c.text for c in h.window_texts("#32770")]
            self.assertIn(h.text("WIN_IDS_NO_PRINTER"), texts, keys)
            h.key(box, "Return")
            h.eventually(lambda: "Quillon" not in h.visible_titles(), what="the message to close")
        self.assertFalse(preview_bar(), "no preview without a printer")


if __name__ == "__main__":
    unittest.main()
