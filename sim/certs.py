# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""TLS certificates, made with the openssl program."""

import fcntl
import hashlib
import ipaddress
import os
import re
import shutil
import ssl
import subprocess
import tempfile
from contextlib import contextmanager


class CertError(Exception):
    """A certificate that cannot be made or read, told in a sentence for the user."""


NEW_KEY = ["-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes"]


def server_context(host, cert=None, key=None, ca_dir=None):
    """Returns the TLS settings of the servers, the certificate's SHA-256, and the path of the
    authority or None."""
    if cert:
        return *_load(cert, key), None
    folder = tempfile.mkdtemp(prefix="tallyforge-sim-")
    try:
        authority = _authority(ca_dir) if ca_dir else None
        return *_load(*_issue(folder, host, authority)), authority and authority[0]
    except OSError as error:
        raise CertError(f"The TLS certificate could not be made: {error}.") from error
    finally:
        # Python has read the key by now, so that nothing is left to lie about even after a kill.
        shutil.rmtree(folder, ignore_errors=True)


def _load(cert, key):
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    try:
        context.load_cert_chain(cert, key)
        with open(cert, encoding="ascii", errors="replace") as file:
            first = re.search(r"-----BEGIN CERTIFICATE-----.*?-----END CERTIFICATE-----",
                              file.read(), re.DOTALL)
    except (OSError, ssl.SSLError) as error:
        raise CertError(f"The certificate {cert} with the key {key} could not be read: "
                        f"{error}.") from error
    return context, hashlib.sha256(ssl.PEM_cert_to_DER_cert(first[0])).hexdigest()


def _openssl(*arguments):
    try:
        done = subprocess.run(["openssl", *arguments], stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, umask=0o077, check=False)
    except FileNotFoundError as error:
        raise CertError("The program openssl was not found. Install it, or give a certificate "
                        "of your own with --cert and --key.") from error
    if done.returncode:
        lines = done.stderr.strip().splitlines() or ["no reason given"]
        raise CertError(f"openssl could not make the TLS certificate: {lines[-1]}")


def _issue(folder, host, authority):
    cert, key = os.path.join(folder, "server.crt"), os.path.join(folder, "server.key")
    names = ["DNS:localhost", "IP:127.0.0.1", "IP:::1", _san(host)]
    extensions = os.path.join(folder, "extensions")
    with open(extensions, "w", encoding="utf-8") as file:
        file.write("[req]\ndistinguished_name=dn\n[dn]\n[server]\nbasicConstraints=CA:FALSE\n"
                   "extendedKeyUsage=serverAuth\n"
                   "subjectAltName=" + ",".join(dict.fromkeys(names)) + "\n")
    request = ["-config", extensions, "-subj", "/CN=Tallyforge simulator", "-keyout", key]
    if not authority:
        _openssl("req", "-x509", *NEW_KEY, *request, "-extensions", "server", "-days", "90",
                 "-out", cert)
        return cert, key
    wish = os.path.join(folder, "server.csr")
    _openssl("req", *NEW_KEY, *request, "-out", wish)
    _openssl("x509", "-req", "-in", wish, "-CA", authority[0], "-CAkey", authority[1],
             "-CAserial", os.path.join(folder, "serial"), "-CAcreateserial", "-days", "90",
             "-extfile", extensions, "-extensions", "server", "-out", cert)
    return cert, key


def _san(host):
    try:
        return f"IP:{ipaddress.ip_address(host)}"
    except ValueError:
        return f"DNS:{host}"


@contextmanager
def _locked(folder):
    """Two simulators that start at once in one folder must not each make an authority."""
    handle = os.open(folder, os.O_RDONLY)
    try:
        fcntl.flock(handle, fcntl.LOCK_EX)
        yield
    finally:
        os.close(handle)


def _authority(folder):
    """The paths of the authority's certificate and key in `folder`, made there if missing."""
    folder = os.path.abspath(folder)
    cert, key = os.path.join(folder, "ca.crt"), os.path.join(folder, "ca.key")
    os.makedirs(folder, mode=0o700, exist_ok=True)
    with _locked(folder):
        if os.path.exists(cert):
            if not os.path.exists(key):
                raise CertError(f"{folder} holds ca.crt without ca.key. Remove ca.crt to have "
                                "a new authority made.")
            return cert, key
        config = os.path.join(folder, ".ca.cnf")
        with open(config, "w", encoding="utf-8") as file:
            file.write("[req]\ndistinguished_name=dn\n[dn]\n[ca]\n"
                       "basicConstraints=critical,CA:TRUE\nsubjectKeyIdentifier=hash\n"
                       "keyUsage=critical,keyCertSign,cRLSign\n")
        try:
            _openssl("req", "-x509", *NEW_KEY, "-config", config, "-extensions", "ca",
                     "-subj", "/CN=Tallyforge simulator authority", "-days", "3650",
                     "-keyout", key, "-out", cert + ".new")
            os.chmod(key, 0o600)
            os.chmod(cert + ".new", 0o644)
            os.rename(cert + ".new", cert)
        finally:
            os.remove(config)
    return cert, key
