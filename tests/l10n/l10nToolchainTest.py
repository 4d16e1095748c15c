#!/usr/bin/env python3
"""Proves that the translations' tool chain catches the faults it exists for.

Each case breaks a copy of a real file (a shipped .po, res/strings.txt, res/quillon.rc) in one way and
runs the real tool on it: tools/check_po.py for the template's and the translations' consistency, and the
printf conversions msgfmt lets through. The shipped files pass both checks in the build itself. (The
catalogs the build installs are read by the program in the end-to-end usage tests.)

Environment: QUILLON_SOURCE_DIR, QUILLON_MSGFMT, QUILLON_LANGUAGES ("de=German,fr=French,...").
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SRC = Path(os.environ.get("QUILLON_SOURCE_DIR", Path(__file__).resolve().parents[2]))
MSGFMT = os.environ.get("QUILLON_MSGFMT", "msgfmt")
LANGUAGES = dict(p.split("=") for p in os.environ.get(
    "QUILLON_LANGUAGES", "de=German,fr=French,es=Spanish,it=Italian,ja=Japanese").split(","))
TOOLS = SRC / "tools"
sys.path.insert(0, str(TOOLS))

from check_po import parse_po, parse_po_text  # noqa: E402

POT = SRC / "locale" / "quillon.pot"
RC = SRC / "res" / "quillon.rc"


def run(*args):
    return subprocess.run([str(a) for a in args], capture_output=True, text=True)


def entries_of(path):
    entries, problems = parse_po(path)
    assert not problems, problems
    return entries


def check_po(po_files, template=POT, committed=None, rc=RC):
    args = [sys.executable, TOOLS / "check_po.py", "--template", template, "--rc", rc]
    if committed:
        args += ["--committed", committed]
    return run(*args, *po_files)


def msgfmt(po, out):
    return run(MSGFMT, "--check-format", "--check-header", "--check-domain", "-o", out, po)


def edit_entry(text, msgid, fn):
    """Applies fn to the text block of the entry whose msgid is `msgid`; fails the test if none is."""
    blocks = text.split("\n\n")
    for i, block in enumerate(blocks):
        entries, _ = parse_po_text(block, "block")
        if entries and entries[0].msgid == msgid:
            blocks[i] = fn(block)
            return "\n\n".join(blocks)
    raise AssertionError(f"no entry {msgid!r} to edit")


def set_msgstr(msgstr):
    def fn(block):
        head = block[:block.index("\nmsgstr")]
        return head + "\nmsgstr \"" + msgstr.replace("\\", "\\\\").replace('"', '\\"').replace(
            "\n", "\\n").replace("\t", "\\t").replace("\r", "\\r") + '"'
    return fn


def retranslated(msgid, msgstr):
    return lambda text: edit_entry(text, msgid, set_msgstr(msgstr))


def drop_lines(pattern):
    return lambda block: "\n".join(line for line in block.split("\n") if not re.match(pattern, line))


FILE_NOT_FOUND = "Error: The file %s does not exist or could not be opened"
OLDER = ('You have version %s\n\nThis is OLDER than the latest downloadable version (%s)\n\nThe latest version '
         'can be downloaded from <a href="%s">here</a>\n\nQuillon can be found in the "General Tarvik" section\n')
LINE_RANGE = "Line Number (%d-%d):"


class ShippedFiles(unittest.TestCase):
    """The build itself checks the shipped template and translations; here, what the checks rest on."""

    def test_every_translation_is_a_language_the_build_installs(self):
        self.assertEqual(sorted(p.stem for p in (SRC / "locale").glob("*.po")), sorted(LANGUAGES))

    def test_template_marks_printf_texts(self):
        entries = {e.msgid: e for e in entries_of(POT)}
        cases = [  # msgid, c-format expected
            (FILE_NOT_FOUND, True), (LINE_RANGE, True), (OLDER, True), ("Build Date: %s", True),
            ("Untitled", False), ("&New\tCtrl+N", False), ("Line Number (1-10):", False), ("Go To Line", False)]
        for msgid, c_format in cases:
            with self.subTest(msgid=msgid):
                self.assertIn(msgid, entries)
                self.assertEqual("c-format" in entries[msgid].flags, c_format)


class PrintfConversions(unittest.TestCase):
    """msgfmt --check-format compares the conversions of every entry the template marks c-format (above);
    the check adds what msgfmt allows and MinGW's printf does not."""

    def test_positional_reordering_passes_msgfmt_but_not_the_check(self):
        # msgfmt takes "%2$d ... %1$d"; MinGW's printf does not, so the check refuses it
        original = (SRC / "locale" / "de.po").read_text(encoding="utf-8")
        with tempfile.TemporaryDirectory() as tmp:
            po = Path(tmp) / "de.po"
            po.write_text(retranslated(LINE_RANGE, "Zeilennummer (bis %2$d ab %1$d):")(original), encoding="utf-8")
            r = msgfmt(po, Path(tmp) / "de.mo")
            self.assertEqual(r.returncode, 0, r.stderr)
            r = check_po([po])
            self.assertEqual(r.returncode, 1, r.stderr)
            self.assertIn("the printf conversions must stay ['d', 'd'] in this order", r.stderr)


