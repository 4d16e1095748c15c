"""The frame of the real quillon.exe as a user meets it: toolbar, status bar and menus in English and German
(screenshots kept), prompts from a menu opened with the keyboard and from the pointer on a button, the
toolbar hidden, shown and dragged to another side across restarts, and the frame at 144 DPI in a Wine prefix
of its own."""
import os
import unittest

import harness as h

TITLE = " - Quillon"  # "Untitled - Quillon 4.3 (64-bit)", in German "Unbenannt - ..."
BAR_STATE = r"HKCU\Software\Tarvik\Quillon\Bar State"
DPI_PREFIX = os.path.join(h.BUILD_DIR, "wineprefix-144dpi")


tearDownModule = h.end_wine


def colourful(image):
    """How many pixels are clearly coloured (the icons), not grey (face, text, lines)."""
    return sum(1 for i in range(0, len(image.pixels), 3)
               if max(image.pixels[i:i + 3]) - min(image.pixels[i:i + 3]) > 60)


class Frame(h.QuillonTestCase):
    def setUp(self):
        super().setUp()
        h.wine("reg", "delete", BAR_STATE, "/f")

    def launch(self, env=None, prefix=None):
        return self.start(env=env, prefix=prefix), h.wait_window(TITLE)

    def bars(self, prefix=None):
        rows = h.eventually(lambda: h.probe(TITLE, prefix), what="the frame's windows")
        # each bar carries the id of the View command that shows it
        return (rows[0], h.control(rows, h.ID.ID_VIEW_TOOLBAR), h.control(rows, h.ID.ID_VIEW_STATUS_BAR),
                h.view(rows))

    def status_becomes(self, text):
        h.eventually(lambda: self.bars()[2].text == text, what="status bar text %r" % text)

    def keys(self, wid, *keys):
        """Keys through XTEST to the focused window, so that they reach an open menu too."""
        h.xdotool("windowfocus", "--sync", wid)
        h.xdotool("key", "--delay", "60", *keys)

    def exit(self, program, wid):
        self.keys(wid, "alt+f", "x")
        self.assertEqual(program.wait(60), 0, "File > Exit ends the program")

    def test_frame_in_english_and_german(self):
        ready = h.text("AFX_IDS_IDLEMESSAGE")
        german_ready = h.catalog("German").gettext(ready)
        self.assertNotEqual(german_ready, ready)
        for language, ready in (("English", ready), ("German", german_ready)):
            program, wid = self.launch({"LC_ALL": language})
            self.status_becomes(ready)
            frame, toolbar, status, view = self.bars()
            image = h.screenshot("frame-" + language.lower(), wid)
            # the buttons and the status bar's panes are the in-process frame test's
            self.assertTrue(toolbar.visible and status.visible)
            self.assertEqual(toolbar.y + toolbar.h, view.y, "the toolbar sits on top of the text")
            self.assertEqual(status.y, view.y + view.h, "the status bar below it")
            strip = image.crop(toolbar.x - frame.x, toolbar.y - frame.y, toolbar.x - frame.x + toolbar.w,
                               toolbar.y - frame.y + toolbar.h)
            self.assertGreater(colourful(strip), 800, "the icons are drawn in colour")
            program.stop()

    def test_prompts_of_a_keyboard_menu_and_of_a_button(self):
        ready = h.text("AFX_IDS_IDLEMESSAGE")
        _, wid = self.launch()
        self.status_becomes(ready)
        self.keys(wid, "alt+f")
        self.status_becomes(h.prompt("ID_FILE_NEW"))
        h.screenshot("file-menu-prompt")
        self.keys(wid, "Down")
        self.status_becomes(h.prompt("ID_FILE_OPEN"))
        self.keys(wid, "Escape", "Escape")
        self.status_becomes(ready)
        _, _, _, view = self.bars()
        save = h.toolbar_button("winFrame", h.ID.ID_FILE_SAVE)
        h.xdotool("mousemove", save.x + save.w // 2, save.y + save.h // 2)
        self.status_becomes(h.prompt("ID_FILE_SAVE"))
        h.screenshot("save-button-prompt")
        h.xdotool("mousemove", view.x + view.w // 2, view.y + view.h // 2)
        self.status_becomes(ready)

    def drag(self, start, end):
        h.xdotool("mousemove", *start, "mousedown", "1", "mousemove", (start[0] + end[0]) // 2,
                  (start[1] + end[1]) // 2, "mousemove", *end, "mouseup", "1")

    def test_toolbar_hidden_shown_and_docked_across_restarts(self):
        program, wid = self.launch()
        self.keys(wid, "alt+v", "t")
        h.eventually(lambda: not self.bars()[1].visible, what="the toolbar hidden")
        self.exit(program, wid)

        program, wid = self.launch()
        frame, toolbar, _, view = self.bars()
        self.assertFalse(toolbar.visible, "still hidden after a restart")
        self.keys(wid, "alt+v", "t")
        h.eventually(lambda: self.bars()[1].visible, what="the toolbar shown")
        _, toolbar, _, view = self.bars()
        self.drag((toolbar.x + 4, toolbar.y + toolbar.h // 2), (view.x + 3, view.y + view.h // 2))
        h.eventually(lambda: self.bars()[1].h > self.bars()[1].w, what="the toolbar on its side")
        self.exit(program, wid)

        program, wid = self.launch()
        _, toolbar, _, view = self.bars()
        h.screenshot("toolbar-left", wid)
        self.assertTrue(toolbar.visible)
        self.assertGreater(toolbar.h, toolbar.w, "still standing on end after a restart")
        self.assertEqual(toolbar.x + toolbar.w, view.x, "on the left of the text")
        self.drag((toolbar.x + toolbar.w // 2, toolbar.y + 4), (view.x + view.w // 2, view.y + 3))
        h.eventually(lambda: self.bars()[1].w > self.bars()[1].h, what="the toolbar back at the top")
        _, toolbar, _, view = self.bars()
        self.assertEqual(toolbar.y + toolbar.h, view.y)

    def test_frame_at_144_dpi(self):
        scaled = os.path.join(DPI_PREFIX, ".logpixels-144")
        if not os.path.exists(scaled):
            self.assertEqual(h.wine("--boot", prefix=DPI_PREFIX).returncode, 0, "a prefix of its own")
            for key in (r"HKCU\Control Panel\Desktop", r"HKCC\Software\Fonts"):
                h.wine("reg", "add", key, "/v", "LogPixels", "/t", "REG_DWORD", "/d", "144", "/f", prefix=DPI_PREFIX)
            open(scaled, "w").close()
        try:
            _, wid = self.launch(prefix=DPI_PREFIX)
            _, toolbar, status, view = self.bars(DPI_PREFIX)
            h.screenshot("frame-144dpi", wid)
            self.assertGreaterEqual(toolbar.h, 69, "46-pixel buttons grow by half at 144 DPI")
            self.assertEqual(toolbar.y + toolbar.h, view.y)
        finally:
            h.wine("--server", "-k", prefix=DPI_PREFIX)

if __name__ == "__main__":
    unittest.main(verbosity=2)
