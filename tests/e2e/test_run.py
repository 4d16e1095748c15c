"""`make run` as a newcomer meets it (scripts/run.sh, in the tests' prefix): Linux's locale variables are
not Quillon's languages, the user's language follows the Linux one, a language chosen for Quillon still
reaches it, and FILE is a Linux path."""
import os
import re
import signal
import subprocess
import unittest

import harness as h

RUN = os.path.join(h.SOURCE_DIR, "scripts", "run.sh")


tearDownModule = h.end_wine


def run_env(**values):
    env = {k: v for k, v in os.environ.items() if k not in ("LC_ALL", "LC_MESSAGES", "LANG")}
    env.update(QUILLON_BUILD_DIR=h.BUILD_DIR, QUILLON_RUN_WINEPREFIX=h.WINEPREFIX, **values)
    return env


class Run(unittest.TestCase):
    def test_language_as_windows_would_choose_it(self):
        cases = [({"LANG": "C.UTF-8"}, "English"),
                 # Wine makes the user locale from LC_ALL even where that locale is not installed
                 ({"LANG": "C.UTF-8", "LC_ALL": "de_DE.UTF-8"}, "German"),
                 ({"LANG": "C.UTF-8", "LC_ALL": "German"}, "German")]
        for env, language in cases:
            with self.subTest(env=env):
                done = subprocess.run([RUN, "-help"], env=run_env(**env), capture_output=True, timeout=120)
                out = done.stdout.decode("utf-8")
                self.assertEqual(done.returncode, 0, done.stderr)
                self.assertTrue(out.startswith(h.catalog(language).gettext("Usage:\n\n").replace("\n", "\r\n")), out)

    def test_file_is_a_linux_path(self):
        path = os.path.join(h.scratch_dir("run-file"), "my notes.txt")
        with open(path, "w") as f:
            f.write("notes\n")
        proc = subprocess.Popen([RUN, "--file", path], env=run_env(), start_new_session=True,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            wid = h.wait_window(re.escape("my notes.txt - Quillon"))
            self.assertIn(h.wine_path(path), h.window_name(wid))
        finally:
            os.killpg(proc.pid, signal.SIGKILL)
            proc.wait(timeout=30)


if __name__ == "__main__":
    unittest.main()