class Consistency(unittest.TestCase):
    """tools/check_po.py refuses translations that fell out of step with the template."""

    CASES = [  # name, language, edit, expected message
        ("missing entry", "fr", lambda t: edit_entry(t, "Untitled", lambda b: "#. gone"),
         'missing entry "Untitled"'),
        ("obsolete entry", "es", lambda t: t + '\nmsgid "Close the document"\nmsgstr "Cierra el documento"\n',
         'obsolete entry "Close the document"'),
        ("obsolete #~ entry", "it", lambda t: t + '\n#~ msgid "Old text"\n#~ msgstr "Testo vecchio"\n',
         'obsolete entry "Old text"'),
        ("fuzzy", "de", lambda t: edit_entry(t, "Untitled", lambda b: b.replace("msgid", "#, fuzzy\nmsgid", 1)),
         "marked fuzzy"),
        ("untranslated", "ja", retranslated("Ready", ""), "not translated"),
        ("c-format flag dropped", "de", lambda t: edit_entry(t, FILE_NOT_FOUND, drop_lines(r"#, c-format")),
         "c-format flag is missing"),
        ("trailing newline lost", "fr", retranslated("  Display this help\n", "  Affiche cette aide"),
         "ends in 0 line breaks"),
        ("leading blanks lost", "es", retranslated("  Run Quillon\n\n", "Ejecuta Quillon\n\n"),
         "leading blanks differ"),
        ("tooltip separator lost", "it", retranslated("Create a new document\nNew", "Crea un nuovo documento"),
         "has 0 line breaks"),
        ("access key repeated in a menu", "de", retranslated("&Save\tCtrl+S", "&Neu speichern\tCtrl+S"),
         'access key "n" is already used'),
        ("access key lost", "fr", retranslated("&View", "Affichage"), 'no "&" access key'),
        ("two access keys", "ja", retranslated("&Edit", "&編集(&E)"), "more than one"),
        ("shortcut translated", "de", retranslated("&New\tCtrl+N", "&Neu\tStrg+N"), 'shortcut must stay "\\tCtrl+N"'),
        ("%s dropped", "fr", retranslated(FILE_NOT_FOUND, "Erreur : fichier introuvable"),
         "the printf conversions must stay ['s']"),
        ("%d and %s swapped", "es", retranslated("Copyright (C) 2000-%d Tarvik", "Copyright (C) 2000-%s Tarvik"),
         "not ['s']"),
        ("charset not UTF-8", "it", lambda t: t.replace("charset=UTF-8", "charset=ISO-8859-1", 1), "charset=UTF-8"),
    ]

    def test_each_fault_is_reported(self):
        with tempfile.TemporaryDirectory() as tmp:
            for name, lang, edit, expected in self.CASES:
                with self.subTest(name):
                    original = (SRC / "locale" / f"{lang}.po").read_text(encoding="utf-8")
                    po = Path(tmp) / f"{lang}.po"
                    po.write_text(edit(original), encoding="utf-8")
                    r = check_po([po])
                    self.assertEqual(r.returncode, 1, f"{name}: accepted\n{r.stderr}")
                    self.assertIn(expected, r.stderr)


