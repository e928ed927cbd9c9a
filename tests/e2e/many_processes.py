#!/usr/bin/env python3
"""A hundred setup processes in a row on one machine, every tenth one with a window: none is lost, nothing piles up.

    tests/e2e/many_processes.py --build build/host [--count N]

What the machine holds after the last must be what it held after the second, but for what every installation adds.
"""

import argparse
import json
import sys

sys.dont_write_bytecode = True  # the source folder stays as it is

import walks
from expect import compare
from packing import Build
from run import Run

SCENARIO = {"base": "plain", "setup": {"payload": "small"}, "steps": []}
WALK = {"walk": [{"wait": "closed"}], "words": "--from=demo --auto"}
# What a second installation changes of the first's, and no later one.
SETTLED = 2


def install(run, number):
    if number % 10 == 0:
        walks.walk(run, WALK)
        return
    ended = run.machine.run(run.put_setup({}, "setup"), ["--silent", "--from=demo"])
    if ended != 0:
        raise SystemExit(f"installation {number} ended with {ended}: {run.machine.stderr}")


def held(run):
    """What the machine holds of files (but logs), registry, shortcuts and tasks."""
    raw = run.machine.show()
    # A task's file holds the moment of its first run, which each installation sets anew.
    files = {entry["path"]: "\\Tasks\\" in entry["path"] or entry["sha256"] for entry in raw["files"]
             if entry["path"] not in raw["log"]["files"]}
    registry = sorted(json.dumps(entry) for entry in raw["registry"])
    return {"files": files, "registry": registry, "shortcuts": raw["shortcuts"],
            "tasks": [entry["name"] for entry in raw["tasks"]]}, raw


def main():
    parser = argparse.ArgumentParser(description="Many setup processes in a row on one machine.")
    parser.add_argument("--build", default="build/host")
    parser.add_argument("--count", type=int, default=100)
    options = parser.parse_args()
    run = Run(Build(options.build), SCENARIO)
    with run.machine:
        run.prepare()
        for number in range(1, options.count + 1):
            install(run, number)
            if number == SETTLED:
                settled, _ = held(run)
        last, raw = held(run)
        found = compare("after all", settled, last)
        found += run.machine.walks + run.machine.stderr
        codes = [entry["code"] for entry in raw["exits"] if entry["image"].endswith("\\VantaPictorSetup.exe")]
        if codes != [0] * options.count:
            found.append(f"exit codes {codes}")
    print("\n".join(found) or f"{options.count} installations, all alike")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
