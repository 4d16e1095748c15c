# End-to-end helpers: start the real quillon.exe from the installation tree under Wine, find its windows
# by title, read their controls, send keys, take screenshots. Every process a test starts is ended by pid;
# the prefix's wineserver is stopped once, at the end of a test file (end_wine in tearDownModule).
import collections
import gettext
import glob
import os
import re
import signal
import subprocess
import time
import unittest

SOURCE_DIR = os.environ.get("QUILLON_SOURCE_DIR", os.path.abspath(os.path.join(os.path.dirname(__file__), "..", "..")))
BUILD_DIR = os.environ.get("QUILLON_BUILD_DIR", os.path.join(SOURCE_DIR, "build", "windows"))
DIST_DIR = os.environ.get("QUILLON_DIST", os.path.join(BUILD_DIR, "dist", "Quillon"))
EXE = os.path.join(DIST_DIR, "sys", "exec", "quillon.exe")
WINEPREFIX = os.environ.get("QUILLON_WINEPREFIX", os.path.join(BUILD_DIR, "wineprefix"))
ARTIFACTS = os.environ.get("QUILLON_E2E_ARTIFACTS", os.path.join(BUILD_DIR, "e2e-artifacts"))
WINE_RUN = os.path.join(SOURCE_DIR, "cmake", "wine-run.sh")
WINDOW_TEXT = os.environ.get("QUILLON_WINDOW_TEXT", os.path.join(BUILD_DIR, "tests", "windowText.exe"))


class _ResourceIds:
    """Resource ids by the names the program uses (ID.ID_FILE_SAVE): from the header the build makes of
    res/strings.txt, the window framework's own ids and res/resource.h, read on first use."""

    def __getattr__(self, name):
        ids = {}
        for path in (os.path.join(BUILD_DIR, "generated", "resourceIds.h"),
                     os.path.join(SOURCE_DIR, "win", "winIds.h"), os.path.join(SOURCE_DIR, "res", "resource.h")):
            with open(path, encoding="utf-8") as f:
                ids.update((m.group(1), int(m.group(2))) for m in re.finditer(r"^#define (\w+) (\d+)$", f.read(), re.M))
        self.__dict__.update(ids)
        if name not in ids:
            raise AttributeError("no resource id named " + name)
        return ids[name]


ID = _ResourceIds()


def text(name):
    """The English text of string `name` in res/strings.txt, its escapes read as the resource compiler
    reads them; a command's prompt is the part before its first "\\n"."""
    escapes = {"n": "\n", "t": "\t", "r": "\r", '"': '"', "\\": "\\"}
    with open(os.path.join(SOURCE_DIR, "res", "strings.txt"), encoding="utf-8") as f:
        for line in f:
            m = re.match(r'^\d+ (\w+) "(.*)"$', line.rstrip("\n"))
            if m and m.group(1) == name:
                return re.sub(r"\\(.)", lambda e: escapes[e.group(1)], m.group(2))
    raise AssertionError("no string named %s in res/strings.txt" % name)


def prompt(command):
    """The status-bar prompt of a command, by its name."""
    return text(command).split("\n")[0]


def wine_env(extra=None, prefix=None):
    env = dict(os.environ)
    prefix = prefix or WINEPREFIX
    # no start-up version check unless a test asks for one: tests never reach out to the maker's server
    env.update({"WINEPREFIX": prefix, "QUILLON_WINEPREFIX": prefix, "WINEDEBUG": "-all",
                "WINEDLLOVERRIDES": "mscoree,mshtml=", "QWZ_DISABLE_STARTUP_VERSION_CHECK": "1"})
    if extra:
        env.update(extra)
    return env


def wine(*args, env=None, prefix=None, timeout=300):
    """Runs a Windows program (or wine-run.sh's --boot, --server) to its end in `prefix`, default the build's."""
    return subprocess.run([WINE_RUN, *map(str, args)], env=wine_env(env, prefix), capture_output=True,
                          timeout=timeout)


def catalog(language):
    """The installed catalog of `language`, as Python's gettext reads it."""
    with open(os.path.join(DIST_DIR, "lib", "locale", language, "LC_MESSAGES", "quillon.mo"), "rb") as f:
        return gettext.GNUTranslations(f)


def wine_path(unix_path):
    """A Unix path as the Windows program sees it (Wine's Z: drive)."""
    return "Z:" + os.path.abspath(unix_path).replace("/", "\\")


def scratch_dir(name):
    """A fresh directory for one test under the artefacts folder, kept for inspection after a failure."""
    path = os.path.join(ARTIFACTS, "scratch", name)
    subprocess.run(["rm", "-rf", path], check=True)
    os.makedirs(path)
    return path


_server_kept = False


def keep_wine():
    """Keeps the prefix's wineserver, and with it the desktop, up between programs until end_wine: a
    program started while an idle server shuts down can come up on a desktop that is going away."""
    global _server_kept
    if not _server_kept:
        # not through wine(): the server lives on with whatever output it was given
        subprocess.run([WINE_RUN, "--server", "-p"], env=wine_env(), stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=60)
        _server_kept = True


