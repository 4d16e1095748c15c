"""The release files as users get them: the signed MSI installed, upgraded, refused and removed by msiexec in
a fresh Wine prefix of this test's own, the portable zip run from an awkward folder, the signatures and the
checksums. Both packages carry exactly the build's installation tree."""
import os
import re
import shutil
import subprocess
import sys
import unittest
import zipfile
from pathlib import Path

import harness as h
from test_usage import USAGE_MESSAGES

BUILD, VERSION = Path(h.BUILD_DIR), os.environ["QUILLON_PACKAGE_VERSION"]
TREE = BUILD / "dist" / "Quillon"
MSI, ZIP = (BUILD / "dist" / f"Quillon-{VERSION}-x64.{kind}" for kind in ("msi", "zip"))
SCRATCH, PREFIX = BUILD / "e2e-scratch" / "installer", BUILD / "installer-prefix"
DRIVE_C = PREFIX / "drive_c"
INSTALLED = DRIVE_C / "Program Files" / "Tarvik" / "Quillon"
UNINSTALL = r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall"
# Windows Installer's own records of what it installed, kept as empty keys once all is removed
INSTALLER_RECORDS = (r"HKEY_LOCAL_MACHINE\Software\Classes\Installer",
                     r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Installer")
h.WINEPREFIX = str(PREFIX)  # the harness's programs and window probes run in this test's prefix
# no menu entries for the Linux desktop: the test writes nothing outside the build folder
ENV = {"WINEDLLOVERRIDES": "mscoree,mshtml=;winemenubuilder.exe=d", "LC_ALL": "", "LC_MESSAGES": "", "LANG": ""}


def wine(*args, env=None):
    return h.wine(*args, env={**ENV, **(env or {})}, timeout=600)


def setUpModule():
    for folder in (SCRATCH, PREFIX):
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
    booted = wine("--boot")
    if booted.returncode != 0:
        raise RuntimeError("no Wine prefix for the installer: %s" % booted.stderr.decode(errors="replace"))


def tearDownModule():
    wine("--server", "-k")


def tree_files(root):
    return {p.relative_to(root).as_posix(): p.read_bytes() for p in Path(root).rglob("*") if p.is_file()}


def drive_c():
    return {Path(d, n).relative_to(DRIVE_C).as_posix() for d, dirs, files in os.walk(DRIVE_C) for n in dirs + files}


def registry(key=None):
    """The software settings of the machine and the users (or those under `key`), Wine's own left out, as
    {key: {value: data}} with data as regedit writes it."""
    out = SCRATCH / "registry.reg"
    wine("regedit", "/e", h.wine_path(out), *([key] if key else []))
    keys, values = {}, None
    for line in out.read_bytes().decode("utf-16").replace("\\\r\n  ", "").splitlines():
        if line.startswith("["):
            values = keys.setdefault(line[1:-1], {})
        elif values is not None and "=" in line:
            name, _, data = line.partition("=") if line.startswith("@") else line[1:].partition('"=')
            values[name] = data
    return {k: v for k, v in keys.items() if re.match(r"HKEY_(LOCAL_MACHINE|USERS\\[^\\]+)\\Software\\(?!Wine\b)", k)}


def flat(keys):
    return set(keys) | {f"{k}|{n}={d}" for k, values in keys.items() for n, d in values.items()}


def text(data):
    return data[1:-1].replace('\\"', '"').replace("\\\\", "\\")


class Packages(unittest.TestCase):
    def assertSameTree(self, root):
        mine, theirs = tree_files(root), tree_files(TREE)
        self.assertIn("sys/exec/quillon.exe", theirs)
        self.assertEqual(sorted(mine), sorted(theirs))
        for name in theirs:
            self.assertTrue(mine[name] == theirs[name], f"{name} differs from the build's tree")

    def assertUsage(self, exe, languages=("English", "German"), variable="LC_ALL"):
        for language in languages:
            english = language == "English"
            messages = USAGE_MESSAGES if english else [h.catalog(language).gettext(m) for m in USAGE_MESSAGES]
            # Wine reads a Linux path in the Linux locale's encoding, which LC_ALL would override
            done = wine(exe, "-help", env={variable: language, "LC_CTYPE": "C.UTF-8"})
            self.assertEqual(done.stdout.decode("utf-8"), "".join(messages).replace("\n", "\r\n"), language)

    def entry(self, keys):
        """The one uninstall entry named Quillon, as (key, values)."""
        found = [(k, v) for k, v in keys.items() if k.startswith(UNINSTALL) and v.get("DisplayName") == '"Quillon"']
        self.assertEqual(len(found), 1, [k for k, _ in found])
        return found[0]

    def msiexec(self, *args):
        done = wine("msiexec", *args)
        self.assertEqual(done.returncode, 0, f"msiexec {args}")

    def test_signatures_hold_and_break_when_the_file_changes(self):
        verify = ["osslsigncode", "verify", "-CAfile", BUILD / "signing" / "test-ca.pem", "-in"]
        for signed in (TREE / "sys" / "exec" / "quillon.exe", MSI):
            done = subprocess.run(verify + [signed], capture_output=True, text=True)
            self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
            changed = shutil.copy(signed, SCRATCH / ("changed-" + signed.name))
            if signed == MSI:
                subprocess.run(["msibuild", changed, "-q", "UPDATE `Property` SET `Value` = 'Someone else' "
                                "WHERE `Property` = 'Manufacturer'"], check=True, capture_output=True)
            else:
                data = bytearray(signed.read_bytes())
                data[len(data) // 2] ^= 0xFF
                Path(changed).write_bytes(data)
            self.assertNotEqual(subprocess.run(verify + [changed], capture_output=True).returncode, 0, signed.name)

    def test_checksums(self):
        done = subprocess.run(["sha256sum", "--strict", "-c", "SHA256SUMS"], cwd=TREE.parent, capture_output=True,
                              text=True)
        self.assertEqual(done.stdout.splitlines(), [f"{MSI.name}: OK", f"{ZIP.name}: OK"], done.stderr)

    def test_zip_runs_where_it_is_unpacked(self):
        folder = SCRATCH / "Tragbare Programme Ünïcödé 試験"
        with zipfile.ZipFile(ZIP) as z:
            z.extractall(folder)
        self.assertSameTree(folder / "Quillon")
        self.assertUsage(folder / "Quillon" / "sys" / "exec" / "quillon.exe", ("German",), "LC_MESSAGES")

    def test_msi_installs_upgrades_refuses_older_and_removes_cleanly(self):
        # the user's own settings, which no uninstall may touch
        wine("reg", "add", r"HKCU\Software\Tarvik\Quillon\Settings", "/v", "Kept", "/d", "yes", "/f")
        files_before, keys_before = drive_c(), registry()
        self.install(files_before, keys_before)
        newer = self.upgrade()
        self.refuse_older(newer)
        self.remove(files_before, keys_before)

    def install(self, files_before, keys_before):
        self.msiexec("/i", h.wine_path(MSI), "/qn")
        keys = registry()
        self.assertSameTree(INSTALLED)
        self.assertUsage(INSTALLED / "sys" / "exec" / "quillon.exe")
        code, entry = self.entry(keys)
        self.assertEqual({n: text(entry[n]) for n in ("DisplayName", "DisplayVersion", "Publisher", "InstallLocation")},
                         {"DisplayName": "Quillon", "DisplayVersion": VERSION, "Publisher": "Tarvik",
                          "InstallLocation": "C:\\Program Files\\Tarvik\\Quillon\\"})
        # Apps & features takes the icon from the installer's product record
        icons = [text(v["ProductIcon"]) for v in keys.values() if "ProductIcon" in v]
        self.assertEqual(len(icons), 1, icons)
        self.assertEqual((DRIVE_C / icons[0][3:].replace("\\", "/")).read_bytes(),
                         Path(os.environ["QUILLON_ICON"]).read_bytes())
        # nothing but the folder, the shortcut and the installer's own cache
        added = {f for f in drive_c() - files_before if not f.startswith(("Program Files/Tarvik", "windows/Installer"))}
        self.assertEqual(len(added), 1, added)
        shortcut = added.pop()
        self.assertRegex(shortcut, r"/Start Menu/Programs/Quillon\.lnk$")
        target = b"C:\\Program Files\\Tarvik\\Quillon\\sys\\exec\\quillon.exe\0"
        self.assertIn(target, (DRIVE_C / shortcut).read_bytes())
        self.assertEqual({k for k in flat(keys) - flat(keys_before) if not k.startswith((code, *INSTALLER_RECORDS))},
                         set())

    def upgrade(self):
        """Installs a next build, then a next version, each made here from the same tree; returns the last.
        Windows Installer compares only three fields of a version, so the build number is the harder case."""
        a, b, c, d = map(int, VERSION.split("."))
        for newer in (f"{a}.{b}.{c}.{d + 1}", f"{a}.{b}.{c + 1}.{d}"):
            subprocess.run([sys.executable, Path(h.SOURCE_DIR, "dist", "package.py"), "--tree", TREE, "--icon",
                            os.environ["QUILLON_ICON"], "--version", newer, "--out", SCRATCH, "--signing",
                            BUILD / "signing", "--msi-only"], check=True)
            self.msiexec("/i", h.wine_path(SCRATCH / f"Quillon-{newer}-x64.msi"), "/qn")
            self.assertEqual(text(self.entry(registry(UNINSTALL))[1]["DisplayVersion"]), newer)
        self.assertSameTree(INSTALLED)
        return newer

    def refuse_older(self, newer):
        # with its user interface, as a double-click starts it: a message box (titled so by Wine) says why
        installer = h.Program(["/i", h.wine_path(MSI)], exe="msiexec", env=ENV)
        box = h.wait_window("^Install Failed$")
        h.screenshot("installer-refuses-older", box)
        self.assertIn("A newer version of Quillon is already installed. Uninstall it first to install this older "
                      "version.", [c.text for c in h.window_texts("#32770")])
        h.key(box, "Return")
        self.assertNotIn(installer.wait(timeout=120), (0, None), "refused, and ended")
        self.assertEqual(text(self.entry(registry(UNINSTALL))[1]["DisplayVersion"]), newer)

    def remove(self, files_before, keys_before):
        code = self.entry(registry(UNINSTALL))[0]
        self.msiexec("/x", code.rpartition("\\")[2], "/qn")  # as Apps & features does
        self.assertEqual(drive_c() ^ files_before, {"windows/Installer"})
        keys_after = registry()
        self.assertEqual(flat(keys_before) - flat(keys_after), set(), "the uninstall took what was there before")
        # left: the installer's empty record keys, and what the program itself kept for its user
        users = re.compile(r"HKEY_USERS\\[^\\]+\\Software\\Tarvik\\")
        left = {e for e in flat(keys_after) - flat(keys_before)
                if not (e.startswith(INSTALLER_RECORDS) and "|" not in e or users.match(e))}
        self.assertEqual(left, set())


if __name__ == "__main__":
    unittest.main(verbosity=2)
