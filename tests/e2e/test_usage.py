"""The real quillon.exe from the installation tree as a command-line program: its usage text on standard
output or in a log file, its exit status, and the message box when it has no installation tree."""
import os
import shutil
import subprocess
import time
import unittest
from pathlib import Path

BUILD = Path(os.environ["QUILLON_BUILD_DIR"])
SOURCE = Path(os.environ["QUILLON_SOURCE_DIR"])
DIST = BUILD / "dist" / "Quillon"
EXE = DIST / "sys" / "exec" / "quillon.exe"
WINE_RUN = SOURCE / "cmake" / "wine-run.sh"
SCRATCH = BUILD / "e2e-scratch" / "usage"

USAGE = ("Usage:\n\n"
         "  quillon\n"
         "  Run Quillon\n\n"
         "  quillon <file>\n"
         "  Run Quillon and display the requested file\n\n"
         "  quillon -help\n"
         "  Display this help\n")


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def run(args, env=None, exe=EXE, timeout=60):
    full_env = dict(os.environ)
    full_env.update(env or {})
    return subprocess.run([str(WINE_RUN), str(exe), *args], capture_output=True, timeout=timeout, env=full_env)


class UsageText(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        shutil.rmtree(SCRATCH, ignore_errors=True)
        SCRATCH.mkdir(parents=True)

    def assertUsageOnStdout(self, args):
        done = run(args)
        self.assertEqual(done.returncode, 0, done.stderr)
        # a Windows program writes text-mode line ends to a console or a redirected handle
        self.assertEqual(done.stdout.decode("utf-8"), USAGE.replace("\n", "\r\n"))

    def test_help_in_every_spelling(self):
        for args in (["-help"], ["/help"], ["help"]):
            with self.subTest(args=args):
                self.assertUsageOnStdout(args)

    def test_unknown_switch_prints_usage(self):
        for args in (["-bogus"], ["/x", "help"], ["-Help"]):
            with self.subTest(args=args):
                self.assertUsageOnStdout(args)

    def test_logfile_gets_the_text_truncated_and_without_carriage_returns(self):
        log = SCRATCH / "out log.txt"
        log.write_bytes(b"x" * 5000)
        done = run([f'-logfile:{windows_path(log)}', "-help"])
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(done.stdout, b"")
        self.assertEqual(log.read_bytes(), USAGE.encode("utf-8"))

    def test_logfile_without_colon_falls_back_to_stdout(self):
        self.assertUsageOnStdout(["-logfile", "-help"])

    def test_unopenable_logfile_loses_the_text_but_ends_normally(self):
        missing = SCRATCH / "no such folder" / "out.txt"
        done = run([f"-logfile:{windows_path(missing)}", "-help"])
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(done.stdout, b"")
        self.assertFalse(missing.exists())


class MissingInstallationTree(unittest.TestCase):
    """Started from the root of a drive there is no tree two levels up: a message box says so."""

    def test_message_box_then_exit(self):
        drive = SCRATCH.parent / "ydrive"
        shutil.rmtree(drive, ignore_errors=True)
        drive.mkdir(parents=True)
        shutil.copy(EXE, drive / "quillon.exe")
        link = Path(os.environ["WINEPREFIX"]) / "dosdevices" / "y:"
        if link.is_symlink():
            link.unlink()
        link.symlink_to(drive)
        env = dict(os.environ)
        proc = subprocess.Popen([str(WINE_RUN), "Y:\\quillon.exe"], env=env,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        try:
            found = subprocess.run(["xdotool", "search", "--sync", "--name", "^Quillon$"],
                                   capture_output=True, text=True, timeout=60)
            windows = found.stdout.split()
            self.assertTrue(windows, "no message box titled Quillon appeared")
            shot = BUILD / "e2e-artifacts"
            shot.mkdir(exist_ok=True)
            subprocess.run(["import", "-window", "root", str(shot / "no-install-dir.png")], timeout=30)
            subprocess.run(["xdotool", "key", "--window", windows[0], "Return"], timeout=30)
            self.assertEqual(proc.wait(timeout=60), 1)
        finally:
            if proc.poll() is None:
                proc.kill()
            link.unlink()


if __name__ == "__main__":
    unittest.main(verbosity=2)