class AsciiKeys(unittest.TestCase):
    """An English text is a catalog key, and the catalog's hash agrees with msgfmt's on ASCII only."""

    def test_a_non_ascii_english_text_is_refused(self):
        with tempfile.TemporaryDirectory() as tmp:
            pot = Path(tmp) / "quillon.pot"
            pot.write_text(POT.read_text(encoding="utf-8").replace('msgid "Untitled"', 'msgid "Untitl\u00e9d"'),
                           encoding="utf-8")
            r = check_po([], template=pot)
            self.assertEqual(r.returncode, 1, r.stderr)
            self.assertIn('"Untitl\u00e9d" is not ASCII', r.stderr)


class NumberedInserts(unittest.TestCase):
    """The window framework's texts carry "%1"-style inserts, which no printf check sees."""

    HEADER = ('msgid ""\nmsgstr ""\n"Language: de\\n"\n"MIME-Version: 1.0\\n"\n'
              '"Content-Type: text/plain; charset=UTF-8\\n"\n"Content-Transfer-Encoding: 8bit\\n"\n\n')
    CASES = [  # translation, accepted, expected message
        ("Änderungen an %1 speichern?", True, ""),
        ("%1: Änderungen speichern? (%2)", False, "numbered inserts ['%1'] must each stay"),
        ("Änderungen speichern?", False, "numbered inserts ['%1'] must each stay"),
        ("%1 und %1 speichern?", False, "numbered inserts ['%1'] must each stay"),
    ]

    def test_each_insert_stays_once(self):
        with tempfile.TemporaryDirectory() as tmp:
            pot, po = Path(tmp) / "t.pot", Path(tmp) / "de.po"
            pot.write_text(self.HEADER + 'msgid "Save changes to %1?"\nmsgstr ""\n', encoding="utf-8")
            for text, accepted, expected in self.CASES:
                with self.subTest(text):
                    po.write_text(self.HEADER + f'msgid "Save changes to %1?"\nmsgstr "{text}"\n', encoding="utf-8")
                    r = check_po([po], template=pot)
                    self.assertEqual(r.returncode, 0 if accepted else 1, r.stderr)
                    self.assertIn(expected, r.stderr)


