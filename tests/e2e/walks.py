"""Walks (docs/walks.md) as steps of a scenario: the real windows, played by vantakit walk.

    {"walk": [STEP, …], "words": "--from=demo", "exit": 0}

A step's "expect" says what is to be seen after it: every key and value of it, at any depth, others as they like. null
says that nothing is there. "fails" in place of "exit": the walk ends with an error that holds this text.
"""

import json
import subprocess

TIMEOUT = 120  # real seconds


def walk(run, step):
    path = run.put_setup(step, "setup")
    steps = [run.fill(each) for each in step["walk"]]
    script = "".join(json.dumps({k: v for k, v in each.items() if k != "expect"}) + "\n" for each in steps)
    command = [run.build.vantakit, "walk", "-", "--setup", run.machine.linux_path(path), "--machine",
               run.machine.folder, "--", *run.fill(step.get("words", "--from=demo")).split()]
    done = subprocess.run([str(word) for word in command], input=script, env=run.machine.environment(),
                          cwd=run.machine.scratch, capture_output=True, text=True, timeout=TIMEOUT, check=False)
    run.machine.stderr += done.stderr.splitlines()
    lines = [json.loads(line) for line in done.stdout.splitlines()]
    run.machine.walks += differences(step, steps, lines, done.returncode)


def differences(step, steps, lines, status):
    found = []
    for number, (each, line) in enumerate(zip(steps, lines), 1):
        if "step" in line and "error" not in line:
            found += [f"step {number} {name(each)}: {text}" for text in missing("", each.get("expect", {}), line)]
    last = lines[-1] if lines else {}
    if "fails" in step:
        if status != 1 or step["fails"] not in last.get("error", ""):
            found.append(f"should fail with {step['fails']!r}: ended with {status}, {short(last)}")
    elif "error" in last or status != 0:
        found.append(f"step {len(lines)} {name(last.get('step') or {})}: {last.get('error')}; status {status}; "
                     f"{short(last.get('seen'))}")
    elif last != {"exit": step.get("exit", 0)}:
        found.append(f"ended with {short(last)}")
    return found


def missing(where, expected, actual):
    if isinstance(expected, dict) and isinstance(actual, dict):
        return [text for key, value in expected.items() for text in missing(f"{where} {key}", value, actual.get(key))]
    return [] if expected == actual else [f"{where.strip()} is {short(actual)}, not {short(expected)}"]


def name(step):
    return short({key: value for key, value in step.items() if key != "expect"})


def short(value):
    if isinstance(value, dict) and "controls" in value:
        shown = {k: v for k, v in value["controls"].items() if v.get("visible")}
        value = {**value, "controls": shown}
    return json.dumps(value, ensure_ascii=False)
