"""Lets one call after the other fail, at each place of an installation, and checks what must hold whatever fails.

A place is an operation with its subject (the path, the value, the class …), as a first run without failures tells them.
Every place is tried, each time it is called; of one that is called more than four times (the entries of a folder, the
pieces of one file) the first, second, middle and last. The small product stands for the shipped one: its nine files
are nine places that differ in what later steps want of them, where 44 files would be the same places again.

A scenario's "sweep" has "operations" (names of Win32 calls, or "all others" than the list "others"), "errors" (by
operation; access denied otherwise) and "but not" (steps: places that they have too are theirs to try). What must hold
at every place:

  - the program ends by itself, with 0 or 1 (silent: 0 or -1), and says nothing on standard error (a sanitizer would);
  - statuses begin with 0 and end with one end: 1; 2 alone or behind one of 3, 4, 5, 9; or 8, 3 and 2 (no thread),
    or nothing more, where runInstaller answered false; 6 and 7 come before a 1 only; percentages grow;
  - the log says "InstallerThread extractInstallerFiles false" exactly where extraction failed, and "runInstaller
    openEmbeddedFilesArchive false" exactly where runInstaller answered false;
  - after a 1 every file of the product is whole and the uninstall entry, App Paths, channel, time and task lack at
    most what the failing call stood for; otherwise nothing of them is there, and the files before the one that failed
    are whole;
  - a silent start posts nothing, and ends with -1 exactly where its log says that the payload did not open;
  - what lay on the machine before is unchanged.
"""

import re
from concurrent.futures import ThreadPoolExecutor

EXTRACTION_FAILED = "InstallerThread extractInstallerFiles false"
NOT_OPENED = "runInstaller openEmbeddedFilesArchive false"
E_FAIL = 0x80004005
PROGRAM = "VantaPictorSetup"


def check(build, scenario, make_run):
    sweep = scenario["sweep"]
    calls = trace(build, scenario, make_run)
    operations = sweep["operations"]
    if operations == "all others":
        operations = sorted(set(calls) - set(sweep["others"]))
    known = set()
    if "but not" in sweep:
        other = trace(build, {**scenario, "steps": sweep["but not"]}, make_run)
        known = {(operation, subject) for operation, subjects in other.items() for subject in subjects}
    places = [(operation, nth) for operation in operations for nth in chosen(operation, calls.get(operation, []), known)]
    found = [f"no call of {operation}: nothing was tried" for operation in operations if operation not in calls]
    if not places:
        found.append("nothing was tried")
    with ThreadPoolExecutor(sweep.get("side by side", 2)) as pool:
        results = pool.map(lambda place: check_place(build, scenario, make_run, *place, calls), places)
    return found + [line for result in results for line in result]


def chosen(operation, subjects, known):
    """The calls to let fail, counted from 1."""
    calls = {}
    for nth, subject in enumerate(subjects, 1):
        if (operation, subject) not in known:
            calls.setdefault(subject, []).append(nth)
    return sorted(nth for found in calls.values() for nth in few(found))


