"""Every dialog of the real quillon.exe in each of its six languages: Go To, About, Find, the version
check's verdict, the print preview's bar, the two questions before a save and the recovery offer. Each static text and button
is measured in its own font, inside the program (windowText fit), against the room its control gives it,
and the verdict's rich text must need no scrolling: a longer translation must not be cut, and no
character may come out as an empty box (the Japanese glyphs come from scripts/wine-fonts.reg). One start
per language; a screenshot of each dialog is kept as dialogs-<language>-<dialog>.png, the measures as
dialogs-fit.txt."""
import collections
import os
import re
import sys
import unittest

import harness as h

sys.path.insert(0, os.path.join(h.SOURCE_DIR, "tests", "server"))
import productServer  # noqa: E402

LANGUAGES = ("English", "German", "French", "Spanish", "Italian", "Japanese")
DOCUMENT = "show logs.bat"
# a newer version on the server: the verdict with the longest text and a link
NEWER = "Quillon version 999999\nQuillon version_string 99.9.9999\n"

# One fit line of windowText: id, class, fits, the text's width and height, the control's, characters
# drawn as the missing-glyph box, face, text.
Fit = collections.namedtuple("Fit", "id cls fits need_w need_h room_w room_h missing face text")


tearDownModule = h.end_wine


def fits(cls):
    """The measured texts of every visible window of Win32 class `cls`."""
    rows = []
    for line in h.wine(h.WINDOW_TEXT, "fit", cls, timeout=120).stdout.decode("utf-8", "replace").splitlines():
        f = line.rstrip("\r").split("\t", 9)
        if len(f) == 10 and f[0].lstrip("-").isdigit():
            rows.append(Fit(int(f[0]), f[1], f[2] == "1", *map(int, f[3:8]), f[8], f[9]))
    return rows


def command(name):
    """What posts the frame its command `name`, once the frame is the visible window it was before the
    last dialog (a dialog that has just closed can leave it hidden from the probe for a moment)."""
    number = getattr(h.ID, name)
    return lambda: h.eventually(lambda: h.wine(h.WINDOW_TEXT, "command", "winFrame", number).returncode == 0,
                                what="the frame to take command %s" % name)


def shown_dialog():
    """The one visible dialog (#32770) of the prefix: its title, or None."""
    tops = [r for r in h.windows("#32770") if r.visible and r.cls == "#32770"]
    return tops[0].text if len(tops) == 1 else None


def read(path):
    with open(path, "rb") as f:
        return f.read()


def remove_recovery_files():
    for path in h.recovery_files():
        os.remove(path)


