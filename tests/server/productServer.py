#!/usr/bin/env python3
"""A local product-attribute server for the version check's tests and for `make run`.

It answers POSTs to the attribute script from a table file, read afresh for every request, whose lines are
    <product> <attribute> <value...>
(the value is the rest of the line and may be empty; "#" starts a comment line). A value that starts with
"!" makes the server misbehave instead:
    !304 !404               that status, no value
    !nodata VALUE           a body with a closing tag but no <data>
    !noclose VALUE          a body with <data> but no </data>
    !nolength VALUE         no Content-Length: the body ends when the connection does
    !split VALUE            Content-Length, the body sent in two writes with a pause between them
    !slow VALUE             the whole answer only after two seconds
    !cut VALUE              Content-Length, the connection closed half-way through the body
    !endless                no Content-Length and a body that does not end
    !huge VALUE             a 2 MiB body with Content-Length, the value at its start
Every request is appended to the log file as one JSON line (method, path, headers, body) before it is
answered. The server listens on 127.0.0.1 only, on a port chosen free at start, over TLS when given a
certificate.

As a program it serves until killed, printing its port, or with --wrap runs a command with
QWZ_PRODUCT_SERVER pointing at it (and QWZ_TEST_PRODUCT_TABLE, QWZ_TEST_PRODUCT_LOG naming its files),
stops when the command ends and exits with the command's status.
"""
import argparse
import http.server
import json
import os
import ssl
import subprocess
import sys
import threading
import time

SCRIPT = "/cgi-bin/product_attributes/product_attribute.pl"


def read_table(path):
    table = {}
    if not os.path.exists(path):
        return table
    with open(path, encoding="utf-8") as f:
        for line in f.read().splitlines():
            if not line.strip() or line.lstrip().startswith("#"):
                continue
            parts = line.split(" ", 2)
            if len(parts) >= 2:
                table[(parts[0], parts[1])] = parts[2] if len(parts) > 2 else ""
    return table


def parse_form(body):
    """The form as the script would read it: "&"-separated name=value pairs, nothing decoded."""
    fields = {}
    for pair in body.split("&"):
        name, _, value = pair.partition("=")
        fields.setdefault(name, value)
    return fields


def data_body(value):
    return ("<html><body><data>\r\n%s\r\n</data></body></html>\r\n" % value).encode("utf-8")


class Handler(http.server.BaseHTTPRequestHandler):
    server_version = "ProductAttributes/1.0"
    wbufsize = 1 << 16  # buffered, so that an answer's headers and body leave in one write

    def setup(self):
        if self.server.tls:
            self.request = self.server.tls.wrap_socket(self.request, server_side=True)
        super().setup()

    def log_message(self, *args):
        pass

    def do_GET(self):
        self.record(b"")
        self.answer(b"POST only", 405)

    def do_POST(self):
        length = int(self.headers.get("Content-Length") or 0)
        body = self.rfile.read(length) if length else b""
        self.record(body)
        if self.path != SCRIPT:
            self.answer(b"no such script", 404)
            return
        form = parse_form(body.decode("latin-1"))
        value = read_table(self.server.table).get((form.get("product"), form.get("attribute")))
        if value is None:
            self.answer(b"no such product or attribute", 404)
        elif value.startswith("!"):
            mode, _, rest = value[1:].partition(" ")
            self.misbehave(mode, rest)
        else:
            self.answer(data_body(value))

    def record(self, body):
        entry = {"method": self.command, "path": self.path, "headers": [[k, v] for k, v in self.headers.items()],
                 "body": body.decode("latin-1")}
        with self.server.log_lock, open(self.server.log, "a", encoding="utf-8") as f:
            f.write(json.dumps(entry) + "\n")

    def head(self, status, length=None):
        self.send_response(status)
        if length is not None:
            self.send_header("Content-Length", str(length))
        self.send_header("Connection", "close")
        self.end_headers()

    def answer(self, body, status=200):
        self.head(status, len(body))
        self.wfile.write(body)
        self.wfile.flush()

    def misbehave(self, mode, value):
        body = data_body(value)
        half = len(body) // 2
        if mode in ("304", "404"):
            self.answer(b"" if mode == "304" else b"<html>not here</html>", int(mode))
        elif mode == "nodata":
            self.answer(("%s</data>\r\n" % value).encode("utf-8"))
        elif mode == "noclose":
            self.answer(("<data>\r\n%s\r\n" % value).encode("utf-8"))
        elif mode == "nolength":
            self.head(200)
            self.wfile.write(body)
        elif mode in ("split", "cut"):
            self.head(200, len(body))
            self.wfile.write(body[:half])
            self.wfile.flush()
            if mode == "split":
                time.sleep(0.5)
                self.wfile.write(body[half:])
        elif mode == "slow":
            time.sleep(2)
            self.answer(body)
        elif mode == "endless":
            self.head(200)
            chunk = b"<data>" + b"x" * 65530
            for _ in range(1024):  # 64 MiB at most, should the client never hang up
                self.wfile.write(chunk)
        elif mode == "huge":
            self.answer(body + b" " * (2 * 1024 * 1024))
        else:
            self.answer(b"unknown misbehaviour " + mode.encode("utf-8"), 500)


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
        self.port = self.server_address[1]
        self.url = "%s://%s:%d" % ("https" if cert else "http", "localhost" if cert else "127.0.0.1", self.port)
        self.thread = threading.Thread(target=self.serve_forever, daemon=True)

    def handle_error(self, request, client_address):
        pass  # a refused handshake or a client that hung up is the test's business, not a crash

    def start(self):
        self.thread.start()
        return self

    def stop(self):
        self.shutdown()
        self.server_close()

    def requests(self):
        """The requests logged so far, oldest first."""
        if not os.path.exists(self.log):
            return []
        with open(self.log, encoding="utf-8") as f:
            return [json.loads(line) for line in f if line.strip()]


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--table", required=True)
    parser.add_argument("--log", default=os.devnull)
    parser.add_argument("--cert")
    parser.add_argument("--key")
    parser.add_argument("--wrap", nargs=argparse.REMAINDER, help="the command to run against the server")
    args = parser.parse_args()
    server = ProductServer(os.path.abspath(args.table), os.path.abspath(args.log), args.cert, args.key).start()
    if not args.wrap:
        print(server.port, flush=True)
        server.thread.join()
        return 0
    env = dict(os.environ, QWZ_PRODUCT_SERVER=server.url, QWZ_TEST_PRODUCT_TABLE=server.table,
               QWZ_TEST_PRODUCT_LOG=server.log)
    try:
        return subprocess.run(args.wrap, env=env).returncode
    finally:
        server.stop()


if __name__ == "__main__":
    sys.exit(main())
