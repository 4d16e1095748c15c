"""The installed help file, read back with a CHM reader (libchm's enum_chmLib and extract_chmLib): every page
is reached from the contents and from the index, and no link inside it is broken. Then F1 in the real
program opens it in the HTML Help viewer."""
import html.parser
import os
import posixpath
import re
import subprocess
import unittest

import harness as h

CHM = os.path.join(h.DIST_DIR, "file", "help", "quillon.chm")


tearDownModule = h.end_wine


class Links(html.parser.HTMLParser):
    """The sitemap targets (param Local), the links and sources, and the anchors of one HTML file."""

    def __init__(self, text):
        super().__init__()
        self.locals, self.links, self.anchors = [], [], set()
        self.feed(text)

    def handle_starttag(self, tag, attrs):
        a = dict(attrs)
        if tag == "param" and (a.get("name") or "").lower() == "local":
            self.locals.append(a.get("value", ""))
        for name in ("href", "src"):
            if a.get(name):
                self.links.append(a[name])
        for name in ("id", "name"):
            if tag != "param" and a.get(name):
                self.anchors.add(a[name])


class HelpFile(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        listing = subprocess.run(["enum_chmLib", CHM], capture_output=True, text=True, check=True).stdout
        cls.files = {m.group(1).lstrip("/") for m in re.finditer(r"normal file\s+(/\S[^\n]*)", listing)}
        cls.folder = h.scratch_dir("help-file")
        subprocess.run(["extract_chmLib", CHM, cls.folder], capture_output=True, check=True)

    def parse(self, name):
        with open(os.path.join(self.folder, name), encoding="utf-8") as f:
            return Links(f.read())

    def test_every_page_is_in_the_contents_and_in_the_index(self):
        pages = {f for f in self.files if f.endswith(".html")}
        self.assertGreaterEqual(len(pages), 8, sorted(self.files))
        for sitemap in ("contents.hhc", "index.hhk"):
            self.assertIn(sitemap, self.files)
            targets = self.parse(sitemap).locals
            self.assertEqual(set(targets), pages, sitemap + " links every page, and only pages that exist")

    def test_no_internal_link_is_broken(self):
        checked = 0
        for page in sorted(f for f in self.files if f.endswith(".html")):
            for link in self.parse(page).links:
                if re.match(r"[a-z]+:", link):
                    continue  # mailto:, http: and the like leave the help file
                target, _, anchor = link.partition("#")
                target = posixpath.normpath(posixpath.join(posixpath.dirname(page), target)) if target else page
                self.assertIn(target, self.files, "%s links %s" % (page, link))
                if anchor:
                    self.assertIn(anchor, self.parse(target).anchors, "%s links %s" % (page, link))
                checked += 1
        self.assertGreater(checked, 20)


class HelpViewer(h.QuillonTestCase):
    def test_f1_opens_the_help_file_in_the_viewer(self):
        self.start()
        wid = h.wait_window(" - Quillon")
        h.key(wid, "F1")
        viewer = h.wait_window("^Quillon Help$")
        h.screenshot("help-viewer", viewer)


if __name__ == "__main__":
    unittest.main(verbosity=2)
