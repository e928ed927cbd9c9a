"""Setups to install: the build's own, and variants of it, which are made once a build and kept below its tests/e2e."""

import fcntl
import hashlib
import json
import os
import shutil
import struct
import subprocess
from pathlib import Path

PAYLOAD = 205
RCDATA = 10
ROOT = Path(__file__).resolve().parents[2]
SMALL = Path(__file__).resolve().parent / "products/small.json"


class Build:
    """A build folder: its tools, its setup and the sample product that is in it."""

    def __init__(self, folder):
        self.folder = Path(folder).resolve()
        self.vantakit = self.folder / "vantakit"
        self.sample = self.folder / "sample-product"
        self.hold = self.folder / "tests/e2e/hold.exe"
        self.cache = self.folder / "tests/e2e/made"
        self.cert = ROOT / "build/devkey/dev.crt"
        self.key = ROOT / "build/devkey/dev.key"

    def bare(self, program):
        return self.folder / ("tests/e2e/driver.exe" if program == "driver" else "bare/VantaPictorSetup.exe")

    def made(self, recipe, make):
        """The file or folder that make(path) makes for the recipe, made anew when what it is made of has changed."""
        inputs = [self.vantakit, self.bare("setup"), self.bare("driver"), self.folder / "sample-product.stamp"]
        stamp = [str(path) + str(path.stat().st_mtime_ns) for path in inputs]
        name = hashlib.sha256(json.dumps([recipe, stamp], sort_keys=True).encode()).hexdigest()[:16]
        self.cache.mkdir(parents=True, exist_ok=True)
        path = self.cache / name
        if not path.exists():
            with open(self.cache / (name + ".lock"), "w") as lock:  # tests run at the same time
                fcntl.flock(lock, fcntl.LOCK_EX)
                if not path.exists():
                    self._make_whole(path, make)
        return path

    @staticmethod
    def _make_whole(path, make):
        unfinished = path.with_name(path.name + ".new")
        if unfinished.exists():  # left by a run that was ended
            unfinished.unlink() if unfinished.is_file() else shutil.rmtree(unfinished)
        make(unfinished)
        unfinished.rename(path)


def run_tool(*words):
    done = subprocess.run([str(word) for word in words], capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(map(str, words))}\n{done.stdout}{done.stderr}")


class Setup:
    """One setup as a scenario's "setup" describes it.

    name      its file name
    version   its version
    keys      "none": accepts nobody's signature
    payload   "small" (products/small.json), or {"files": {name: content}} in place of the sample product, or
              {"small": {…}} or {"sample": {name: content or null}}: that product with files changed or left out
    skin      {"without": [name, …]}: the setup window's controls of these names have none
    resource  what is odd about the payload resource: "missing", "empty", "garbage", "truncated", "bad data", or one of
              ARCHIVE_ODDITIES, as [name, entry]; without an entry it is so of all of them
    """

    def __init__(self, build, description, program):
        self.build = build
        self.description = dict(description)
        self.name = self.description.pop("name", "VantaPictorSetup.exe")
        self.program = program
        self.product = self._product()
        if program == "setup" and not self.description:
            self.path = build.folder / "VantaPictorSetup.exe"
        else:
            self.path = build.made(["setup", program, self.description], self._make)

    def entries(self):
        """The payload's names with "/", in the archive's order."""
        names = [p.relative_to(self.product).as_posix() for p in self.product.rglob("*") if p.is_file()]
        return sorted(names, key=lambda name: name.encode())

    def _product(self):
        payload = self.description.get("payload")
        if payload is None:
            return self.build.sample
        if payload == "small" or "small" in payload:
            changes = {} if payload == "small" else payload["small"]
            payload = {"files": {**json.loads(SMALL.read_text()), **changes}}
            self.description["payload"] = payload
        return self.build.made(["product", payload], lambda path: self._make_product(path, payload))

    def _make_product(self, path, payload):
        if "sample" in payload:
            shutil.copytree(self.build.sample, path)
        else:
            path.mkdir()
        for name, content in {**payload.get("sample", {}), **payload.get("files", {})}.items():
            target = path / name
            target.unlink(missing_ok=True)
            if content is not None:
                target.parent.mkdir(parents=True, exist_ok=True)
                write_content(self.build, target, content)
                os.utime(target, (1700000000, 1700000000))

    def _skin(self):
        without = self.description.get("skin", {}).get("without", [])
        if not without:
            return self.build.folder / "skin"
        return self.build.made(["skin", without], lambda path: self._make_skin(path, without))

    def _make_skin(self, path, without):
        shutil.copytree(self.build.folder / "skin", path)
        layout = path / "resources/themes/default/SetupWnd/SetupWnd.xml"
        text = layout.read_text()
        for name in without:
            if text.count(f' name="{name}"') != 1:
                raise ValueError(f"{layout} has no one control {name}")
            text = text.replace(f' name="{name}"', "")
        layout.write_text(text)

    def _make(self, path):
        words = [self.build.vantakit, "pack", "--setup", self.build.bare(self.program), "--payload", self.product,
                 "--skin", self._skin(), "--out", path, "--level", "1",
                 "--version", self.description.get("version", "1.0.0.0")]
        if self.description.get("keys") == "none":
            words += ["--maker-key", "0" * 64]
        else:
            words += ["--maker-cert", self.build.cert]
        run_tool(*words)
        if "resource" in self.description:
            spoil_resource(path, self.description["resource"])


