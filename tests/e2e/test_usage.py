"""The real quillon.exe from the installation tree as a command-line program: its usage text on standard
output or in a log file, its exit status, and the message box when it has no installation tree."""
import shutil
import unittest
from pathlib import Path

import harness as h

SCRATCH = Path(h.scratch_dir("usage"))

# the seven string-table messages of the usage text, as the catalogs know them
USAGE_MESSAGES = ["Usage:\n\n", "  quillon\n", "  Run Quillon\n\n", "  quillon <file>\n",
                  "  Run Quillon and display the requested file\n\n", "  quillon -help\n", "  Display this help\n"]
USAGE = "".join(USAGE_MESSAGES)
LANGUAGES = ["German", "French", "Spanish", "Italian", "Japanese"]


def run(args, env=None, exe=h.EXE):
    # the language comes from these or, when all are empty, from the Windows user locale (English here)
    return h.wine(exe, *args, env={"LC_ALL": "", "LC_MESSAGES": "", "LANG": "", **(env or {})}, timeout=60)


tearDownModule = h.end_wine


class UsageText(unittest.TestCase):
    def assertUsageOnStdout(self, args):
        done = run(args)
        self.assertEqual(done.returncode, 0, done.stderr)
        # a Windows program writes text-mode line ends to a console or a redirected handle
        self.assertEqual(done.stdout.decode("utf-8"), USAGE.replace("\n", "\r\n"))

    def test_help_and_an_unknown_switch_print_the_usage(self):
        # the spellings of the switches are the command line's unit test
        for args in (["-help"], ["-bogus"]):
            with self.subTest(args=args):
                self.assertUsageOnStdout(args)

    def test_logfile_gets_the_text_truncated_and_without_carriage_returns(self):
        log = SCRATCH / "out log.txt"
        log.write_bytes(b"x" * 5000)
        done = run([f'-logfile:{h.wine_path(log)}', "-help"])
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(done.stdout, b"")
        self.assertEqual(log.read_bytes(), USAGE.encode("utf-8"))

    def test_unopenable_logfile_loses_the_text_but_ends_normally(self):
        missing = SCRATCH / "no such folder" / "out.txt"
        done = run([f"-logfile:{h.wine_path(missing)}", "-help"])
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(done.stdout, b"")
        self.assertFalse(missing.exists())


class TranslatedUsage(unittest.TestCase):
    """The usage text in each shipped language, as its installed catalog translates it."""

    def test_every_shipped_language(self):
        for language in LANGUAGES:
            with self.subTest(language=language):
                expected = "".join(h.catalog(language).gettext(m) for m in USAGE_MESSAGES)
                self.assertNotEqual(expected, USAGE, "the catalog translates nothing")
                done = run(["-help"], env={"LC_ALL": language})
                self.assertEqual(done.returncode, 0, done.stderr)
                self.assertEqual(done.stdout.decode("utf-8"), expected.replace("\n", "\r\n"))

    def test_a_language_without_catalog_stays_english_and_says_so(self):
        done = run(["-help"], env={"LC_ALL": "Klingon"})
        self.assertEqual(done.returncode, 0, done.stderr)
        # translation is switched off: the domain looks under the marker, then finds the English fallback
        warnings = "NLS Warning: Catalog <quillon> failed to load for language <NO_TRANSLATION>\n"
        self.assertEqual(done.stdout.decode("utf-8"), (warnings + USAGE).replace("\n", "\r\n"))

    def test_english_users_get_their_catalog_without_warnings(self):
        for env in ({"LC_ALL": "English"}, {}):
            with self.subTest(env=env):
                done = run(["-help"], env=env)
                self.assertEqual(done.stdout.decode("utf-8"), USAGE.replace("\n", "\r\n"))

    def test_log_file_in_german_is_utf8(self):
        log = SCRATCH / "german.txt"
        done = run([f"-logfile:{h.wine_path(log)}", "-help"], env={"LC_ALL": "German"})
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(log.read_bytes().decode("utf-8"),
                         "".join(h.catalog("German").gettext(m) for m in USAGE_MESSAGES))


class CorruptCatalog(unittest.TestCase):
    """A damaged catalog in the installation tree is refused loudly; the other languages still work."""

    @classmethod
    def setUpClass(cls):
        cls.tree = Path(h.scratch_dir("corrupt-tree")) / "Quillon"
        shutil.copytree(h.DIST_DIR, cls.tree)
        mo = cls.tree / "lib" / "locale" / "German" / "LC_MESSAGES" / "quillon.mo"
        data = bytearray(mo.read_bytes())
        # the translations table now points far past the end of the file
        data[16:20] = (len(data) + 4096).to_bytes(4, "little")
        mo.write_bytes(bytes(data))
        cls.exe = cls.tree / "sys" / "exec" / "quillon.exe"

    REPORT = "Assertion failure: nlsDataBase failed - with error 513\nFile: nls/nlsDataBase Line: 450\n"

    def test_error_line_then_the_assertion_on_stderr(self):
        done = run(["-help"], env={"LC_ALL": "German", "ORBA_ASSERT": "stderr"}, exe=self.exe)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stdout.decode("utf-8"), "NLS Error: Catalog is corrupt\r\n")
        self.assertIn(self.REPORT.replace("\n", "\r\n"), done.stderr.decode("utf-8"))

    def test_other_languages_of_the_same_tree_are_unaffected(self):
        done = run(["-help"], env={"LC_ALL": "French"}, exe=self.exe)
        self.assertEqual(done.returncode, 0, done.stderr)
        expected = "".join(h.catalog("French").gettext(m) for m in USAGE_MESSAGES)
        self.assertEqual(done.stdout.decode("utf-8"), expected.replace("\n", "\r\n"))


class SemicolonInTheInstallationPath(unittest.TestCase):
    """Windows allows ";" in a folder's name: a tree installed below such a folder still speaks German."""

    def test_german_usage_from_below_a_folder_with_a_semicolon(self):
        tree = Path(h.scratch_dir("semicolon")) / "Tools;Old" / "Quillon"
        shutil.copytree(h.DIST_DIR, tree)
        done = run(["-help"], env={"LC_ALL": "German"}, exe=tree / "sys" / "exec" / "quillon.exe")
        self.assertEqual(done.returncode, 0, done.stderr)
        expected = "".join(h.catalog("German").gettext(m) for m in USAGE_MESSAGES)
        self.assertEqual(done.stdout.decode("utf-8"), expected.replace("\n", "\r\n"))


class MissingInstallationTree(h.QuillonTestCase):
    """Started from the root of a drive there is no tree two levels up: a message box says so."""

    def test_message_box_then_exit(self):
        drive = h.scratch_dir("ydrive")
        shutil.copy(h.EXE, drive)
        link = Path(h.WINEPREFIX) / "dosdevices" / "y:"
        if link.is_symlink():
            link.unlink()
        link.symlink_to(drive)
        self.addCleanup(link.unlink)
        program = self.start(exe="Y:\\quillon.exe", env={"LC_ALL": "", "LC_MESSAGES": "", "LANG": ""})
        box = h.wait_window("^Quillon$", timeout=60)
        h.screenshot("no-install-dir", box)
        h.key(box, "Return")
        self.assertEqual(program.wait(timeout=60), 1)

if __name__ == "__main__":
    unittest.main(verbosity=2)
