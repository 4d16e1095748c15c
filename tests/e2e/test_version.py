"""The version check as a user meets it, quillon.exe against the local product-attribute server: quiet at
start-up when up to date, the dialog at start-up when not, the Help menu's check always, the switch that
keeps start-up off the network, an unreachable server, the dialog's link opened through the shell, and
HTTPS with a certificate authority of the test's own: trusted, unknown, expired and for another name, and a
server that takes the connection and never answers."""
import os
import re
import socket
import subprocess
import sys
import time
import unittest

import harness as h

sys.path.insert(0, os.path.join(h.SOURCE_DIR, "tests", "server"))
import productServer  # noqa: E402

DIALOG = "Check For Later Version"
OLDER = "Quillon version 434003\nQuillon version_string 4.3.4003\n"
SAYS_OLDER = "This is OLDER than the latest downloadable version (4.3.4003)\n\nThe latest version can be downloaded from here"
NO_CONTACT = h.text("IDS_VERSION_NO_CONTACT")


tearDownModule = h.end_wine


def read(path):
    with open(path, encoding="utf-8") as f:
        return f.read()


def dialog_text():
    h.wait_window("^%s$" % DIALOG, timeout=60)
    shown = [c.text for c in h.window_texts("#32770") if c.id == h.ID.IDC_VERSION_MESSAGE]
    return shown[0].replace("\\n", "\n") if shown else None


class ServerCase(h.QuillonTestCase):
    def serve(self, table, **tls):
        folder = h.scratch_dir("%s-%d" % (self.id().split(".")[-1], len(self.programs)))
        with open(os.path.join(folder, "table.txt"), "w", encoding="utf-8") as f:
            f.write(table)
        server = productServer.ProductServer(os.path.join(folder, "table.txt"), os.path.join(folder, "requests.log"),
                                             **tls).start()
        self.addCleanup(server.stop)
        return server

    def start_quillon(self, url, disabled="", **env):
        return self.start(env=dict(env, QWZ_PRODUCT_SERVER=url, QWZ_DISABLE_STARTUP_VERSION_CHECK=disabled))

    def check_from_help_menu(self):
        h.key(h.wait_window(" - Quillon"), "alt+h", "Down", "Return")
        return dialog_text()


