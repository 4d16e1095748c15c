"""Recovery of unsaved text against the real program: text typed into a file's document and into an
Untitled one survives Quillon being ended abruptly (the prefix's wineserver killed), is offered at the next
start, comes back exactly under its title with Restore and saves with Ctrl+S; a text saved before the kill
leaves nothing to offer; Discard empties the recovery folder."""
import os
import re
import unittest

import harness as h

TITLE_TAIL = " - Quillon"
OFFER = "^Recover Unsaved Text$"

tearDownModule = h.end_wine


def record_text(path):
    """The text of a recovery file (after its header's empty line)."""
    with open(path, "rb") as f:
        data = f.read()
    header, _, text = data.partition(b"\n\n")
    return header.split(b"\n"), text


def read(path):
    with open(path, "rb") as f:
        return f.read()


class Recovery(h.QuillonTestCase):
    def setUp(self):
        super().setUp()
        for f in h.recovery_files():
            os.remove(f)

    def type_and_kill(self, wid, text):
        """Types `text`, waits for its recovery file, then ends Quillon the hard way."""
        h.type_text(wid, text)
        files = h.eventually(lambda: [f for f in h.recovery_files() if f.endswith(".qrf")], timeout=15,
                             what="a recovery file")
        h.eventually(lambda: record_text(files[0])[1].endswith(text.encode("utf-8")), timeout=15,
                     what="the typed text in the recovery file")
        h.end_wine()

    def restore(self, title_regex):
        """Starts Quillon again, chooses Restore (the default button) and returns the main window."""
        self.start()
        offer = h.wait_window(OFFER, timeout=60)
        h.screenshot("recovery-offer", offer)
        h.key(offer, "Return")
        # a search while the offer's window goes can fail on it: wait until it has gone
        h.eventually(lambda: "Recover Unsaved Text" not in h.visible_titles(), what="the offer to close")
        return h.wait_window(title_regex, timeout=30)

    def test_a_files_text_comes_back_under_its_title_and_saves_to_the_file(self):
        folder = h.scratch_dir("recovery-file")
        path = os.path.join(folder, "notes.txt")
        with open(path, "wb") as f:
            f.write(b"first line\n")
        self.start(h.wine_path(path))
        wid = h.wait_window(re.escape("notes.txt" + TITLE_TAIL))
        h.key(wid, "ctrl+End")
        self.type_and_kill(wid, " typed more")
        self.assertEqual(read(path), b"first line\n", "the kill wrote nothing to the file")

        wid = self.restore("^" + re.escape(h.wine_path(path) + TITLE_TAIL))
        # the new run keeps the restored text in its own file at once; it is the view's text
        _, text = record_text(h.eventually(h.recovery_files, what="the restored text's own file")[0])
        self.assertEqual(text, "first line\r\n typed more".encode("utf-8"))
        h.key(wid, "ctrl+s")
        h.eventually(lambda: read(path) != b"first line\n", what="the save of " + path)
        self.assertEqual(read(path), "first line\r\n typed more".encode("utf-8"))
        h.eventually(lambda: not h.recovery_files(), what="an empty recovery folder after the save")

    def test_an_untitled_text_comes_back_as_untitled(self):
        self.start()
        wid = h.wait_window("^Untitled" + re.escape(TITLE_TAIL))
        self.type_and_kill(wid, "never saved")

        wid = self.restore("^Untitled" + re.escape(TITLE_TAIL))
        files = h.eventually(h.recovery_files, what="the restored text's own file")
        header, text = record_text(files[0])
        self.assertEqual(text, b"never saved")
        self.assertEqual(header[1], b"path: ", "no path: Untitled")
        folder = h.scratch_dir("recovery-untitled")
        path = os.path.join(folder, "saved.txt")
        h.key(wid, "ctrl+s")
        dialog = h.wait_window("^Save As$", timeout=30)
        h.type_text(dialog, h.wine_path(path))
        h.key(dialog, "Return")
        h.eventually(lambda: os.path.exists(path) and read(path) == b"never saved", what="the save as " + path)
        h.eventually(lambda: not h.recovery_files(), what="an empty recovery folder after the save")

    def test_a_text_saved_before_the_kill_leaves_nothing_to_recover(self):
        folder = h.scratch_dir("recovery-saved")
        path = os.path.join(folder, "done.txt")
        with open(path, "wb") as f:
            f.write(b"")
        self.start(h.wine_path(path))
        wid = h.wait_window(re.escape("done.txt" + TITLE_TAIL))
        h.type_text(wid, "finished")
        h.eventually(h.recovery_files, timeout=15, what="a recovery file")
        h.key(wid, "ctrl+s")
        h.eventually(lambda: read(path) == b"finished", what="the save of " + path)
        h.eventually(lambda: not h.recovery_files(), what="the recovery file gone with the save")
        h.end_wine()

        self.start()
        h.wait_window("^Untitled" + re.escape(TITLE_TAIL))
        self.assertNotIn("Recover Unsaved Text", h.visible_titles())
        self.assertEqual(h.recovery_files(), [])

    def test_discard_empties_the_recovery_folder(self):
        self.start()
        wid = h.wait_window("^Untitled" + re.escape(TITLE_TAIL))
        self.type_and_kill(wid, "throw away")

        self.start()
        offer = h.wait_window(OFFER, timeout=60)
        h.key(offer, "alt+d")
        h.eventually(lambda: "Recover Unsaved Text" not in h.visible_titles(), what="the offer to close")
        h.wait_window("^Untitled" + re.escape(TITLE_TAIL))
        h.eventually(lambda: not h.recovery_files(), what="an empty recovery folder after Discard")


if __name__ == "__main__":
    unittest.main()
