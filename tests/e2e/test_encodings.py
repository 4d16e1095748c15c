"""The real quillon.exe with files in the encodings Windows programs write: each opens with exactly its
text in the view (no byte-order mark in it, so nothing can be typed before the mark), and a typed edit
saved with Ctrl+S leaves the file in its encoding, mark and all, holding the original bytes plus the edit;
an 8-bit sentence that a naive detector takes for UTF-16 opens and saves as it always did."""
import time
import unittest

import harness as h
import test_document as td


tearDownModule = h.end_wine

WORLD = "\u00fc \u65e5\u672c\u8a9e \U0001F600\r\nsecond line"

# name, text, Python codec, byte-order mark
FILES = [
    ("utf16le-mark.txt", WORLD, "utf-16-le", b"\xff\xfe"),
    ("utf16be-mark.txt", WORLD, "utf-16-be", b"\xfe\xff"),
    ("utf8-mark.txt", WORLD, "utf-8", b"\xef\xbb\xbf"),
    # without a mark only a text below U+0100 is evidence enough; it is saved without one too
    ("utf16le-no-mark.txt", "Gr\u00fc\u00dfe from a log\r\nsecond line", "utf-16-le", b""),
    # even length, no NUL: a detector going by byte statistics calls it UTF-16
    ("eight-bit.txt", "this app can break", "utf-8", b""),
]


def view_text(name):
    """The text of the view of the window titled `name`, as windowText reports it (CR dropped, LF as \\n)."""
    view = h.view(h.probe(name))
    return view.text if view else None


class Encodings(h.QuillonTestCase):
    open_file = td.Document.open_file
    saved = td.Document.saved

    def shown(self, name, expected):
        """The view's text once it equals `expected`, or the last text read after 20 s."""
        deadline = time.monotonic() + 20
        text = view_text(name)
        while text != expected and time.monotonic() < deadline:
            time.sleep(0.3)
            text = view_text(name)
        return text

    def test_each_encoding_opens_as_its_text_and_saves_back_in_it(self):
        for name, text, codec, mark in FILES:
            with self.subTest(name):
                original = mark + text.encode(codec)
                path, wid = self.open_file(name, original)
                self.assertEqual(self.shown(name, text.replace("\r\n", "\\n")), text.replace("\r\n", "\\n"),
                                 "exactly the text, without the mark")
                h.key(wid, "ctrl+Home")
                h.type_text(wid, "> ")
                h.key(wid, "ctrl+End")
                h.type_text(wid, " edited")
                h.key(wid, "ctrl+s")
                self.assertEqual(self.saved(path, original), mark + ("> " + text + " edited").encode(codec),
                                 "the edit, after the mark and nowhere else, in the file's encoding")
                for program in self.programs:
                    program.stop()
                self.programs.clear()


if __name__ == "__main__":
    unittest.main()
