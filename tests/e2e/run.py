#!/usr/bin/env python3
"""Runs whole installations that are described as data.

    tests/e2e/run.py [--build DIR] [--keep] [--actual] [SCENARIO.json …]

Each scenario says what machine there is, what lies on it, which programs run, and what the machine holds afterwards:
all of it, and nothing else. tests/e2e/README.md lists the words of a scenario. Exit code 1 when one does not hold.
"""

import argparse
import hashlib
import json
import shutil
import sys
import traceback
from pathlib import Path

sys.dont_write_bytecode = True  # the source folder stays as it is

import by_hand
import reports
import sweep
import walks
from expect import Expectation, merged
from machine import CLOCK, DEFAULTS, LOG_CONFIGURATION, Machine, split_words
from packing import Build, Setup, write_content
from state import Reader

HERE = Path(__file__).resolve().parent


class Run:
    """One scenario on one machine."""

    def __init__(self, build, scenario, facts=None):
        self.build = build
        self.scenario = scenario
        self.facts = {**scenario.get("facts", {}), **(facts or {})}
        self.setup = Setup(build, scenario.get("setup", {}), "setup")
        self.setups = [self.setup]
        self.clocks = [self.facts.get("clock", CLOCK)["at"]]
        self.expected = Expectation(scenario, self.setup, self.sizes)
        self.machine = Machine(build, self.fill(self.facts))

    def fill(self, value):
        return self.expected._fill(value)

    def sizes(self, _):
        for drive in sorted(p for p in self.machine.folder.iterdir() if len(p.name) == 1 and p.is_dir()):
            for path in drive.rglob("*"):
                if path.is_file():
                    yield f"{drive.name}:\\" + str(path.relative_to(drive)).replace("/", "\\"), path.stat().st_size

    def prepare(self):
        if "server" in self.scenario:
            self.machine.server = reports.start(self.scenario["server"], self.machine.scratch / "server",
                                                self.build.cache / "certificates")
            self.facts.update(reports.facts(self.machine.server))
            self.write_facts(self.facts)
        downloads = self.fill("${downloads}")
        self.put(downloads + "\\xLogConfig.ini", LOG_CONFIGURATION)
        for path, content in self.scenario.get("files", {}).items():
            self.put(self.fill(path), content)

    def put(self, path, content):
        self.machine.put(path, lambda target: write_content(self.build, target, content))
        self.machine.digests[path.lower()] = digest(self.machine.linux_path(path))

    def steps(self):
        for step in self.scenario["steps"]:
            self.step({"run": step} if isinstance(step, str) else step)

    def step(self, step):
        if "walk" in step:
            walks.walk(self, step)
        elif "by_hand" in step:
            by_hand.by_hand(self, step)
        elif step.get("run") == "let go":
            self.machine.let_go()
        elif "run" in step:
            self.run(step)
        elif "hold" in step:
            self.machine.hold(self.build.hold, [step.get("share", "-"), self.fill(step["hold"])])
        elif "load" in step:
            self.machine.hold(self.build.hold, ["load", self.fill(step["load"])])
        elif "window" in step:
            self.machine.hold(self.build.hold, ["window"])
        elif "start" in step:
            self.machine.hold(self.machine.linux_path(self.fill(step["start"])), [])
        elif "facts" in step:
            self.change_facts(step["facts"])
        else:
            raise ValueError(f"unknown step {step}")

    def run(self, step):
        """"setup …" or "driver …" with a command line, from the downloads folder."""
        program, *words = split_words(step["run"])
        path = self.put_setup(step, program)
        ended = self.machine.run(path, words, step.get("environment"))
        if ended < 0 or ended != step.get("exit", ended):
            self.machine.stderr.append(f"{step['run']}: ended with {ended}")

    def put_setup(self, step, program):
        if len(self.setups) > 1:
            self.machine.show()  # waits for what the run before has started
        setup = Setup(self.build, {**self.scenario.get("setup", {}), **step.get("setup", {})}, program)
        self.setups.append(setup)
        path = self.fill("${downloads}") + "\\" + setup.name
        target = self.machine.linux_path(path)
        target.unlink(missing_ok=True)
        self.machine.put(path, lambda place: shutil.copy(setup.path, place))
        self.machine.digests[path.lower()] = digest(target)
        return path

    def change_facts(self, facts):
        if "clock" in facts:
            self.clocks.append(facts["clock"]["at"])
        self.write_facts({**self.facts, **facts})

    def write_facts(self, facts):
        (self.machine.folder / "machine.json").write_text(json.dumps({**DEFAULTS, **self.fill(facts)}))

    def actual(self):
        self.machine.let_go()
        actual = Reader(self.machine, self.setups, self.clocks).read()
        # What the window was sent is what it got, in that order.
        if self.machine.started and self.machine.seen != actual["messages"]:
            actual["window"] = self.machine.seen
        actual["walks"] = self.machine.walks
        self.expected.set_size(actual)
        return actual


def digest(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def check(build, path, options):
    scenario = json.loads(path.read_text())
    if "sweep" in scenario:
        return sweep.check(build, scenario, Run)
    cases = scenario.pop("cases", {"": {}})
    found = []
    for name, case in expanded(cases):
        if options.case in (None, name):
            both = merged(scenario, case, keep_null=True)
            found += [f"{name}: {line}" if name else line for line in check_case(build, both, options)]
    return found


def expanded(cases):
    """A case with a list "each" is as many cases, "${each}" in it (its name too) being one of the list."""
    for name, case in cases.items():
        values = case.pop("each", None)
        text = json.dumps([name, case])
        for value in values or [""]:
            yield json.loads(text.replace("${each}", json.dumps(value)[1:-1]))


def check_case(build, scenario, options):
    run = Run(build, scenario)
    with run.machine:
        run.prepare()
        run.steps()
        actual = run.actual()
        if options.actual:
            print(json.dumps(actual, indent=1, ensure_ascii=False))
        if options.keep:
            shutil.copytree(run.machine.folder, options.keep, dirs_exist_ok=True, symlinks=True)
        return run.expected.differences(actual)


def main():
    parser = argparse.ArgumentParser(description="Runs whole installations that are described as data.")
    parser.add_argument("--build", default="build/host", help="the build folder to test (build/host)")
    parser.add_argument("--keep", metavar="DIR", help="leave the machine in this folder")
    parser.add_argument("--case", help="only this case of a scenario")
    parser.add_argument("--actual", action="store_true", help="print what the machine held")
    parser.add_argument("scenarios", nargs="*", type=Path)
    options = parser.parse_args()
    build = Build(options.build)
    failed = 0
    for path in options.scenarios or sorted((HERE / "scenarios").glob("*.json")):
        try:
            differences = check(build, path, options)
        except Exception:  # a scenario that cannot run is a failure like any other, and the next one still runs
            differences = [traceback.format_exc()]
        failed += bool(differences)
        print(f"{'FAILED' if differences else 'ok    '} {path.stem}")
        for difference in differences:
            print("  " + difference.replace("\n", "\n  "))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
