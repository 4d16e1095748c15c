"""The version check as a user meets it, quillon.exe against the local product-attribute server: quiet at
start-up when up to date, the dialog at start-up when not, the Help menu's check always, the switch that
keeps start-up off the network, an unreachable server, the dialog's link opened through the shell, and
HTTPS with a certificate authority of the test's own, trusted or not, expired and for another name."""
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
MAIN = r" - Quillon"
HELPERS = os.path.join(h.BUILD_DIR, "e2e-helpers")
OLDER = "Quillon version 434003\nQuillon version_string 4.3.4003\n"


def tearDownModule():
    h.end_wine()


def build_setting(name):
    with open(os.path.join(h.BUILD_DIR, "CMakeCache.txt"), encoding="utf-8") as f:
        return re.search(r"^%s:\w+=(.*)$" % name, f.read(), re.M).group(1)


def read(path):
    with open(path, encoding="utf-8") as f:
        return f.read()


def closed_port():
    with socket.socket() as s:
        s.bind(("127.0.0.1", 0))
        return s.getsockname()[1]


def dialog_text():
    """The text of the version dialog's message, once the dialog is up."""
    h.wait_window("^%s$" % DIALOG, timeout=60)
    done = subprocess.run([h.WINE_RUN, os.path.join(HELPERS, "e2e_windowText.exe"), DIALOG], env=h.wine_env(),
                          capture_output=True, timeout=60)
    lines = done.stdout.decode("utf-8").splitlines()
    message = [line.split("\t", 1)[1] for line in lines if line.startswith("RichEdit")]
    if not message:
        raise AssertionError("no message control in the dialog: %r" % lines)
    return message[0].replace("\\r\\n", "\n")


class ServerCase(h.QuillonTestCase):
    def serve(self, table, **tls):
        folder = h.scratch_dir(self.id().split(".")[-1] + "-" + str(len(self.programs)))
        with open(os.path.join(folder, "table.txt"), "w", encoding="utf-8") as f:
            f.write(table)
        server = productServer.ProductServer(os.path.join(folder, "table.txt"), os.path.join(folder, "requests.log"),
                                             **tls).start()
        self.addCleanup(server.stop)
        return server

    def start_quillon(self, url, disabled="", path=None):
        env = {"QWZ_PRODUCT_SERVER": url, "QWZ_DISABLE_STARTUP_VERSION_CHECK": disabled}
        if path:
            env["PATH"] = path + os.pathsep + os.environ["PATH"]
        self.start(env=env)
        return h.wait_window(MAIN)

    def requests(self, server, count):
        return h.eventually(lambda: len(server.requests()) >= count and server.requests(),
                            what="%d requests at the server" % count)

    def check_from_help_menu(self, main):
        h.key(main, "alt+h", "Down", "Return")
        return dialog_text()