class VersionCheck(ServerCase):
    def test_up_to_date_start_is_quiet_and_the_help_menu_still_tells(self):
        server = self.serve(read(os.path.join(h.BUILD_DIR, "run-products.txt")))  # what `make run` serves
        self.start_quillon(server.url, disabled="")
        h.eventually(lambda: len(server.requests()) == 2, what="the check with the switch set empty")
        time.sleep(2)
        self.assertNotIn(DIALOG, h.visible_titles(), "nothing to tell at start-up")
        self.assertIn("\n\nThis is the latest downloadable version.", self.check_from_help_menu())
        h.screenshot("version-latest", h.wait_window("^%s$" % DIALOG))

    def test_the_switch_keeps_start_up_off_the_network_but_not_the_menu(self):
        server = self.serve(OLDER)
        self.start_quillon(server.url, disabled="1")
        time.sleep(3)
        self.assertEqual(server.requests(), [], "no request at start-up")
        self.assertIn(SAYS_OLDER, self.check_from_help_menu())
        self.assertEqual(len(server.requests()), 2)

    def test_an_older_version_is_told_at_start_up_and_its_link_opens_in_the_browser(self):
        server = self.serve(OLDER)
        # Wine's shell gives web links to the first browser on the Unix PATH: this one writes them down
        browser = h.scratch_dir("browser")
        with open(os.path.join(browser, "xdg-open"), "w") as f:
            f.write('#!/bin/sh\necho "$1" >> %s/opened.txt\n' % browser)
        os.chmod(os.path.join(browser, "xdg-open"), 0o755)
        self.start_quillon(server.url, PATH=browser + os.pathsep + os.environ["PATH"])
        self.assertIn(SAYS_OLDER, dialog_text())
        dialog = h.wait_window("^%s$" % DIALOG)
        image = h.screenshot("version-older", dialog)
        blue = [(x, y) for y in range(image.height) for x in range(image.width)
                if image.pixel(x, y)[2] > 180 and max(image.pixel(x, y)[:2]) < 90]
        self.assertTrue(blue, "the link is drawn blue")
        x, y, _, _ = h.window_geometry(dialog)
        h.xdotool("mousemove", x + blue[len(blue) // 2][0], y + blue[len(blue) // 2][1], "click", "1")
        opened = os.path.join(browser, "opened.txt")
        url = h.eventually(lambda: os.path.exists(opened) and read(opened).strip(), what="the browser")
        self.assertEqual(url, re.search(r"^QUILLON_DOWNLOAD_PAGE:\w+=(.*)$",
                                        read(os.path.join(h.BUILD_DIR, "CMakeCache.txt")), re.M).group(1))

    def test_an_unreachable_server_is_named_at_start_up(self):
        with socket.socket() as s:
            s.bind(("127.0.0.1", 0))
            port = s.getsockname()[1]
        self.start_quillon("http://127.0.0.1:%d" % port)
        self.assertEqual(dialog_text(), NO_CONTACT % "127.0.0.1")


class SilentServer(ServerCase):
    """A server that accepts and never answers (a stalled proxy, a hung server) costs a check at most 5 s,
    both requests still made, and ends in the message of any other failure."""

    LIMIT = 5.0

    def silent(self):
        server = productServer.SilentServer().start()
        self.addCleanup(server.stop)
        return server

    def assertEndedInTime(self, server, shown, took, when):
        print("\n%s: the check against a silent server took %.2f s" % (when, took), flush=True)
        self.assertEqual(shown, NO_CONTACT % "127.0.0.1")
        self.assertEqual(len(server.accepted), 2, "both requests are made")
        self.assertLess(took, self.LIMIT)

    def test_at_start_up(self):
        server = self.silent()
        self.start_quillon(server.url)
        shown = dialog_text()
        # from the first connection, which the check makes as it starts, to its answer on screen
        self.assertEndedInTime(server, shown, time.monotonic() - server.accepted[0], "start-up")

    def test_from_the_help_menu(self):
        server = self.silent()
        self.start_quillon(server.url, disabled="1")
        frame = h.wait_window(" - Quillon")
        time.sleep(1)
        self.assertEqual(server.accepted, [], "no check at start-up")
        began = time.monotonic()
        h.key(frame, "alt+h", "Down", "Return")
        shown = dialog_text()
        self.assertEndedInTime(server, shown, time.monotonic() - began, "Help menu")


def openssl(*args, cwd):
    done = subprocess.run(["openssl"] + list(args), cwd=cwd, capture_output=True, text=True)
    if done.returncode != 0:
        raise AssertionError("openssl %s: %s" % (args[0], done.stderr))


class SecureVersionCheck(ServerCase):
    """The test's authority, in the prefix's trusted roots for these tests only, signs all but one."""

    @classmethod
    def setUpClass(cls):
        cls.pki = d = h.scratch_dir("pki")
        for name in ("ca", "stranger"):
            openssl("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", name + ".key", "-out", name + ".pem",
                    "-days", "2", "-subj", "/CN=Quillon test authority " + name, cwd=d)
        for host in ("localhost", "otherhost"):
            openssl("req", "-newkey", "rsa:2048", "-nodes", "-keyout", host + ".key", "-out", host + ".csr",
                    "-subj", "/CN=" + host, "-addext", "subjectAltName=DNS:" + host, cwd=d)
        with open(os.path.join(d, "ca.cnf"), "w") as f:
            f.write("[ca]\ndefault_ca=test\n[test]\ndatabase=index.txt\nnew_certs_dir=.\nserial=serial\n"
                    "default_md=sha256\nunique_subject=no\npolicy=any\ncopy_extensions=copy\n[any]\ncommonName=supplied\n")
        open(os.path.join(d, "index.txt"), "w").close()
        with open(os.path.join(d, "serial"), "w") as f:
            f.write("01\n")
        for out, csr, authority, dates in (
                ("trusted", "localhost", "ca", ["-days", "2"]), ("unknown", "localhost", "stranger", ["-days", "2"]),
                ("expired", "localhost", "ca", ["-startdate", "20200101000000Z", "-enddate", "20200102000000Z"]),
                ("wrongname", "otherhost", "ca", ["-days", "2"])):
            openssl("ca", "-batch", "-notext", "-config", "ca.cnf", "-cert", authority + ".pem", "-keyfile",
                    authority + ".key", "-in", csr + ".csr", "-out", out + ".pem", *dates, cwd=d)
        openssl("x509", "-in", "ca.pem", "-outform", "DER", "-out", "ca.der", cwd=d)
        cls.root_store("add")

    @classmethod
    def tearDownClass(cls):
        cls.root_store("remove")

    @classmethod
    def root_store(cls, action):
        done = h.wine(os.path.join(h.BUILD_DIR, "e2e-helpers", "e2e_rootCertificate.exe"), action,
                      h.wine_path(os.path.join(cls.pki, "ca.der")))
        if done.returncode != 0:
            raise AssertionError("could not %s the test authority" % action)

    def test_only_a_trusted_certificate_for_the_name_carries_the_check(self):
        for cert, key, says, requests in (("trusted", "localhost", SAYS_OLDER, 2),
                                          ("unknown", "localhost", NO_CONTACT % "localhost", 0),
                                          ("expired", "localhost", NO_CONTACT % "localhost", 0),
                                          ("wrongname", "otherhost", NO_CONTACT % "localhost", 0)):
            with self.subTest(cert):
                server = self.serve(OLDER, cert=os.path.join(self.pki, cert + ".pem"),
                                    key=os.path.join(self.pki, key + ".key"))
                program = self.start_quillon(server.url)
                self.assertIn(says, dialog_text())
                self.assertEqual(len(server.requests()), requests)
                program.stop()
                h.eventually(lambda: DIALOG not in h.visible_titles(), what="the dialog to go")


if __name__ == "__main__":
    unittest.main()