class Dialogs(h.QuillonTestCase):
    def setUp(self):
        super().setUp()
        # the text each run leaves is offered by the next; none is left to the tests after this one
        self.addCleanup(remove_recovery_files)
        folder = h.scratch_dir("dialogs")
        self.path = os.path.join(folder, DOCUMENT)
        with open(os.path.join(folder, "table.txt"), "w", encoding="utf-8") as f:
            f.write(NEWER)
        server = productServer.ProductServer(os.path.join(folder, "table.txt"),
                                             os.path.join(folder, "requests.log")).start()
        self.addCleanup(server.stop)
        self.server_url = server.url
        self.measured, self.cut, self.boxes = {}, [], []

    def check(self, language, dialog, cls, wid=None):
        """Measures the texts of what is shown now and keeps a screenshot of it."""
        rows = h.eventually(lambda: fits(cls), what="the texts of %s in %s" % (dialog, language))
        h.screenshot("dialogs-%s-%s" % (language.lower(), dialog), wid)
        self.measured[(language, dialog)] = rows
        for row in rows:
            if row.missing:
                self.boxes.append("%s/%s: %d characters of %r in %s" % (language, dialog, row.missing, row.text,
                                                                       row.face))
            if not row.fits:
                self.cut.append("%s/%s: %r needs %dx%d, control %d (%s) gives %dx%d" % (
                    language, dialog, row.text, row.need_w, row.need_h, row.id, row.cls, row.room_w, row.room_h))

    def modal(self, language, dialog, open_it, close=None):
        """Opens a dialog or message box with `open_it`, checks it, and closes it with `close` or Escape."""
        open_it()
        title = h.eventually(shown_dialog, timeout=60, what="%s in %s" % (dialog, language))
        wid = h.wait_window("^%s$" % re.escape(title), timeout=30)
        self.check(language, dialog, "#32770", wid)
        (close or (lambda: h.key(wid, "Escape")))()
        h.eventually(lambda: not shown_dialog(), what="%s in %s to close" % (dialog, language))

    def leave_text(self, frame):
        """Changes the document, waits for its recovery file and ends Quillon abruptly, so that the next
        start offers the text."""
        h.key(frame, "ctrl+End")
        h.type_text(frame, " rem")
        h.eventually(lambda: any(path.endswith(".qrf") and b" rem" in read(path) for path in h.recovery_files()),
                     timeout=15, what="the text in a recovery file")
        h.end_wine()

    def start_quillon(self, language):
        with open(self.path, "wb") as f:
            f.write(b"for %%i in (*.log) do type %%i")
        self.start(h.wine_path(self.path), env={"LC_MESSAGES": language, "QWZ_PRODUCT_SERVER": self.server_url})

    def test_every_text_of_every_dialog_fits_in_every_language(self):
        self.start_quillon("English")
        self.leave_text(h.wait_window(re.escape(DOCUMENT)))
        discard = h.ID.IDC_RECOVERY_DISCARD
        for language in LANGUAGES:
            self.start_quillon(language)
            # the first look at a starting prefix goes through X: a probe started beside the program can
            # hang while Wine brings the prefix up
            offer = h.catalog(language).gettext("Recover Unsaved Text")
            h.wait_window("^%s$" % re.escape(offer), timeout=60)
            self.modal(language, "recovery", lambda: None, close=lambda: h.eventually(
                lambda: h.wine(h.WINDOW_TEXT, "command", "#32770", discard).returncode == 0, what="Discard"))
            frame = h.wait_window(re.escape(DOCUMENT))
            self.modal(language, "goto", command("ID_EDIT_GOTO_LINE"))
            self.modal(language, "about", command("ID_APP_ABOUT"))
            self.modal(language, "find", command("ID_EDIT_FIND"))
            self.modal(language, "version", command("ID_HELP_CHECK_VERSION"))

            command("ID_FILE_PRINT_PREVIEW")()
            self.check(language, "preview", "winPrintPreview", frame)
            h.key(frame, "Escape")
            h.eventually(lambda: not fits("winPrintPreview"), what="the preview to close")

            # a changed document: the question before its doubled per cent signs are saved as one, then
            # the question whether to save it at all; its text is offered at the next start
            h.key(frame, "ctrl+End")
            h.type_text(frame, " rem")
            self.modal(language, "save-altered", lambda: h.key(frame, "ctrl+s"))
            self.modal(language, "save-changes", command("ID_FILE_NEW"))
            self.leave_text(frame)

        with open(os.path.join(h.ARTIFACTS, "dialogs-fit.txt"), "w", encoding="utf-8") as f:
            for (language, dialog), rows in self.measured.items():
                f.writelines("%s\t%s\t%s\n" % (language, dialog, "\t".join(map(str, row))) for row in rows)
        for (language, dialog), rows in self.measured.items():
            self.assertTrue(any(r.cls.lower() == "button" for r in rows), "%s/%s: no button measured: %r" %
                            (language, dialog, rows))
        german_cancel = h.catalog("German").gettext("Cancel")
        self.assertNotEqual(german_cancel, "Cancel")
        self.assertIn(german_cancel, [r.text for r in self.measured[("German", "goto")]], "the German run is German")
        self.assertFalse(self.boxes, "characters drawn as empty boxes:\n" + "\n".join(self.boxes))
        self.assertFalse(self.cut, "texts cut by their controls:\n" + "\n".join(self.cut))


if __name__ == "__main__":
    unittest.main()
