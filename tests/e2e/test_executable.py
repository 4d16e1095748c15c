"""quillon.exe as shipped: a 64-bit GUI-subsystem program, statically linked, carrying its manifest,
version resource and icon (the one place the icon is checked: tools/make_icon.py draws it, the build
links it), and no symbols: those stay in the build folder's quillon.debug, which the program names."""
import os
import re
import struct
import subprocess
import tempfile
import unittest
import zlib
from pathlib import Path

BUILD = Path(os.environ["QUILLON_BUILD_DIR"])
EXE = BUILD / "dist" / "Quillon" / "sys" / "exec" / "quillon.exe"
OBJDUMP = "x86_64-w64-mingw32-objdump"
NM = "x86_64-w64-mingw32-nm"
OBJCOPY = "x86_64-w64-mingw32-objcopy"

# what every Windows 10/11 has; anything else would have to ship beside the program
SYSTEM_DLLS = {
    "advapi32.dll", "comctl32.dll", "comdlg32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll",
    "oleaut32.dll", "shell32.dll", "shlwapi.dll", "user32.dll", "wininet.dll", "winspool.drv", "msimg32.dll",
    "version.dll", "uxtheme.dll", "imm32.dll", "rpcrt4.dll", "ws2_32.dll", "crypt32.dll", "bcrypt.dll",
    "api-ms-win-crt-runtime-l1-1-0.dll",
}


class Executable(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.headers = subprocess.run([OBJDUMP, "-p", str(EXE)], capture_output=True, text=True, check=True).stdout

    def test_is_a_64_bit_gui_program(self):
        self.assertIn("file format pei-x86-64", subprocess.run([OBJDUMP, "-f", str(EXE)], capture_output=True,
                                                               text=True, check=True).stdout)
        self.assertRegex(self.headers, r"Subsystem\s+00000002\s+\(Windows GUI\)")

    def test_needs_no_dll_beyond_the_systems(self):
        dlls = {d.lower() for d in re.findall(r"DLL Name: (\S+)", self.headers)}
        self.assertTrue(dlls, "no import table found")
        self.assertEqual(dlls - SYSTEM_DLLS, set())
        for runtime in ("libstdc++-6.dll", "libgcc_s_seh-1.dll", "libwinpthread-1.dll"):
            self.assertNotIn(runtime, dlls)


class Symbols(unittest.TestCase):
    DEBUG = BUILD / "quillon.debug"

    def test_the_symbols_are_in_the_debug_file_that_the_program_names(self):
        shipped = subprocess.run([NM, str(EXE)], capture_output=True, text=True)
        self.assertEqual(shipped.stdout, "")
        self.assertIn("no symbols", shipped.stderr)
        sections = subprocess.run([OBJDUMP, "-h", str(EXE)], capture_output=True, text=True, check=True).stdout
        self.assertNotIn(".debug_", sections)
        kept = subprocess.run([NM, str(self.DEBUG)], capture_output=True, text=True, check=True).stdout
        self.assertRegex(kept, r"(?m) T wWinMain$")
        self.assertRegex(kept, r"(?m) T _Z15runVersionCheckR18VersionCheckResult$")
        # the link: the debug file's name, padded to 4 bytes, then the CRC-32 of its content
        with tempfile.TemporaryDirectory() as tmp:
            link = Path(tmp) / "link"
            subprocess.run([OBJCOPY, "--dump-section", ".gnu_debuglink=%s" % link, str(EXE), str(Path(tmp) / "copy")],
                           check=True, capture_output=True)
            data = link.read_bytes()
        name = data[:data.index(b"\0")]
        self.assertEqual(name, b"quillon.debug")
        self.assertEqual(struct.unpack_from("<I", data, len(data) - 4)[0], zlib.crc32(self.DEBUG.read_bytes()))
        print("\nquillon.exe %d bytes, quillon.debug %d bytes, %d symbols kept" % (
            EXE.stat().st_size, self.DEBUG.stat().st_size, len(kept.splitlines())), flush=True)


def resource(kind, name):
    """The raw bytes of one resource of quillon.exe, extracted with wrestool."""
    done = subprocess.run(["wrestool", "-x", "--raw", f"--type={kind}", f"--name={name}", str(EXE)],
                          capture_output=True, check=True)
    return done.stdout


class Resources(unittest.TestCase):
    def test_manifest_asks_for_what_a_modern_program_needs(self):
        manifest = resource(24, 1).decode("utf-8")
        self.assertIn('name="Microsoft.Windows.Common-Controls" version="6.0.0.0"', manifest)
        self.assertIn(">PerMonitorV2</dpiAwareness>", manifest)
        self.assertIn(">true</longPathAware>", manifest)
        self.assertIn(">UTF-8</activeCodePage>", manifest)

    def test_version_resource(self):
        data = resource(16, 1)

        def value(name):
            key = name.encode("utf-16-le") + b"\0\0"
            at = data.find(key)
            self.assertGreaterEqual(at, 0, name)
            at += len(key)
            while data[at:at + 2] == b"\0\0":
                at += 2
            end = at
            while data[end:end + 2] != b"\0\0":
                end += 2
            return data[at:end].decode("utf-16-le")

        self.assertEqual(value("CompanyName"), "Tarvik")
        self.assertEqual(value("ProductName"), "Quillon")
        self.assertEqual(value("FileVersion"), "4.3.40.2")
        self.assertEqual(value("ProductVersion"), "4.3.40.2")
        # VS_FIXEDFILEINFO: signature, struct version, then the file version 4.3.40.2 as two DWORDs
        sig = data.find(b"\xbd\x04\xef\xfe")
        self.assertGreaterEqual(sig, 0)
        self.assertEqual(data[sig + 8:sig + 16], bytes([3, 0, 4, 0, 2, 0, 40, 0]))

    def test_application_icon_is_drawn_at_every_size_windows_asks_for(self):
        """Icon group 128 as the shell gets it: each size in 32 bits, its alpha read back by ImageMagick."""
        with tempfile.TemporaryDirectory() as tmp:
            ico = Path(tmp) / "quillon.ico"
            ico.write_bytes(subprocess.run(["wrestool", "-x", "--type=14", "--name=128", str(EXE)],
                                           capture_output=True, check=True).stdout)
            data = ico.read_bytes()
            entries = [struct.unpack_from("<BBBBHHII", data, 6 + 16 * i)
                       for i in range(int.from_bytes(data[4:6], "little"))]
            self.assertEqual(sorted(e[0] or 256 for e in entries), [16, 32, 48, 256])
            for index, (width, height, _, _, _, bits, _, _) in enumerate(entries):
                size = width or 256
                with self.subTest(size=size):
                    self.assertEqual((height or 256, bits), (size, 32))
                    alpha = subprocess.run(["convert", "%s[%d]" % (ico, index), "-alpha", "extract", "-depth", "8",
                                            "gray:-"], capture_output=True, check=True).stdout
                    self.assertEqual(len(alpha), size * size)
                    self.assertEqual(alpha[0], 0, "the corner must be transparent")
                    opaque = alpha.count(255) / len(alpha)
                    self.assertTrue(0.25 < opaque < 0.85, "%.2f of the pixels are opaque" % opaque)
                    self.assertTrue(any(0 < a < 255 for a in alpha), "edges must be anti-aliased")

if __name__ == "__main__":
    unittest.main(verbosity=2)