def write_content(build, target, content):
    """A file's content: a text, or {"hex"}, {"size"}, {"sample": name, "as": "unsigned", "tampered" or "foreign"},
    {"hold"} (a program that runs until it is told to end), {"program"} or {"library"} (a small signed one)."""
    if isinstance(content, str):
        target.write_bytes(content.encode())
    elif "hex" in content:
        target.write_bytes(bytes.fromhex(content["hex"]))
    elif "size" in content:
        target.write_bytes(bytes(i * 7 & 0xFF for i in range(1024)) * (content["size"] // 1024))
    elif "hold" in content:
        shutil.copy(build.hold, target)
    elif "program" in content:
        wrap(build, target, "/bin/true", build.key, build.cert)
    elif "maker" in content:
        source = build.folder / "tests/maker_libs" / content["maker"]
        key, cert = foreign_key(build) if content.get("as") == "foreign" else (build.key, build.cert)
        if content.get("as") == "unsigned":
            run_tool(build.vantakit, "wrap", "--elf", source, "--version", "1.0.0.0", "--description", "library",
                     "--dll", "--out", target)
        else:
            wrap(build, target, source, key, cert, "--dll")
    else:
        spoil_signature(build, build.sample / content["sample"], target, content.get("as"))


def wrap(build, target, elf, key, cert, *more):
    run_tool(build.vantakit, "wrap", "--elf", elf, "--version", "1.0.0.0", "--description", "program", "--sign-key",
             key, "--sign-cert", cert, "--out", target, *more)


def foreign_key(build):
    folder = build.made(["foreign key"], lambda path: run_tool(ROOT / "tools/signing/make_dev_key.sh", path))
    return folder / "dev.key", folder / "dev.crt"


def spoil_signature(build, source, target, how):
    if how is None:
        shutil.copy2(source, target)
    elif how == "tampered":
        data = bytearray(source.read_bytes())
        data[len(data) // 2] ^= 1
        target.write_bytes(data)
    else:
        bare = target.with_name(target.name + ".bare")
        run_tool("osslsigncode", "remove-signature", "-in", source, "-out", bare if how == "foreign" else target)
        if how == "foreign":
            key, cert = foreign_key(build)
            run_tool("osslsigncode", "sign", "-key", key, "-certs", cert, "-h", "sha256", "-in", bare, "-out", target)
            bare.unlink()


def archive_entries(data, begin, size, wanted=None):
    """Where the central and local headers of the archive's entries stand."""
    end = data.rindex(b"PK\5\6", begin, begin + size)
    count, _, at = struct.unpack_from("<HII", data, end + 10)
    at += begin
    for _ in range(count):
        name, extra, comment = struct.unpack_from("<HHH", data, at + 28)
        (local,) = struct.unpack_from("<I", data, at + 42)
        if wanted in (None, data[at + 46:at + 46 + name].decode()):
            yield at, begin + local
        at += 46 + name + extra + comment


def unreadable(data, central, _):
    data[central:central + 4] = b"none"


def backslashes(data, central, local):
    for header, lengths in ((central, 28), (local, 26)):
        (length,) = struct.unpack_from("<H", data, header + lengths)
        name = slice(header + (46 if header == central else 30), header + (46 if header == central else 30) + length)
        data[name] = data[name].replace(b"/", b"\\")


def read_only(data, central, _):
    struct.pack_into("<I", data, central + 38, 0o100444 << 16)


def folder(data, central, _):
    struct.pack_into("<I", data, central + 38, 0o040755 << 16)


ARCHIVE_ODDITIES = {"unreadable": unreadable, "backslashes": backslashes, "read-only": read_only, "folder": folder}


def spoil_resource(path, how):
    """Damages the payload resource of a setup for Linux, whose resources are a PE file at its end (docs/packing.md)."""
    data = bytearray(path.read_bytes())
    (offset, _) = struct.unpack_from("<QQ", data, len(data) - 16)
    pe = offset + struct.unpack_from("<I", data, offset + 0x3C)[0]
    (sections,) = struct.unpack_from("<H", data, pe + 6)
    (optional,) = struct.unpack_from("<H", data, pe + 20)
    table = pe + 24 + optional
    for i in range(sections):
        name, _, address, _, raw = struct.unpack_from("<8sIIII", data, table + 40 * i)
        if name.rstrip(b"\0") == b".rsrc":
            break
    else:
        raise RuntimeError("no resources")
    section = offset + raw

    def find(directory, wanted):
        named, numbered = struct.unpack_from("<HH", data, directory + 12)
        for entry in range(directory + 16 + 8 * named, directory + 16 + 8 * (named + numbered), 8):
            number, child = struct.unpack_from("<II", data, entry)
            if wanted in (None, number):
                return entry, section + (child & 0x7FFFFFFF)
        raise RuntimeError(f"no resource {wanted}")

    _, names = find(section, RCDATA)
    entry, languages = find(names, PAYLOAD)
    _, leaf = find(languages, None)
    content, size = struct.unpack_from("<II", data, leaf)
    begin = section + content - address
    if how == "missing":
        struct.pack_into("<I", data, entry, PAYLOAD - 1)
    elif how == "empty":
        struct.pack_into("<I", data, leaf + 4, 0)
    elif how == "truncated":
        struct.pack_into("<I", data, leaf + 4, size // 2)
    elif how == "garbage":
        data[begin:begin + size] = (b"no archive " * (size // 11 + 1))[:size]
    elif isinstance(how, list):
        for central, local in archive_entries(data, begin, size, *how[1:]):
            ARCHIVE_ODDITIES[how[0]](data, central, local)
    elif how == "bad data":
        # Compressed data in the middle: the directory at the end stays good, and so do the entries before.
        data[begin + size // 2] ^= 0xFF
        data[begin + size // 2 + 1] ^= 0xFF
    else:
        raise RuntimeError(f"resource: {how}?")
    path.write_bytes(data)
    path.chmod(0o755)
