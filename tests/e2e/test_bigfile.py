"""A 10 MB log named on the command line: the window shows at once with the first text in it, the rest
arrives with its progress in the status bar; Esc stops the load, and a following Ctrl+S asks before it
writes over the file; a load left to finish gives exactly the file's text, read back from the control."""
import os
import random
import re
import subprocess
import time
import unittest

import harness as h

NAME = "big.log"
TITLE = re.escape(NAME + " - Quillon")
PROGRESS = re.compile(r"^Opening big\.log: \d+%$")
# the message pane once the load is over; a status bar that could not be read gives "", which is neither
READY = "Ready"

tearDownModule = h.end_wine


def make_log(path, size):
    """Log lines of every length with multibyte characters, and one line far longer than a piece, so that
    pieces are cut at line ends and inside a line; no "%%", so that only a stopped load makes a save ask."""
    rng = random.Random(20261125)
    words = "step converged residual Gr\u00f6\u00dfe caf\u00e9 \u65e5\u672c\u8a9e \u0437\u043d\u0430\u0447\u0435\u043d\u0438\u0435 \U0001f600".split()
    lines, total, n = [], 0, 0
    while total < size:
        count = 100000 if n == 5000 else rng.choice((3, 8, 15, 60))
        line = ("2026-11-25 12:%02d:%02d [INFO] %s\n" % (n // 60 % 60, n % 60,
                                                         " ".join(rng.choice(words) for _ in range(count))))
        data = line.encode("utf-8")
        lines.append(data)
        total += len(data)
        n += 1
    with open(path, "wb") as f:
        f.write(b"".join(lines))


def status_text():
    status = h.control(h.probe(NAME + " - Quillon"), h.ID.ID_VIEW_STATUS_BAR)
    return (status or h.Control(0, "", 0, 0, 0, 0, 0, 0, "")).text


def view_text(path):
    """The whole text of the view, through windowText.exe, as UTF-8 bytes."""
    out = path + ".view"
    result = h.wine(h.WINDOW_TEXT, "edit", NAME + " - Quillon", h.wine_path(out), timeout=300)
    if result.returncode != 0:
        raise AssertionError("windowText could not read the view's text")
    with open(out, "rb") as f:
        data = f.read()
    os.remove(out)
    return data


class BigLog(h.QuillonTestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = h.scratch_dir("bigfile")
        cls.path = os.path.join(cls.folder, NAME)
        make_log(cls.path, 10 * 1000 * 1000)
        with open(cls.path, "rb") as f:
            cls.original = f.read()
        cls.shown = cls.original.replace(b"\n", b"\r\n")

    def open_log(self):
        h.keep_wine()
        started = time.monotonic()
        self.start(h.wine_path(self.path))
        wid = h.wait_window(TITLE, timeout=60)
        return wid, time.monotonic() - started

    def test_window_at_once_with_progress_and_esc_stops_then_save_asks(self):
        wid, seconds = self.open_log()
        print("\nvisible window with text %.2f s after the start of %s (%d bytes)" % (seconds, NAME,
                                                                                    len(self.original)))
        first = view_text(self.path)
        self.assertTrue(first and self.shown.startswith(first), "the window shows the start of the file")
        h.screenshot("big-log-first-text", wid)
        self.assertLessEqual(seconds, 2.0, "the window with its first text shows within 2 s")
        self.assertRegex(status_text(), PROGRESS, "the status bar shows the progress")

        h.key(wid, "Escape")
        h.eventually(lambda: status_text() == READY, timeout=30, what="the load to stop")
        stopped = view_text(self.path)
        self.assertTrue(self.shown.startswith(stopped), "what arrived stays, in order")
        self.assertLess(len(stopped), len(self.shown), "Esc stopped the load before its end")
        time.sleep(1)
        self.assertEqual(view_text(self.path), stopped, "nothing arrives after Esc")

        h.key(wid, "ctrl+s")
        box = h.wait_window("^Quillon$", timeout=30)
        question = " ".join(r.text for r in h.window_texts("#32770"))
        self.assertIn("only its beginning is shown", question, "the question says why")
        h.key(box, "Escape")
        h.eventually(lambda: "Quillon" not in h.visible_titles(), what="the question to close")
        with open(self.path, "rb") as f:
            self.assertEqual(f.read(), self.original, "the part was not written over the file")

    def test_a_load_left_to_finish_gives_exactly_the_files_text(self):
        wid, _ = self.open_log()
        h.eventually(lambda: status_text() == READY, timeout=900, what="the load to end")
        self.assertEqual(view_text(self.path), self.shown, "the file's text, with CR-LF line ends")


if __name__ == "__main__":
    unittest.main()
