"""Certificates made on the spot, for servers on the loopback address.

  make(folder)     root.crt and, below it, server.crt (good for every name in NAMES), wrong_name.crt and expired.crt;
                   stranger.crt below a root of its own, stranger_root.crt. Each NAME.crt has its NAME.key.

  make_once(folder)     the same, unless it was done before; several programs may ask at the same time

They hold from 2000 to 2099, because a machine's clock may stand anywhere between.
"""
import fcntl
import subprocess
from pathlib import Path

NAMES = ("localhost", "statistics.invalid", "upgrade.invalid", "other.invalid")
FROM, TO, LONG_AGO = "20000101000000Z", "20991231235959Z", "20010101000000Z"

CONFIGURATION = """
[ca]
default_ca = here
[here]
database = {folder}/index
new_certs_dir = {folder}
rand_serial = yes
unique_subject = no
default_md = sha256
policy = any
[any]
commonName = supplied
[root]
basicConstraints = critical,CA:TRUE
keyUsage = critical,keyCertSign,cRLSign
subjectKeyIdentifier = hash
[leaf]
basicConstraints = critical,CA:FALSE
keyUsage = critical,digitalSignature
extendedKeyUsage = serverAuth
subjectAltName = {names}
"""


def _openssl(*words):
    done = subprocess.run(["openssl", *map(str, words)], capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise RuntimeError(f"openssl {' '.join(map(str, words))}\n{done.stderr}")


def _make(folder, name, common_name, root=None, names=(), until=TO):
    """A key and its certificate; signed by itself when no root is given."""
    alternatives = ",".join(["IP:127.0.0.1"] * ("localhost" in names) + [f"DNS:{n}" for n in names]) or "DNS:none"
    configuration = folder / "openssl.cnf"
    configuration.write_text(CONFIGURATION.format(folder=folder, names=alternatives))
    (folder / "index").write_text("")
    key, request = folder / f"{name}.key", folder / f"{name}.csr"
    _openssl("req", "-new", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-keyout", key, "-out",
             request, "-subj", f"/CN={common_name}")
    signer = ["-cert", folder / f"{root}.crt", "-keyfile", folder / f"{root}.key"] if root else ["-selfsign", "-keyfile", key]
    _openssl("ca", "-batch", "-notext", "-config", configuration, "-in", request, "-out", folder / f"{name}.crt",
             "-extensions", "leaf" if root else "root", "-startdate", FROM, "-enddate", until, *signer)


def make(folder):
    folder = Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    _make(folder, "root", "Loopback root")
    _make(folder, "server", "localhost", "root", NAMES)
    _make(folder, "wrong_name", "somebody.invalid", "root", ["somebody.invalid"])
    _make(folder, "expired", "localhost", "root", NAMES, until=LONG_AGO)
    _make(folder, "stranger_root", "Unknown root")
    _make(folder, "stranger", "localhost", "stranger_root", NAMES)
    return folder


def make_once(folder):
    folder = Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    done = folder / "complete"
    with open(folder / "lock", "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        if not done.exists():
            make(folder)
            done.touch()
    return folder
