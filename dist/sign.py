#!/usr/bin/env python3
"""Authenticode-signs Quillon's files in place with osslsigncode.

A release is signed with the key and certificate named by the environment:
  QUILLON_SIGN_CERT       the code-signing certificate, with its chain (PEM or DER)
  QUILLON_SIGN_KEY        its private key
  QUILLON_SIGN_PASSFILE   optional: a file holding the key's password
  QUILLON_SIGN_TIMESTAMP  optional: an RFC 3161 time-stamp server, so the signature outlives the certificate
Without them, the build signs with a test certificate authority and code-signing certificate that it makes
itself in SIGNING_DIR on first use and never commits. The authority's key is thrown away once it has issued
the signing certificate, so nothing else can ever be signed under it.

usage: sign.py --signing SIGNING_DIR FILE...
"""
import argparse
import os
import subprocess
import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path

TEST_CA = "test-ca.pem"  # what `osslsigncode verify -CAfile` trusts for a test build
TEST_CERT = "test-signing.pem"
TEST_KEY = "test-signing.key"

OPENSSL_CONFIG = """\
[req]
distinguished_name = dn
[dn]
[ca]
basicConstraints = critical, CA:TRUE
keyUsage = critical, keyCertSign, cRLSign
subjectKeyIdentifier = hash
[signing]
basicConstraints = critical, CA:FALSE
keyUsage = critical, digitalSignature
extendedKeyUsage = codeSigning
subjectKeyIdentifier = hash
authorityKeyIdentifier = keyid
"""


class SigningError(Exception):
    pass


@dataclass
class Identity:
    cert: Path
    key: Path
    passfile: Path | None = None
    timestamp: str | None = None


def run(args, **kwargs):
    done = subprocess.run([str(a) for a in args], capture_output=True, text=True, **kwargs)
    if done.returncode != 0:
        raise SigningError("%s failed (%d):\n%s%s" % (args[0], done.returncode, done.stdout, done.stderr))
    return done


def make_test_identity(folder):
    """The build's own authority and signing certificate, made once; they live as long as the build folder."""
    if (folder / TEST_CERT).exists() and (folder / TEST_KEY).exists() and (folder / TEST_CA).exists():
        return
    folder.mkdir(parents=True, exist_ok=True)
    # made in a scratch folder and moved in last, so an interrupted run leaves no half identity behind
    with tempfile.TemporaryDirectory(dir=folder) as tmp:
        t = Path(tmp)
        config = t / "openssl.cnf"
        config.write_text(OPENSSL_CONFIG)
        run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "3650", "-config", config,
             "-extensions", "ca", "-subj", "/O=Tarvik/CN=Quillon Test CA", "-keyout", t / "ca.key",
             "-out", t / TEST_CA])
        run(["openssl", "req", "-newkey", "rsa:2048", "-nodes", "-config", config,
             "-subj", "/O=Tarvik/CN=Tarvik (test signing)", "-keyout", t / TEST_KEY, "-out", t / "signing.csr"])
        run(["openssl", "x509", "-req", "-in", t / "signing.csr", "-CA", t / TEST_CA, "-CAkey", t / "ca.key",
             "-set_serial", "0x%x" % int.from_bytes(os.urandom(8), "big"), "-days", "1825",
             "-extfile", config, "-extensions", "signing", "-out", t / TEST_CERT])
        for name in (TEST_KEY, TEST_CERT, TEST_CA):
            os.replace(t / name, folder / name)


def identity(folder):
    """The release identity from the environment, or else the build's test identity."""
    cert, key = os.environ.get("QUILLON_SIGN_CERT"), os.environ.get("QUILLON_SIGN_KEY")
    if cert or key:
        # half a release identity is a mistake: never fall back to the test certificate then
        if not (cert and key):
            raise SigningError("QUILLON_SIGN_CERT and QUILLON_SIGN_KEY must be set together")
        passfile = os.environ.get("QUILLON_SIGN_PASSFILE")
        return Identity(Path(cert), Path(key), Path(passfile) if passfile else None,
                        os.environ.get("QUILLON_SIGN_TIMESTAMP") or None)
    make_test_identity(folder)
    return Identity(folder / TEST_CERT, folder / TEST_KEY)


def sign(path, ident):
    """Signs one .exe or .msi in place, replacing any signature it had."""
    path = Path(path)
    args = ["osslsigncode", "sign", "-certs", ident.cert, "-key", ident.key, "-h", "sha256", "-n", "Quillon"]
    if ident.passfile:
        args += ["-readpass", ident.passfile]
    if ident.timestamp:
        args += ["-ts", ident.timestamp]
    if path.suffix.lower() == ".msi":
        # also covers the package's metadata (summary information, stream names), as Windows checks it
        args.append("-add-msi-dse")
    signed = path.with_name(path.name + ".signing")
    signed.unlink(missing_ok=True)
    try:
        run(args + ["-in", path, "-out", signed])
        os.replace(signed, path)
    finally:
        signed.unlink(missing_ok=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--signing", type=Path, required=True, help="where the build keeps its test identity")
    parser.add_argument("files", nargs="+", type=Path)
    args = parser.parse_args()
    try:
        ident = identity(args.signing)
        for f in args.files:
            sign(f, ident)
    except SigningError as e:
        sys.exit("sign.py: %s" % e)


if __name__ == "__main__":
    main()