class Program:
    """One Windows program started through cmake/wine-run.sh; stop() ends it by its pid. What Wine says
    on stderr goes to <artefacts>/wine-stderr.log, for the failure that no window explains."""

    def __init__(self, args, exe=EXE, env=None, prefix=None):
        if prefix is None:
            keep_wine()
        os.makedirs(ARTIFACTS, exist_ok=True)
        with open(os.path.join(ARTIFACTS, "wine-stderr.log"), "ab") as err:
            self.process = subprocess.Popen([WINE_RUN, str(exe)] + list(args), env=wine_env(env, prefix),
                                            stdout=subprocess.DEVNULL, stderr=err, start_new_session=True)
        self.pid = self.process.pid

    def wait(self, timeout=60):
        """The exit status, or None when the program still runs after `timeout` seconds."""
        try:
            return self.process.wait(timeout=timeout)
        except subprocess.TimeoutExpired:
            return None

    def stop(self):
        if self.process.poll() is None:
            os.kill(self.pid, signal.SIGKILL)
            self.process.wait(timeout=30)


def xdotool(*args, timeout=30):
    result = subprocess.run(["xdotool"] + [str(a) for a in args], capture_output=True, text=True, timeout=timeout)
    return result.returncode, result.stdout.strip()


def wait_window(title_regex, timeout=60, visible=True):
    """The id of the first window whose title matches `title_regex`, waiting for it up to `timeout` s."""
    args = ["search", "--sync"] + (["--onlyvisible"] if visible else []) + ["--name", title_regex]
    try:
        rc, out = xdotool(*args, timeout=timeout)
    except subprocess.TimeoutExpired:
        raise AssertionError("no window titled /%s/ within %s s; windows: %s" % (title_regex, timeout,
                                                                                  visible_titles()))
    if rc != 0 or not out:
        raise AssertionError("xdotool search for /%s/ failed (%d)" % (title_regex, rc))
    return out.splitlines()[0]


def visible_titles():
    rc, out = xdotool("search", "--onlyvisible", "--name", ".")
    return [window_name(w) for w in out.splitlines()] if rc == 0 else []


def window_name(wid):
    return xdotool("getwindowname", wid)[1]


def window_geometry(wid):
    """(x, y, width, height) of a window in root coordinates."""
    _, out = xdotool("getwindowgeometry", "--shell", wid)
    values = dict(line.split("=", 1) for line in out.splitlines() if "=" in line)
    return int(values["X"]), int(values["Y"]), int(values["WIDTH"]), int(values["HEIGHT"])


def key(wid, *keys):
    """Sends key strokes (xdotool names: ctrl+s, Return, F3) to a window."""
    rc, _ = xdotool("key", "--window", wid, "--delay", "30", *keys)
    if rc != 0:
        raise AssertionError("xdotool key %s failed" % (keys,))


def type_text(wid, text):
    """Types text into a window. Synthetic events sent to a window lose the shift state, so the window
    gets the input focus and the text goes through the XTEST extension instead."""
    xdotool("windowfocus", "--sync", wid)
    rc, _ = xdotool("type", "--delay", "20", text)
    if rc != 0:
        raise AssertionError("xdotool type %r failed" % text)


# One window as tests/e2e/windowText.cpp reports it; x, y, w, h in screen pixels.
Control = collections.namedtuple("Control", "id cls enabled visible x y w h text")


def windows(*args, prefix=None):
    """What windowText.exe reports (see there) as Controls, [] when nothing matches: what the program shows
    in controls that xdotool cannot read."""
    rows = []
    for line in wine(WINDOW_TEXT, *args, prefix=prefix, timeout=120).stdout.decode("utf-8", "replace").splitlines():
        f = line.rstrip("\r").split("\t", 8)
        if len(f) == 9 and f[0].lstrip("-").isdigit():
            rows.append(Control(int(f[0]), f[1], f[2] == "1", f[3] == "1", *map(int, f[4:8]), f[8]))
    return rows


def window_texts(cls):
    """Every window of Win32 class `cls` in the prefix, each followed by its children."""
    return windows(cls)


def probe(title_part, prefix=None):
    """The first visible top-level window whose title holds `title_part`, then its children."""
    return windows("frame", title_part, prefix=prefix)


def control(rows, control_id):
    """The child with `control_id` among probe() rows, or None."""
    return next((r for r in rows[1:] if r.id == control_id), None)


def toolbar_button(cls, command):
    """The toolbar button of `command` in the first visible top-level window of Win32 class `cls`, as a
    Control in screen pixels."""
    rows = windows("button", cls, command)
    if not rows:
        raise AssertionError("no toolbar button for command %d in a window of class %s" % (command, cls))
    return rows[0]


def view(rows):
    """The frame's text view among probe() rows (its one edit control), or None."""
    return next((r for r in rows[1:] if r.cls.lower() == "edit"), None)


