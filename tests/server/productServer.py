#!/usr/bin/env python3
"""A local product-attribute server for the version check's tests and `make run`, on 127.0.0.1 only.

It answers POSTs to the attribute script from a table file read afresh for every request, one
"<product> <attribute> <value...>" a line. A value "!<mode> [value]" misbehaves instead: 304 or 404; nodata
(a closing tag only), noclose (no </data>), nolength (no Content-Length), split (two writes half a second
apart), slow (two seconds late), cut (closed half-way), endless (no end), huge (2 MiB). Every request is
logged as a JSON line before it is answered. SilentServer takes connections and never says a word, as a
stalled proxy or a hung server does. With --wrap it runs a command with QWZ_PRODUCT_SERVER (and
QWZ_TEST_PRODUCT_TABLE, QWZ_TEST_PRODUCT_LOG) set, stops when it ends and exits with its status.
"""
import argparse
import http.server
from http import HTTPStatus
import json
import os
import socket
import ssl
import subprocess
import sys
import threading
import time

SCRIPT = "/cgi-bin/product_attributes/product_attribute.pl"


def read_table(path):
    if not os.path.exists(path):
        return {}
    with open(path, encoding="utf-8") as f:
        rows = [line.split(" ", 2) for line in f.read().splitlines() if line and not line.startswith("#")]
    return {(row[0], row[1]): row[2] if len(row) > 2 else "" for row in rows if len(row) > 1}


def page(value):
    """The script's answer: the value in a <data> element, each tag on a line of its own."""
    return ("<html><body><data>\r\n%s\r\n</data></body></html>\r\n" % value).encode("utf-8")


class Handler(http.server.BaseHTTPRequestHandler):
    wbufsize = 1 << 16  # buffered, so that an answer's headers and body leave in one write

    def setup(self):
        if self.server.tls:
            self.request = self.server.tls.wrap_socket(self.request, server_side=True, do_handshake_on_connect=False)
            try:
                self.request.do_handshake()
            except OSError:
                self.request.close()
                raise
        super().setup()

    def finish(self):
        super().finish()
        if self.server.tls:
            self.request.close()  # the TLS socket, not the plain one the server closes

    def log_message(self, *args):
        pass

    def do_POST(self):
        body = self.rfile.read(int(self.headers.get("Content-Length") or 0))
        with self.server.log_lock, open(self.server.log, "a", encoding="utf-8") as f:
            f.write(json.dumps({"method": self.command, "path": self.path, "headers": list(self.headers.items()),
                                "body": body.decode("latin-1")}) + "\n")
        # the script's own reading of the form: nothing decoded
        form = dict(reversed([pair.partition("=")[::2] for pair in body.decode("latin-1").split("&")]))
        value = read_table(self.server.table).get((form.get("product"), form.get("attribute")))
        if self.path != SCRIPT or value is None:
            self.answer(b"no such script, product or attribute", HTTPStatus.NOT_FOUND)
        elif value.startswith("!"):
            mode, _, rest = value[1:].partition(" ")
            self.misbehave(mode, page(rest))
        else:
            self.answer(page(value))

    def head(self, status, length=None):
        self.send_response(status)
        if length is not None:
            self.send_header("Content-Length", str(length))
        self.send_header("Connection", "close")
        self.end_headers()

    def answer(self, body, status=HTTPStatus.OK):
        self.head(status, len(body))
        self.wfile.write(body)
        self.wfile.flush()

    def misbehave(self, mode, body):
        half = len(body) // 2
        if mode in ("304", "404"):
            self.answer(b"", HTTPStatus(int(mode)))
        elif mode in ("nodata", "noclose"):
            self.answer(body.replace(b"<data>" if mode == "nodata" else b"</data>", b""))
        elif mode == "nolength":
            self.head(HTTPStatus.OK)
            self.wfile.write(body)
        elif mode in ("split", "cut"):
            self.head(HTTPStatus.OK, len(body))
            self.wfile.write(body[:half])
            self.wfile.flush()
            if mode == "split":
                time.sleep(0.5)
                self.wfile.write(body[half:])
        elif mode == "slow":
            time.sleep(2)
            self.answer(body)
        elif mode == "endless":
            self.head(HTTPStatus.OK)
            for _ in range(1024):  # 64 MiB at most, should the client never hang up
                self.wfile.write(b"<data>" + b"x" * 65530)
        elif mode == "huge":
            self.answer(body + b" " * (2 << 20))


class ProductServer(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def __init__(self, table, log, cert=None, key=None):
        super().__init__(("127.0.0.1", 0), Handler)
        self.table, self.log, self.log_lock = table, log, threading.Lock()
        open(log, "w").close()  # each run logs afresh
        self.tls = None
        if cert:
            self.tls = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
            self.tls.load_cert_chain(cert, key)
        # a TLS client checks the name, which an address cannot carry
        self.url = "%s://%s:%d" % ("https" if cert else "http", "localhost" if cert else "127.0.0.1",
                                   self.server_address[1])

    def handle_error(self, request, client_address):
        pass  # a refused handshake or a client that hung up is the test's to judge

    def start(self):
        threading.Thread(target=self.serve_forever, daemon=True).start()
        return self

    def stop(self):
        self.shutdown()
        self.server_close()

    def requests(self):
        with open(self.log, encoding="utf-8") as f:
            return [json.loads(line) for line in f if line.strip()]


class SilentServer:
    """Accepts every connection on 127.0.0.1, reads nothing, answers nothing and keeps it open until
    stopped; `accepted` holds the monotonic time of each connection."""

    def __init__(self):
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.listener.settimeout(0.1)
        self.url = "http://127.0.0.1:%d" % self.listener.getsockname()[1]
        self.accepted, self.held, self.running = [], [], True

    def start(self):
        threading.Thread(target=self.serve, daemon=True).start()
        return self

    def serve(self):
        while self.running:
            try:
                connection, _ = self.listener.accept()
            except socket.timeout:
                continue
            except OSError:
                break
            self.accepted.append(time.monotonic())
            self.held.append(connection)

    def stop(self):
        self.running = False
        self.listener.close()
        for connection in self.held:
            connection.close()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--table", required=True)
    parser.add_argument("--log", default=os.devnull)
    parser.add_argument("--wrap", nargs=argparse.REMAINDER, required=True)
    args = parser.parse_args()
    server = ProductServer(os.path.abspath(args.table), os.path.abspath(args.log)).start()
    env = dict(os.environ, QWZ_PRODUCT_SERVER=server.url, QWZ_TEST_PRODUCT_TABLE=server.table,
               QWZ_TEST_PRODUCT_LOG=server.log)
    try:
        return subprocess.run(args.wrap, env=env).returncode
    finally:
        server.stop()


if __name__ == "__main__":
    sys.exit(main())
