"""What a scenario expects: a base state with differences, and how the machine's state differs from that.

A base is a file in expected/: variables (a scenario may give others) and the sections of state.py. Differences merge
by key; null takes an entry away; a list replaces the base's. Of the payload a scenario says how many files arrive
("extracted": a number, or the name of the first file that does not); the base says where. A key that begins with "?"
names an entry that may be there or not (things that run side by side), and so does a list item.
"""

import copy
import difflib
import json
import re
from pathlib import Path

FOLDER = Path(__file__).resolve().parent / "expected"


def load_base(name):
    base = json.loads((FOLDER / f"{name}.json").read_text())
    if "base" not in base:
        return base
    return merged(load_base(base.pop("base")), base)


def merged(base, changes, keep_null=False):
    """Both, the changes winning. A null takes its entry away, or with keep_null stays for a later merging."""
    if not isinstance(base, dict) or not isinstance(changes, dict):
        return copy.deepcopy(changes)
    result = dict(base)
    for key, value in changes.items():
        if value is None and not keep_null:
            result.pop(key, None)
        else:
            result[key] = merged(result.get(key, {}), value, keep_null)
    return result


class Expectation:
    def __init__(self, scenario, setup, sizes):
        base = load_base(scenario.get("base", "plain"))
        self.variables = {**base.pop("variables"), "setup_name": setup.name, **scenario.get("variables", {})}
        self.setup = setup
        self.sizes = sizes
        base.pop("about", None)
        state = self._fill(merged(base, scenario.get("expect", {})))
        extracted = state.pop("extracted", "all")
        for section in ("exits", "debugger"):  # programs run side by side
            state[section] = sorted(state.get(section, []))
        self.entries = self._extracted(extracted)
        for name in self.entries:
            path = self.text("${install}\\" + name.replace("/", "\\"))
            state["files"].setdefault(path, f"payload {name}")
        for path in [p for p, what in state["files"].items() if what == "absent"]:
            del state["files"][path]
        self.state = state

    def _extracted(self, wanted):
        entries = self.setup.entries()
        if wanted == "all":
            return entries
        return entries[:wanted if isinstance(wanted, int) else entries.index(wanted)]

    def text(self, value):
        """Fills ${names}, also in what they stand for. Names that state.py puts in place of chance stay."""
        for _ in range(8):
            value = re.sub(r"\$\{(\w+)\}", lambda m: str(self.variables.get(m[1], m[0])), value)
        return value

    def _fill(self, value):
        if isinstance(value, str):
            return self.text(value)
        if isinstance(value, list):
            return [item for element in value for item in self._items(element)]
        if isinstance(value, dict):
            return {self.text(key): self._fill(entry) for key, entry in value.items()}
        return value

    def _items(self, element):
        """"progress of 44" stands for the percentages of 44 files, "progress before 5 of 44" for those of the first
        five; 0 has been posted at the start."""
        match = isinstance(element, str) and re.fullmatch(r"progress (?:before (\d+) )?of (\d+)", element)
        if not match:
            return [self._fill(element)]
        count = int(match[2])
        percents = {100 * i // count for i in range(int(match[1] or count))}
        return [f"progress {percent}" for percent in sorted(percents - {0})]

    def set_size(self, actual):
        """EstimatedSize: all files below the install directory, in KiB, each counted by the runner itself."""
        inside = self.text("${install}\\").lower()
        total = sum(size for path, size in self.sizes(actual) if path.lower().startswith(inside))
        key = self.text("${uninstall}")
        value = self.state.get("registry", {}).get(key, {}).get("EstimatedSize")
        if value and value[1] == "${size}":
            value[1] = (total & 0xFFFFFFFF) >> 10

    def differences(self, actual):
        found = []
        for section in sorted(set(self.state) | set(actual)):
            empty = type(actual.get(section, self.state.get(section)))()
            found += compare(section, self.state.get(section, empty), actual.get(section, empty))
        return found


def compare(where, expected, actual):
    if isinstance(expected, dict) and isinstance(actual, dict):
        return compare_entries(where, expected, actual)
    if isinstance(expected, list) and isinstance(actual, list):
        return compare_lists(where, expected, actual)
    return [] if expected == actual else [f"{where}\n  expected {show(expected)}\n  got      {show(actual)}"]


def compare_entries(where, expected, actual):
    optional = {key[1:]: value for key, value in expected.items() if key.startswith("?")}
    found = []
    for key, value in expected.items():
        if key.startswith("?"):
            continue
        if key not in actual:
            found.append(f"{where}: missing {key!r}: {show(value)}")
        else:
            found += compare(f"{where}[{key!r}]", value, actual[key])
    for key, value in actual.items():
        if key not in expected and optional.get(key) != value:
            found.append(f"{where}: not expected {key!r}: {show(value)}")
    return found


def compare_lists(where, expected, actual):
    left = list(actual)
    kept = []
    for item in expected:
        if isinstance(item, str) and item.startswith("?"):
            if item[1:] in left:
                left.remove(item[1:])
        else:
            kept.append(item)
    if kept == left:
        return []
    lines = difflib.unified_diff([show(i) for i in kept], [show(i) for i in left], "expected", "got", lineterm="", n=2)
    return [where + "".join("\n  " + line for line in list(lines)[2:])]


def show(value):
    return value if isinstance(value, str) else json.dumps(value, ensure_ascii=False, sort_keys=True)