def post_command(cls, command):
    """Posts WM_COMMAND `command` to the first visible top-level window of Win32 class `cls`."""
    if wine(WINDOW_TEXT, "command", cls, command, timeout=60).returncode != 0:
        raise AssertionError("no window of class %s took command %d" % (cls, command))


def eventually(probe, timeout=20, what="condition"):
    """Calls `probe` until it returns a true value; the value, or an AssertionError naming `what`."""
    deadline = time.monotonic() + timeout
    last = None
    while time.monotonic() < deadline:
        last = probe()
        if last:
            return last
        time.sleep(0.2)
    raise AssertionError("%s not reached within %s s (last: %r)" % (what, timeout, last))


def screenshot(name, wid=None):
    """Saves the whole screen as <artefacts>/<name>.png (and the window alone as <name>-window.png when
    `wid` is given); returns an Image of the window, or of the screen."""
    os.makedirs(ARTIFACTS, exist_ok=True)
    full = os.path.join(ARTIFACTS, name + ".png")
    subprocess.run(["import", "-window", "root", full], check=True, timeout=60)
    if wid is None:
        return Image.load(full)
    x, y, w, h = window_geometry(wid)
    part = os.path.join(ARTIFACTS, name + "-window.png")
    subprocess.run(["convert", full, "-crop", "%dx%d+%d+%d" % (w, h, x, y), "+repage", part], check=True)
    return Image.load(part)


class Image:
    """An RGB picture read through ImageMagick, with the few measures the tests need."""

    def __init__(self, width, height, pixels, path):
        self.width, self.height, self.pixels, self.path = width, height, pixels, path

    @staticmethod
    def load(path):
        data = subprocess.run(["convert", path, "-depth", "8", "rgb:-"], capture_output=True, check=True).stdout
        size = subprocess.run(["identify", "-format", "%w %h", path], capture_output=True, text=True,
                              check=True).stdout.split()
        width, height = int(size[0]), int(size[1])
        if len(data) != width * height * 3:
            raise AssertionError("%s: %d bytes for %dx%d" % (path, len(data), width, height))
        return Image(width, height, data, path)

    def pixel(self, x, y):
        i = (y * self.width + x) * 3
        return self.pixels[i], self.pixels[i + 1], self.pixels[i + 2]

    def dark(self, x, y, limit=100):
        r, g, b = self.pixel(x, y)
        return r + g + b < 3 * limit

    def crop(self, x0, y0, x1, y1):
        rows = [self.pixels[(y * self.width + x0) * 3:(y * self.width + x1) * 3] for y in range(y0, y1)]
        return Image(x1 - x0, y1 - y0, b"".join(rows), self.path)

    def ink_rows(self, limit=100):
        """Per row, the count of dark pixels."""
        return [sum(1 for x in range(self.width) if self.dark(x, y, limit)) for y in range(self.height)]

    def text_lines(self, limit=100, gap=1):
        """Bands of rows holding dark pixels, as (top, bottom) pairs, bottom exclusive."""
        bands, start = [], None
        rows = self.ink_rows(limit)
        for y, count in enumerate(rows + [0]):
            if count and start is None:
                start = y
            elif not count and start is not None:
                bands.append((start, y))
                start = None
        merged = []
        for band in bands:
            if merged and band[0] - merged[-1][1] <= gap:
                merged[-1] = (merged[-1][0], band[1])
            else:
                merged.append(band)
        return merged

    def ink_span(self, top, bottom, limit=100):
        """(first, last) x of dark pixels within rows top..bottom, or None."""
        xs = [x for x in range(self.width) for y in range(top, bottom) if self.dark(x, y, limit)]
        return (min(xs), max(xs)) if xs else None

    def ink(self, top, bottom, limit=100):
        return sum(1 for y in range(top, bottom) for x in range(self.width) if self.dark(x, y, limit))


def recovery_files(prefix=None):
    """The recovery files in the prefix's %LOCALAPPDATA%\\Tarvik\\Quillon\\Recovery, whatever Wine calls that."""
    pattern = os.path.join(prefix or WINEPREFIX, "drive_c", "users", "*", "**", "Tarvik", "Quillon", "Recovery", "*")
    return sorted(glob.glob(pattern, recursive=True))


def end_wine():
    """Stops the prefix's wineserver and everything still running in it; call once per test file."""
    wine("--server", "-k", timeout=60)
    global _server_kept
    _server_kept = False


class QuillonTestCase(unittest.TestCase):
    """Starts programs through start() and ends each of them after the test, whatever happened."""

    def setUp(self):
        self.programs = []
        if not os.path.exists(EXE):
            self.fail("no installed program at %s: build the windows tree first" % EXE)
        # a text left by an earlier test's program, ended by its pid, would be offered at this one's start
        for path in recovery_files():
            os.remove(path)

    def tearDown(self):
        for program in self.programs:
            program.stop()

    def start(self, *args, **kwargs):
        program = Program(args, **kwargs)
        self.programs.append(program)
        return program