def few(found):
    if len(found) <= 4:
        return found
    return [found[0], found[1], found[len(found) // 2], found[-1]]


def trace(build, scenario, make_run):
    run = make_run(build, scenario, {"trace_calls": True})
    calls = {}
    with run.machine:
        run.prepare()
        run.steps()
        for call in run.machine.journal("calls"):
            if PROGRAM in call["program"]:
                calls.setdefault(call["operation"], []).append(call["subject"])
        problems = violations(run, run.actual())
    if problems:
        raise RuntimeError("without any failure: " + "; ".join(problems))
    return calls


def check_place(build, scenario, make_run, operation, nth, calls):
    error = scenario["sweep"].get("errors", {}).get(operation, E_FAIL if "::" in operation else 5)
    fault = {"operation": operation, "nth": nth, "error": error, "process": PROGRAM}
    run = make_run(build, scenario, {"faults": [fault]})
    try:
        with run.machine:
            run.prepare()
            run.steps()
            problems = violations(run, run.actual())
    except (RuntimeError, ValueError) as broken:
        problems = [str(broken)]
    subject = calls[operation][nth - 1]
    return [f"{operation} {nth} ({subject}): {problem}" for problem in problems]


def violations(run, actual):
    log = next(iter(actual["log"].values()), None)
    messages = actual["messages"]
    statuses = [int(m.split()[1]) for m in messages if m.startswith("status")]
    percents = [int(m.split()[1]) for m in messages if m.startswith("progress")]
    checks = [
        (not actual["stderr"], f"standard error: {actual['stderr'][:5]}"),
        (not messages or statuses[:1] == [0], f"statuses {statuses}"),
        (percents == sorted(set(percents)), f"percentages {percents}"),
        (actual.get("window", messages) == messages, "the window saw something else than was posted"),
    ]
    if not actual["started"]:
        checks += silent(run, actual, log)
    elif actual["started"] == [True]:
        checks += ended(run, actual, statuses, log)
    else:
        no_thread = statuses == [0, 3, 2]
        checks += [(no_thread or statuses in ([], [0], [0, 8]), f"statuses {statuses} although nothing was started"),
                   (log is None or no_thread or NOT_OPENED in log, f"log {log}"), (not installed(run, actual), "files were installed")]
    checks += kept(run, actual)
    return [text for good, text in checks if not good]


def silent(run, actual, log):
    image = run.fill("${downloads}\\") + run.setup.name
    codes = [line.removeprefix(image).strip() for line in actual["exits"] if line.startswith(image + " ")]
    checks = [(codes in (["0"], ["-1"]), f"exit codes {codes}"),
              (not actual["messages"], f"messages {actual['messages']}")]
    if log is not None:
        checks.append(((codes == ["-1"]) == (NOT_OPENED in log), f"exit codes {codes} with the log {log}"))
        whole = installed(run, actual)
        if codes == ["0"] and EXTRACTION_FAILED not in log:
            checks += [(whole == run.setup.entries(), f"finished with the files {whole}"),
                       *registered(run, actual)]
    return checks


def ended(run, actual, statuses, log):
    finished = statuses and statuses[-1] == 1
    # A window that was never found, or a message that was not posted, leaves gaps; the end is told by the log then.
    tail = [status for status in statuses if status]
    good = re.fullmatch(r"(6 )?(7 )?1|([34589] )?2|(6 ?)?(7)?|[3459]", " ".join(map(str, tail))) is not None
    whole = installed(run, actual)
    entries = run.setup.entries()
    checks = [(good, f"statuses {statuses}")]
    if log is not None:
        failed = EXTRACTION_FAILED in log
        checks += [(not (failed and finished), f"log {log} with statuses {statuses}"),
                   (not failed or not actual["registry"], "registered although extraction failed"),
                   (not failed or not actual["tasks"], "scheduled although extraction failed"),
                   (not failed or whole == entries[:len(whole)], f"files {whole}")]
    if finished:
        checks += [(whole == entries, f"finished with the files {whole}"), *registered(run, actual, statuses)]
    return checks


def installed(run, actual):
    folder = run.fill("${install}\\")
    state = {name: actual["files"].get(folder + name.replace("/", "\\"), "") for name in run.setup.entries()}
    # Their times are set as well as the system allows.
    return [name for name, what in state.items() if what.split(" modified ")[0] == f"payload {name}"]


def registered(run, actual, statuses=None):
    """One failing call costs one value, and its status tells of it."""
    keys = {name: actual["registry"].get(run.fill(key), {}) for name, key in
            {"uninstall": "${uninstall}", "paths": "${app_paths}", "config": "${software}\\VantaPictor\\Config",
             "product": "${software}\\VantaPictor"}.items()}
    missing = {"uninstall": 8 - len(keys["uninstall"]), "paths": 2 - len(keys["paths"]),
               "config": len(keys["config"]) < 2,  # both are gone when the start's channel is "product": 1 - len(keys["product"]),
               "task": 1 - len(actual["tasks"])}
    lost = sum(missing.values())
    if statuses is None:
        return [(lost <= 1, f"missing {missing}")]
    return [(lost <= 1, f"missing {missing}"),
            ((6 in statuses) == (missing["uninstall"] > 0), f"statuses {statuses}, missing {missing}"),
            ((7 in statuses) == (missing["paths"] > 0), f"statuses {statuses}, missing {missing}")]


def kept(run, actual):
    """Files of the machine that are none of the product's."""
    checks = []
    for path in run.scenario.get("files", {}):
        place = run.fill(path)
        checks.append((actual["files"].get(place) == "as before", f"{place} is {actual['files'].get(place)}"))
    return checks