class StaleTemplate(unittest.TestCase):
    """A text changed in the sources without regenerating locale/quillon.pot fails with the way out."""

    # one text of each source; which texts make_pot reads from a resource script is ResourceScriptTexts' test
    CASES = [  # name, file, old, new
        ("string reworded", "strings.txt", '"Untitled"', '"Unnamed"'),
        ("menu text changed", "quillon.rc", '"E&xit"', '"&Quit"'),
    ]

    def test_changed_sources_fail_the_comparison(self):
        with tempfile.TemporaryDirectory() as tmp:
            res = Path(tmp) / "res"
            shutil.copytree(SRC / "res", res)
            for name, file, old, new in self.CASES:
                with self.subTest(name):
                    shutil.copy(SRC / "res" / file, res / file)
                    text = (res / file).read_text(encoding="utf-8")
                    self.assertIn(old, text)
                    (res / file).write_text(text.replace(old, new, 1), encoding="utf-8")
                    pot = Path(tmp) / "quillon.pot"
                    r = run(sys.executable, TOOLS / "make_pot.py", res / "strings.txt", res / "quillon.rc", "-o", pot)
                    self.assertEqual(r.returncode, 0, r.stderr)
                    r = check_po([], template=pot, committed=POT, rc=res / "quillon.rc")
                    self.assertEqual(r.returncode, 1, f"{name}: the stale template was accepted")
                    self.assertIn("tools/make_pot.py res/strings.txt res/quillon.rc -o locale/quillon.pot", r.stderr)
                    shutil.copy(SRC / "res" / file, res / file)

    def test_the_documented_way_out_leaves_only_the_new_text_to_translate(self):
        msgmerge = shutil.which("msgmerge", path=str(Path(MSGFMT).parent)) or shutil.which("msgmerge")
        if not msgmerge:
            self.skipTest("msgmerge not installed")
        with tempfile.TemporaryDirectory() as tmp:
            tmp = Path(tmp)
            shutil.copytree(SRC / "res", tmp / "res")
            strings = tmp / "res" / "strings.txt"
            strings.write_text(strings.read_text(encoding="utf-8").replace('"Untitled"', '"Nameless"'),
                               encoding="utf-8")
            pot, po = tmp / "quillon.pot", tmp / "de.po"
            r = run(sys.executable, TOOLS / "make_pot.py", strings, tmp / "res" / "quillon.rc", "-o", pot)
            self.assertEqual(r.returncode, 0, r.stderr)
            shutil.copy(SRC / "locale" / "de.po", po)
            r = run(msgmerge, "--quiet", "--update", "--no-fuzzy-matching", "--backup=none", po, pot)
            self.assertEqual(r.returncode, 0, r.stderr)
            r = run(Path(msgmerge).with_name("msgattrib"), "--no-obsolete", "-o", po, po)
            self.assertEqual(r.returncode, 0, r.stderr)
            r = check_po([po], template=pot, committed=pot, rc=tmp / "res" / "quillon.rc")
            problems = [line for line in r.stderr.splitlines() if "problem(s)" not in line]
            self.assertEqual(len(problems), 1, r.stderr)
            self.assertIn('"Nameless": not translated', problems[0])


class ResourceScriptTexts(unittest.TestCase):
    """make_pot reads the texts a user sees from any well-formed resource script."""

    RC_TEXT = '''\
// a comment with "quotes" that is no text
#include "resource.h"
7 MENU
BEGIN
    POPUP "&Tools"
    BEGIN
        MENUITEM "Fish && &Chips\\tF9",   100
        MENUITEM SEPARATOR
        POPUP "&More"
        BEGIN
            MENUITEM "Say ""hi""",   101, GRAYED
        END
    END
END
9 DIALOGEX 0, 0, 100, 50
CAPTION "Settings"
FONT 8, "MS Shell Dlg", 0, 0, 0x1
BEGIN
    LTEXT "A long label that goes",
          12, 1, 1, 50, 8
    CONTROL "&Enabled", 13, "Button", BS_AUTOCHECKBOX, 1, 10, 50, 8
    CONTROL 128, -1, "Static", SS_ICON, 1, 20, 20, 20
    EDITTEXT 14, 1, 30, 50, 12
    LTEXT "", 15, 1, 40, 50, 8
END
1 VERSIONINFO
BEGIN
    VALUE "CompanyName", "Nobody"
END
'''

    def test_texts_and_their_places(self):
        from make_pot import rc_texts
        with tempfile.TemporaryDirectory() as tmp:
            rc = Path(tmp) / "t.rc"
            rc.write_text(self.RC_TEXT, encoding="utf-8")
            got = [(t.text, t.where) for t in rc_texts(rc)]
        self.assertEqual(got, [
            ("&Tools", "menu 7: popup"),
            ("Fish && &Chips\tF9", "menu 7: item 100"),
            ("&More", "menu 7: popup"),
            ('Say "hi"', "menu 7: item 101"),
            ("Settings", "dialog 9: caption"),
            ("A long label that goes", "dialog 9: control 12"),
            ("&Enabled", "dialog 9: control 13"),
        ])


if __name__ == "__main__":
    unittest.main(verbosity=2)
