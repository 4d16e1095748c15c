"""The real quillon.exe from the installation tree with a document: opened from the command line, typed
into, saved with Ctrl+S and read back, leaving no temporary or backup file; the question before a batch
file's doubled per cent signs are saved as one; Go To Line with Ctrl+G; a missing file; screenshots of
the main window, checked for the wrap, and of the About box from the Help menu."""
import os
import re
import unittest

import harness as h

TITLE_TAIL = " - Quillon"


tearDownModule = h.end_wine


def write(path, data):
    with open(path, "wb") as f:
        f.write(data)


def read(path):
    with open(path, "rb") as f:
        return f.read()


class Document(h.QuillonTestCase):
    def open_file(self, name, data):
        folder = h.scratch_dir(self.id().split(".")[-1])
        path = os.path.join(folder, name)
        write(path, data)
        self.start(h.wine_path(path))
        wid = h.wait_window(re.escape(name) + re.escape(TITLE_TAIL))
        return path, wid

    def saved(self, path, before):
        """Waits until the file on disk differs from `before`; its new bytes. The folder must then hold
        the file alone: no temporary or backup file survives a successful save."""
        data = h.eventually(lambda: read(path) if read(path) != before else None, what="the save of " + path)
        folder, name = os.path.split(path)
        h.eventually(lambda: os.listdir(folder) == [name], what="only %s left in its folder: %r"
                     % (name, os.listdir(folder)))
        return data

    def test_open_type_save_and_read_back(self):
        original = "Gr\u00f6\u00dfe\nsecond line\nthird line".encode("utf-8")
        path, wid = self.open_file("typed.txt", original)
        self.assertIn(h.wine_path(path), h.window_name(wid), "the title shows the path")
        h.key(wid, "ctrl+End")
        h.type_text(wid, " and more")
        h.key(wid, "ctrl+s")
        data = self.saved(path, original)
        self.assertEqual(data, "Gr\u00f6\u00dfe\r\nsecond line\r\nthird line and more".encode("utf-8"),
                         "UTF-8 with CR-LF line ends and no byte-order mark")

    def test_a_batch_file_asks_before_its_doubled_per_cent_signs_are_saved_as_one(self):
        original = b"for %%i in (*.log) do type %%i"
        path, wid = self.open_file("show logs.bat", original)
        h.key(wid, "ctrl+End")
        h.type_text(wid, " rem")
        h.key(wid, "ctrl+s")
        box = h.wait_window("^Quillon$", timeout=30)
        h.screenshot("save-altered-question", box)
        h.key(box, "Escape")
        h.eventually(lambda: "Quillon" not in h.visible_titles(), what="the question to close")
        self.assertEqual(read(path), original, "Cancel leaves the file as it was")
        h.key(wid, "ctrl+s")
        box = h.wait_window("^Quillon$", timeout=30)
        h.key(box, "y")
        self.assertEqual(self.saved(path, original), b"for %i in (*.log) do type %i rem",
                         "Yes writes the text as it was shown")

    def test_ctrl_g_goes_to_line_3(self):
        original = b"".join(b"line %d\n" % i for i in range(1, 11))
        path, wid = self.open_file("lines.txt", original)
        h.key(wid, "ctrl+g")
        dialog = h.wait_window("^Go To Line$", timeout=30)
        h.screenshot("goto-dialog", dialog)
        h.type_text(dialog, "3")
        h.key(dialog, "Return")
        h.eventually(lambda: not h.visible_titles().count("Go To Line"), what="the dialog to close")
        h.type_text(wid, "X")
        h.key(wid, "ctrl+s")
        lines = self.saved(path, original).split(b"\r\n")
        self.assertEqual(lines[2], b"Xline 3", "typed at the start of line 3: %r" % lines[:4])
        self.assertEqual(lines[0], b"line 1")

    def test_a_missing_file_gives_message_200_and_an_untitled_view(self):
        folder = h.scratch_dir("missing")
        path = os.path.join(folder, "nowhere.txt")
        self.start(h.wine_path(path))
        box = h.wait_window("^Quillon$", timeout=60)
        h.screenshot("missing-file-box", box)
        h.key(box, "Return")
        h.wait_window("^Untitled" + re.escape(TITLE_TAIL))
        self.assertFalse(os.path.exists(path), "nothing was written")

    def test_main_window_wraps_a_long_line_inside_the_view(self):
        # the font (Courier New, 10 points) is read in-process, exactly
        text = "iiiiiiiiiiiiiiiiiiii\nWWWWWWWWWWWWWWWWWWWW\n" + "wrap " * 120 + "\nend\n"
        _, wid = self.open_file("look.txt", text.encode("ascii"))
        h.key(wid, "ctrl+Home")
        image = h.eventually(lambda: self.text_area(h.screenshot("main-window", wid)), what="text in the view")
        bands = image.text_lines(limit=200, gap=2)
        self.assertGreaterEqual(len(bands), 5, "4 file lines, the long one wrapped: %r" % bands)
        wrapped = [image.ink_span(*band) for band in bands[2:-1]]
        self.assertGreaterEqual(len(wrapped), 2, "the long line takes several rows")
        self.assertLess(max(span[1] for span in wrapped), image.width, "wrapped rows stay inside the view")

    @staticmethod
    def text_area(image):
        """The view's client area: below the edge line that runs across the window under the menu bar."""
        xs = range(10, image.width - 40, 7)
        edge = next((y for y in range(image.height // 3)
                     if sum(1 for x in xs if sum(image.pixel(x, y)) < 600) > 0.9 * len(xs)), None)
        if edge is None:
            return None
        area = image.crop(4, edge + 3, image.width - 30, image.height - 4)
        return area if area.text_lines() else None

    def test_the_help_menu_opens_the_about_box(self):
        # its texts and bold lines are checked in-process, where the fonts can be read exactly
        _, wid = self.open_file("about.txt", b"about\n")
        h.key(wid, "alt+h")
        h.key(wid, "a")
        about = h.wait_window("^About Quillon$", timeout=30)
        h.screenshot("about-box", about)
        h.key(about, "Return")
        h.eventually(lambda: "About Quillon" not in h.visible_titles(), what="the About box to close")


if __name__ == "__main__":
    unittest.main()
