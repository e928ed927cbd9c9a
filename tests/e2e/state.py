"""What a machine holds, in the form in which scenarios say what they expect: short, and without what differs by
chance. The form of each section:

  files      path → what it is: "payload NAME", "as before", "log", "shortcut", "task", "text …" or its hash
  registry   key → {value name: [type, value]}, with the stored length in bytes behind where it is not the natural one
             (two bytes a character without terminator, 4, 8, …)
  shortcuts  path → {target, arguments, directory, icon, icon_index, description}
  tasks      name → its definition
  launches   list, in order: {file, parameters, show, elevated, by, result …}; empty fields are left out
  deferred   list, in order: path, or "from → to"
  messages   list, in order: "status N", "progress N" to the setup's window, others in full
  log        path → its lines without the time, and without the tag where it is the setup's own
  debugger   lines, sorted
  exits      "image code", sorted: programs run side by side
  stderr     lines;  started: what runInstaller answered;  maker: calls of the maker's libraries
  services   what programs changed of services
  reports, identifiers, requests: what the maker is told (reports.py)
"""

import datetime
import hashlib
import re

import reports

STATUS, PROGRESS = 2025, 2024
NATURAL_SIZES = {"REG_DWORD": 4, "REG_QWORD": 8}


class Reader:
    """Turns one machine's state into that form. `setups` are those that ran on it, `starts` where its clock was set."""

    def __init__(self, machine, setups, starts):
        self.machine = machine
        self.starts = [datetime.datetime.fromisoformat(start) for start in starts]
        self.setups = setups
        self.contents = {}
        for setup in setups:
            for name in setup.entries():
                path = setup.product / name
                digest = hashlib.sha256(path.read_bytes()).hexdigest()
                self.contents.setdefault(digest, []).append((name, int(path.stat().st_mtime)))

    def read(self):
        raw = self.machine.show()
        told = reports.take_out(raw, self.machine.server)
        return {
            **told,
            "files": {mask_ticks(e["path"]): self._file(e, raw) for e in raw["files"]},
            "registry": self._registry(raw["registry"]),
            "shortcuts": {e["path"]: without(e, "path") for e in raw["shortcuts"]},
            "tasks": {e["name"]: self._task(e) for e in raw["tasks"]},
            "launches": [self._launch(e) for e in raw["launches"]],
            "deferred": [mask_ticks(e["from"]) + (f" → {e['to']}" if e.get("to") else "") for e in raw["deferred"]],
            "messages": [message(e) for e in raw["messages"]],
            "log": {path: [self._line(line) for line in lines] for path, lines in raw["log"]["files"].items()},
            "debugger": sorted(raw["log"]["debugger"]),
            "exits": sorted(f"{e['image']} {e['code']}" for e in raw["exits"] if not e["image"].startswith("Z:")),
            "stderr": self.machine.stderr,
            "started": self.machine.started,
            "maker": self.machine.maker_calls(),
            "services": self.machine.services(),
        }

    def _file(self, entry, raw):
        path = entry["path"]
        put = self.machine.before.get(path.lower())
        if put is not None and entry["sha256"] == self._digest_before(path):
            what = "as before"
        elif path in raw["log"]["files"]:
            what = "log"
        elif any(path == shortcut["path"] for shortcut in raw["shortcuts"]):
            what = "shortcut"
        elif re.search(r"\\(Windows\\system32\\Tasks\\[^\\]+|Windows\\Tasks\\[^\\]+\.job)$", path, re.I):
            what = "task"
        else:
            what = self._content(entry)
        extra = [a for a in entry["attributes"] if a != "archive"]
        return what + (f" ({', '.join(extra)})" if extra else "")

    def _digest_before(self, path):
        return self.machine.digests.get(path.lower())

    def _content(self, entry):
        known = self.contents.get(entry["sha256"])
        if not known:
            return self._begun(entry) or self._text(entry)
        flat = mask_ticks(entry["path"]).removesuffix(".${ticks}").replace("\\", "/")
        name, modified = next(((n, t) for n, t in known if flat.endswith("/" + n)), known[0])
        stored = datetime.datetime.fromisoformat(entry["modified"][:19] + "+00:00").timestamp()
        return f"payload {name}" + ("" if int(stored) == modified else f" modified {entry['modified']}")

    def _begun(self, entry):
        """A file of the product that is not whole."""
        for names in self.contents.values():
            for name, _ in names:
                if entry["path"].replace("\\", "/").endswith("/" + name):
                    whole = next(s.product / name for s in self.setups if (s.product / name).exists()).read_bytes()
                    data = self.machine.linux_path(entry["path"]).read_bytes()
                    return f"{'begun' if whole.startswith(data) else 'spoiled'} {name}"
        return None

    def _text(self, entry):
        data = self.machine.linux_path(entry["path"]).read_bytes()
        if len(data) < 2000:
            try:
                return "text " + data.decode()
            except UnicodeDecodeError:
                pass
        return f"{entry['size']} bytes, sha256 {entry['sha256']}"

    def _registry(self, entries):
        keys = {}
        for entry in entries:
            value = entry.get("value")
            if entry["type"] == "REG_QWORD":
                value = self._time(value)
            stored = [entry["type"], value]
            natural = NATURAL_SIZES.get(entry["type"], 2 * utf16_length(value) if isinstance(value, str) else None)
            if entry["type"] in ("REG_BINARY", "REG_NONE"):
                natural = len(value) // 2
            if entry["bytes"] != natural:
                terminated = natural is not None and entry["bytes"] == natural + 2
                stored.append("terminated" if terminated else entry["bytes"])
            keys.setdefault(entry["key"], {})[entry["name"]] = stored
        return keys

    def _after(self, moment, name, least=0, most=60):
        """The name when the moment lies so many seconds after the clock was set (the standing clock moves on by what
        programs sleep), with a number when that was not the first time; otherwise none."""
        for i, start in enumerate(self.starts):
            if least <= (moment - start).total_seconds() <= most:
                return "${" + name + (f" {i + 1}" if i else "") + "}"
        return None

    def _time(self, ticks):
        moment = datetime.datetime(1601, 1, 1) + datetime.timedelta(microseconds=int(ticks) // 10)
        return self._after(moment, "now") or ticks

    def _task(self, entry):
        task = {k: v for k, v in without(entry, "name").items() if v not in ("", 0, None)}
        start = datetime.datetime.fromisoformat(task.get("start", "1601-01-01"))
        # One to two hours later, to the minute; the first scheduler drops the seconds.
        seconds = 59 if task.get("scheduler") == 1 else 0
        task["start"] = self._after(start, "first_start", 3600 - seconds, 119 * 60 + 60) or task.get("start")
        return task

    def _launch(self, entry):
        return {k: mask_ticks(v) for k, v in entry.items() if k not in ("child", "process") and v not in ("", None)}

    def _line(self, line):
        match = re.fullmatch(r"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d) \[([^\]]*)\] (.*)", line)
        if not match:
            return line
        moment = datetime.datetime.fromisoformat(match[1])
        if not self._after(moment, "now"):
            return line
        return match[3] if match[2] == "App - SetupHelper" else f"[{match[2]}] {match[3]}"


def message(entry):
    kinds = {STATUS: "status", PROGRESS: "progress"}
    if entry["class"] == "VantaPictorSetupWndClass" and entry["message"] in kinds and entry["wParam"] == 0:
        return f"{kinds[entry['message']]} {entry['lParam']}"
    return f"{entry['class']} {entry['message']} {entry['wParam']} {entry['lParam']}"


def mask_ticks(value):
    return re.sub(r"(\.dll)\.\d+", r"\1.${ticks}", value) if isinstance(value, str) else value


def utf16_length(text):
    return len(text.encode("utf-16-le")) // 2


def without(entry, *names):
    return {key: value for key, value in entry.items() if key not in names}
