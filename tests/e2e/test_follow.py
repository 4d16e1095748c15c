"""The real quillon.exe showing a file that another program changes: a log written a line every 100 ms is
followed to its last line; a character written in two halves waits for the second, in UTF-8 and in UTF-16;
a deleted file keeps its text for the next save, after which the file is followed again; a file truncated
and written anew asks, and Yes shows the new text; an edited document asks before anything is appended,
and No is asked again only when the file changes again."""
import glob
import os
import re
import subprocess
import sys
import time
import unittest

import harness as h

TITLE_TAIL = " - Quillon"


def tearDownModule():
    h.end_wine()
    # a text typed here is unsaved when its run is ended: it would be offered to every later test file
    pattern = os.path.join(h.WINEPREFIX, "drive_c", "users", "*", "**", "Tarvik", "Quillon", "Recovery", "*.qrf")
    for left in glob.glob(pattern, recursive=True):
        os.remove(left)


# Appends a numbered line every 100 ms for 5 s; prints the monotonic time of its last write.
WRITER = r"""
import sys, time
path = sys.argv[1]
for i in range(50):
    with open(path, "ab") as f:
        f.write(b"appended line %02d\r\n" % i)
    last = time.monotonic()
    time.sleep(0.1)
print(last)
"""


def write(path, data, mode="wb"):
    with open(path, mode) as f:
        f.write(data)


def shown(data):
    """A file's text as the probe reports the view's (line ends as "\\n")."""
    return data.decode("utf-8").replace("\r\n", "\n").replace("\n", "\\n")


class Follow(h.QuillonTestCase):
    def open_file(self, data):
        folder = h.scratch_dir(self.id().split(".")[-1])
        path = os.path.join(folder, "app.log")
        write(path, data)
        self.start(h.wine_path(path))
        h.wait_window(re.escape("app.log") + re.escape(TITLE_TAIL))
        self.title = h.wine_path(path)
        return path

    def view_text(self):
        view = h.view(h.probe(self.title))
        return view.text if view else None

    def question(self):
        """The window and text of the question about the changed file, once it is shown."""
        box = h.wait_window("^Quillon$", timeout=30)
        texts = [row.text for row in h.window_texts("#32770")]
        self.assertTrue(any("was changed by another program" in t for t in texts), texts)
        return box

    def no_question(self):
        return "Quillon" not in h.visible_titles()

    def test_a_growing_log_is_followed_to_its_last_line(self):
        first = b"".join(b"started line %d\r\n" % i for i in range(20))
        path = self.open_file(first)
        writer = subprocess.run([sys.executable, "-c", WRITER, path], capture_output=True, text=True, timeout=60)
        last_write = float(writer.stdout)
        final = open(path, "rb").read()
        h.eventually(lambda: self.view_text() == shown(final), timeout=10, what="the whole log in the view")
        delay = time.monotonic() - last_write
        print("\nthe view ended with the last line %.2f s after the last write" % delay)
        self.assertLessEqual(delay, 1.5)
        self.assertTrue(self.no_question(), "an unedited view follows without asking")

    def test_a_half_written_character_waits_for_its_rest_and_doubled_per_cent_signs_show_as_one(self):
        path = self.open_file(b"start\r\n")
        write(path, "100%% done \u00fc".encode("utf-8")[:-1], "ab")
        h.eventually(lambda: self.view_text() == "start\\n100% done ", what="the complete characters")
        time.sleep(1.2)
        self.assertEqual(self.view_text(), "start\\n100% done ", "the first byte of \u00fc is held back")
        write(path, "\u00fc\r\n".encode("utf-8")[1:], "ab")
        h.eventually(lambda: self.view_text() == "start\\n100% done \u00fc\\n", what="the character whole")
        # the appended "%%" shown as "%" makes the text shown otherwise: the save over the file asks first
        h.key(h.wait_window(re.escape("app.log") + re.escape(TITLE_TAIL)), "ctrl+s")
        box = h.wait_window("^Quillon$", timeout=30)
        texts = [row.text for row in h.window_texts("#32770")]
        self.assertTrue(any("does not show the file" in t for t in texts), texts)
        h.key(box, "Escape")
        h.eventually(self.no_question, what="the save question to close")
        self.assertEqual(open(path, "rb").read(), "start\r\n100%% done \u00fc\r\n".encode("utf-8"))

    def test_a_utf16_log_grows_in_its_encoding_and_a_split_character_waits(self):
        path = self.open_file("\ufeffstart\r\n".encode("utf-16-le"))
        more = "next \U0001F600\r\n".encode("utf-16-le")
        # ends one byte into the high surrogate of the emoji
        write(path, more[:11], "ab")
        h.eventually(lambda: self.view_text() == "start\\nnext ", what="the complete characters")
        time.sleep(1.2)
        self.assertEqual(self.view_text(), "start\\nnext ", "the half of the surrogate pair is held back")
        write(path, more[11:], "ab")
        h.eventually(lambda: self.view_text() == "start\\nnext \U0001F600\\n", what="the pair whole")

    def test_a_deleted_file_keeps_its_text_and_save_writes_it_back(self):
        path = self.open_file(b"kept line\r\n")
        wid = h.wait_window(re.escape("app.log") + re.escape(TITLE_TAIL))
        os.remove(path)
        time.sleep(1.2)
        self.assertTrue(self.no_question(), "a deleted file asks nothing")
        self.assertEqual(self.view_text(), "kept line\\n")
        h.key(wid, "ctrl+s")
        h.eventually(lambda: os.path.exists(path) and open(path, "rb").read() == b"kept line\r\n",
                     what="the text saved back")
        # Quillon's own save is no change by another program: nothing asked, the file followed again
        time.sleep(1.2)
        self.assertTrue(self.no_question(), "the save is not taken for a change")
        write(path, b"after the save\r\n", "ab")
        h.eventually(lambda: self.view_text() == "kept line\\nafter the save\\n", what="the saved file followed")

    def test_a_file_truncated_and_written_anew_asks_and_yes_shows_the_new_text(self):
        path = self.open_file(b"".join(b"old line %d\r\n" % i for i in range(200)))
        write(path, b"")
        write(path, b"rotated: first line\r\nsecond line\r\n")
        box = self.question()
        h.key(box, "y")
        h.eventually(lambda: self.view_text() == shown(b"rotated: first line\r\nsecond line\r\n"),
                     what="the new text after Yes")
        write(path, b"third line\r\n", "ab")
        h.eventually(lambda: self.view_text().endswith("third line\\n"), what="the reloaded file followed again")

    def test_an_edited_document_asks_before_a_grown_file_and_no_asks_again_only_on_a_new_change(self):
        path = self.open_file(b"first line\r\n")
        wid = h.wait_window(re.escape("app.log") + re.escape(TITLE_TAIL))
        h.key(wid, "ctrl+End")
        h.type_text(wid, "typed")
        h.eventually(lambda: self.view_text() == "first line\\ntyped", what="the typed text")
        write(path, b"grown line\r\n", "ab")
        h.key(self.question(), "n")
        h.eventually(self.no_question, what="the question to close")
        time.sleep(1.5)
        self.assertTrue(self.no_question(), "No is not asked again while the file stays as it is")
        self.assertEqual(self.view_text(), "first line\\ntyped", "never a silent append to an edited text")
        write(path, b"another line\r\n", "ab")
        h.key(self.question(), "n")
        h.eventually(self.no_question, what="the second question to close")
        self.assertEqual(self.view_text(), "first line\\ntyped")


if __name__ == "__main__":
    unittest.main()
