"""What an installation left in a Wine prefix, in the shape of `vantakit machine show --json`.

  wine_state.py facts PREFIX USER               a machine.json for a machine like this prefix
  wine_state.py baseline PREFIX USER            what a later `state` leaves out, because it was there before
  wine_state.py state PREFIX USER BASELINE      what has come since

Wine writes its registry files when its server ends: wait for that first.
"""
import hashlib
import json
import os
import pathlib
import re
import struct
import sys
from datetime import datetime, timedelta, timezone

import shell_link

TYPES = {0: "REG_NONE", 1: "REG_SZ", 2: "REG_EXPAND_SZ", 3: "REG_BINARY", 4: "REG_DWORD", 7: "REG_MULTI_SZ",
         11: "REG_QWORD"}
START_TYPES = {2: "auto", 3: "manual", 4: "disabled"}
SCHEDULER = r"HKLM\System\CurrentControlSet\Services\Schedule"
PENDING = (r"HKLM\System\CurrentControlSet\Control\Session Manager", "PendingFileRenameOperations")


def _unescape(text):
    named = {"n": "\n", "r": "\r", "t": "\t", "0": "\0"}
    plain = re.sub(r"\\x([0-9a-f]{1,4})|\\(.)", lambda m: chr(int(m[1], 16)) if m[1] else named.get(m[2], m[2]), text)
    return plain.encode("utf-16-le", "surrogatepass").decode("utf-16-le", "replace")


def _stored(text):
    """(type, bytes) of the right side of a line of a registry file."""
    kind, rest = re.match(r'(dword:|hex(?:\([0-9a-f]+\))?:|str\([0-9a-f]+\):|)(.*)$', text, re.S).groups()
    number = re.search(r"\(([0-9a-f]+)\)", kind)
    if kind == "dword:":
        return 4, int(rest, 16).to_bytes(4, "little")
    if kind.startswith("hex"):
        return int(number[1], 16) if number else 3, bytes.fromhex(rest.replace(",", ""))
    # Text in quotes stands for a terminated string.
    return int(number[1], 16) if number else 1, (_unescape(rest[1:-1]) + "\0").encode("utf-16-le", "surrogatepass")


def _shown(kind, data):
    """The value as `machine show` gives it."""
    if kind in (1, 2):
        return data.decode("utf-16-le", "replace").split("\0")[0]
    if kind == 7:
        return [part for part in data.decode("utf-16-le", "replace").split("\0") if part]
    if kind in (4, 11) and len(data) == (4 if kind == 4 else 8):
        return int.from_bytes(data, "little")
    return data.hex()


def registry(file, root):
    """Every value of a registry file: {(key, name): {type, bytes, value}}."""
    text = file.read_text(encoding="utf-8", errors="replace")
    values, key = {}, None
    for line in re.sub(r",\\\n\s*", ",", text).split("\n"):
        head = re.match(r"\[(.+)\](?: \d+)?$", line)
        found = re.match(r'(?:"((?:[^"\\]|\\.)*)"|@)=(.*)$', line)
        if head:
            key = root + "\\" + _unescape(head[1])
        elif found and key:
            kind, data = _stored(found[2])
            values[key, _unescape(found[1] or "")] = {
                "type": TYPES.get(kind, str(kind)), "bytes": len(data), "value": _shown(kind, data)}
    return values


def all_registry(prefix):
    return {**registry(prefix / "system.reg", "HKLM"), **registry(prefix / "user.reg", "HKCU")}


def windows_path(prefix, path):
    return "C:\\" + str(path.relative_to(prefix / "drive_c")).replace("/", "\\")


def _attributes(path):
    """Wine keeps read-only as the missing write permission, hidden and system in an extended attribute."""
    try:
        kept = int(os.getxattr(path, "user.DOSATTRIB"), 16)
    except OSError:
        kept = 0
    names = [] if path.stat().st_mode & 0o200 else ["readonly"]
    return names + [name for bit, name in ((2, "hidden"), (4, "system")) if kept & bit] + ["archive"]


def _modified(path):
    nanoseconds = path.stat().st_mtime_ns
    moment = datetime(1970, 1, 1, tzinfo=timezone.utc) + timedelta(seconds=nanoseconds // 10**9)
    return f"{moment:%Y-%m-%dT%H:%M:%S}.{nanoseconds % 10**9 // 100:07d}Z"


def disk(prefix):
    return [path for path in sorted((prefix / "drive_c").rglob("*")) if path.is_file() and not path.is_symlink()]


def describe(prefix, path):
    data = path.read_bytes()
    return {"path": windows_path(prefix, path), "size": len(data), "sha256": hashlib.sha256(data).hexdigest(),
            "attributes": _attributes(path), "modified": _modified(path)}


def facts(prefix, user):
    version = {name: value["value"] for (key, name), value in registry(prefix / "system.reg", "HKLM").items()
               if key.lower() == r"hklm\software\microsoft\windows nt\currentversion"}
    major, minor = map(int, version["CurrentVersion"].split("."))
    # From Windows 10 on the text stays at 6.3 and two numbers tell the truth.
    major, minor = version.get("CurrentMajorVersionNumber", major), version.get("CurrentMinorVersionNumber", minor)
    # Wine starts the scheduler when it is first asked for.
    start = registry(prefix / "system.reg", "HKLM")[SCHEDULER, "Start"]["value"]
    return {"version": {"major": major, "minor": minor, "build": int(version["CurrentBuildNumber"])},
            "services": {"Schedule": {"state": "stopped", "start_type": START_TYPES[start]}},
            "process_bits": 64, "user": user}


def baseline(prefix, user):
    return {"files": [windows_path(prefix, path) for path in disk(prefix)],
            "registry": [[*key, value] for key, value in all_registry(prefix).items()]}


def state(prefix, user, before):
    was = {(key, name): value for key, name, value in before["registry"]}
    values = all_registry(prefix)
    new = [path for path in disk(prefix) if windows_path(prefix, path) not in set(before["files"])]
    # Given as `deferred` instead.
    pending = values.pop(PENDING, {})
    return {
        "files": [describe(prefix, path) for path in new],
        "registry": [{"key": key, "name": name, **value} for (key, name), value in values.items()
                     if was.get((key, name)) != value],
        "shortcuts": [{"path": windows_path(prefix, path), **shell_link.read(path.read_bytes())}
                      for path in new if path.suffix == ".lnk"],
        "tasks": [windows_path(prefix, path) for path in new if "/tasks/" in str(path).lower()],
        "deferred": [{"from": text.removeprefix("\\??\\")} for text in pending.get("value", [])],
    }


def main():
    what, prefix, user, *rest = sys.argv[1:]
    made = {"facts": facts, "baseline": baseline, "state": state}[what]
    json.dump(made(pathlib.Path(prefix), user, *(json.loads(pathlib.Path(name).read_text()) for name in rest)),
              sys.stdout, indent=1)


if __name__ == "__main__":
    try:
        main()
    except (ValueError, KeyError, OSError, struct.error) as error:
        sys.exit(f"wine_state: {type(error).__name__}: {error}")