class VersionCheck(ServerCase):
    def test_up_to_date_start_is_quiet_and_the_help_menu_still_tells(self):
        server = self.serve(read(os.path.join(h.BUILD_DIR, "run-products.txt")))  # what `make run` serves
        main = self.start_quillon(server.url, disabled="")
        self.assertEqual([r["body"] for r in self.requests(server, 2)],
                         ["product=Quillon&attribute=version", "product=Quillon&attribute=version_string"],
                         "an empty switch does not switch the check off")
        time.sleep(2)
        self.assertNotIn(DIALOG, h.visible_titles(), "nothing to tell at start-up")
        self.assertIn("\n\nThis is the latest downloadable version.", self.check_from_help_menu(main))
        h.screenshot("version-latest", h.wait_window("^%s$" % DIALOG))

    def test_the_switch_keeps_start_up_off_the_network_but_not_the_menu(self):
        server = self.serve(OLDER)
        main = self.start_quillon(server.url, disabled="1")
        time.sleep(3)
        self.assertEqual(server.requests(), [], "no request at start-up")
        self.assertNotIn(DIALOG, h.visible_titles())
        self.assertIn("This is OLDER than the latest downloadable version (4.3.4003)", self.check_from_help_menu(main))
        self.assertEqual(len(self.requests(server, 2)), 2)

    def test_an_older_version_is_told_at_start_up_and_its_link_opens_in_the_browser(self):
        server = self.serve(OLDER)
        # Wine's shell hands web links to the first browser it finds on the Unix PATH: this one writes them down
        bin_dir = h.scratch_dir("browser")
        opened = os.path.join(bin_dir, "opened.txt")
        with open(os.path.join(bin_dir, "xdg-open"), "w") as f:
            f.write('#!/bin/sh\necho "$1" >> %s\n' % opened)
        os.chmod(os.path.join(bin_dir, "xdg-open"), 0o755)
        self.start_quillon(server.url, path=bin_dir)
        self.assertIn("This is OLDER than the latest downloadable version (4.3.4003)\n\n"
                      "The latest version can be downloaded from here\n", dialog_text())
        dialog = h.wait_window("^%s$" % DIALOG)
        image = h.screenshot("version-older", dialog)
        blue = [(x, y) for y in range(image.height) for x in range(image.width)
                if image.pixel(x, y)[2] > 180 and max(image.pixel(x, y)[:2]) < 90]
        self.assertTrue(blue, "the link is drawn blue")
        x, y, _, _ = h.window_geometry(dialog)
        link_x, link_y = blue[len(blue) // 2]
        h.xdotool("mousemove", x + link_x, y + link_y, "click", "1")
        url = h.eventually(lambda: os.path.exists(opened) and read(opened).strip(), what="the browser")
        self.assertEqual(url, build_setting("QUILLON_DOWNLOAD_PAGE"))

    def test_an_unreachable_server_is_named_at_start_up(self):
        self.start_quillon("http://127.0.0.1:%d" % closed_port())
        self.assertEqual(dialog_text(), "Unable to contact 127.0.0.1\n\nYour Internet connection may need configuring.")


def openssl(*args, cwd):
    done = subprocess.run(["openssl"] + list(args), cwd=cwd, capture_output=True, text=True)
    if done.returncode != 0:
        raise AssertionError("openssl %s: %s" % (args[0], done.stderr))


class SecureVersionCheck(ServerCase):
    """A test authority in the prefix's trusted roots signs the good certificate and the bad ones."""

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

        def sign(csr, out, authority="ca", dates=("-days", "2")):
            openssl("ca", "-batch", "-notext", "-config", "ca.cnf", "-cert", authority + ".pem", "-keyfile",
                    authority + ".key", "-in", csr, "-out", out, *dates, cwd=d)

        sign("localhost.csr", "trusted.pem")
        sign("localhost.csr", "untrusted.pem", authority="stranger")
        sign("localhost.csr", "expired.pem", dates=("-startdate", "20200101000000Z", "-enddate", "20200102000000Z"))
        sign("otherhost.csr", "wrongname.pem")
        openssl("x509", "-in", "ca.pem", "-outform", "DER", "-out", "ca.der", cwd=d)
        cls.root_store("add")

    @classmethod
    def tearDownClass(cls):
        cls.root_store("remove")

    @classmethod
    def root_store(cls, action):
        subprocess.run([h.WINE_RUN, os.path.join(HELPERS, "e2e_rootCertificate.exe"), action,
                        h.wine_path(os.path.join(cls.pki, "ca.der"))], env=h.wine_env(), check=True, timeout=120)

    def serve_tls(self, cert):
        key = "otherhost.key" if cert == "wrongname.pem" else "localhost.key"
        return self.serve(OLDER, cert=os.path.join(self.pki, cert), key=os.path.join(self.pki, key))

    def test_a_trusted_certificate_carries_the_check(self):
        server = self.serve_tls("trusted.pem")
        self.start_quillon(server.url)
        self.assertIn("This is OLDER than the latest downloadable version (4.3.4003)", dialog_text())
        self.assertEqual(len(server.requests()), 2)

    def test_a_refused_certificate_ends_in_unable_to_contact(self):
        for cert in ("untrusted.pem", "expired.pem", "wrongname.pem"):
            with self.subTest(cert):
                server = self.serve_tls(cert)
                program = self.start(env={"QWZ_PRODUCT_SERVER": server.url, "QWZ_DISABLE_STARTUP_VERSION_CHECK": ""})
                self.assertEqual(dialog_text(),
                                 "Unable to contact localhost\n\nYour Internet connection may need configuring.")
                self.assertEqual(server.requests(), [], "nothing reaches a server whose certificate was refused")
                program.stop()
                h.eventually(lambda: DIALOG not in h.visible_titles(), what="the dialog to go")


if __name__ == "__main__":
    unittest.main()
