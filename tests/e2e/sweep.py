"""Lets one call after the other fail, at each place of an installation, and checks what must hold whatever fails.

A scenario's "sweep" has "operations" (names of Win32 calls, or "all others" than the list "others"), "errors" (by operation; access denied
otherwise) and "at most" (places
tried of one operation, spread evenly, the first and last among them). A first run without failures tells how often the
program makes each call. What must hold at every place:

  - the program ends by itself, with 0 or 1, and says nothing on standard error (a sanitizer would);
  - statuses begin with 0 and end with one end: 1; 2 alone or behind one of 3, 4, 5, 9; or 8, 3 and 2 (no thread),
    or nothing more, where runInstaller answered false; 6 and 7 come before a 1 only; percentages grow;
  - the log says "InstallerThread extractInstallerFiles false" exactly where extraction failed, and "runInstaller
    openEmbeddedFilesArchive false" exactly where runInstaller answered false;
  - after a 1 every file of the product is whole and the uninstall entry, App Paths, channel, time and task lack at
    most what the failing call stood for; otherwise nothing of them is there, and the files before the one that failed
    are whole;
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
    places = [(operation, place) for operation in operations
              for place in spread(len(calls.get(operation, [])), sweep["at most"])]
    found = [f"no call of {operation}: nothing was tried" for operation in operations if operation not in calls]
    with ThreadPoolExecutor(sweep.get("side by side", 2)) as pool:
        results = pool.map(lambda place: check_place(build, scenario, make_run, *place, calls), places)
    return found + [line for result in results for line in result]


def spread(count, most):
    """Places from 1 to count, at most so many."""
    if count <= most:
        return list(range(1, count + 1))
    return sorted({1 + round(i * (count - 1) / (most - 1)) for i in range(most)})


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


def check_place(build, scenario, make_run, operation, place, calls):
    error = scenario["sweep"].get("errors", {}).get(operation, E_FAIL if "::" in operation else 5)
    fault = {"operation": operation, "nth": place, "error": error, "process": PROGRAM}
    run = make_run(build, scenario, {"faults": [fault]})
    try:
        with run.machine:
            run.prepare()
            run.steps()
            problems = violations(run, run.actual())
    except (RuntimeError, ValueError) as broken:
        problems = [str(broken)]
    subject = calls[operation][place - 1]
    return [f"{operation} {place} ({subject}): {problem}" for problem in problems]


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
    if actual["started"] == [True]:
        checks += ended(run, actual, statuses, log)
    else:
        no_thread = statuses == [0, 3, 2]
        checks += [(no_thread or statuses in ([], [0], [0, 8]), f"statuses {statuses} although nothing was started"),
                   (log is None or no_thread or NOT_OPENED in log, f"log {log}"), (not installed(run, actual), "files were installed")]
    checks += kept(run, actual)
    return [text for good, text in checks if not good]


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


def registered(run, actual, statuses):
    """One failing call costs one value, and its status tells of it."""
    keys = {name: actual["registry"].get(run.fill(key), {}) for name, key in
            {"uninstall": "${uninstall}", "paths": "${app_paths}", "config": "${software}\\VantaPictor\\Config",
             "product": "${software}\\VantaPictor"}.items()}
    missing = {"uninstall": 8 - len(keys["uninstall"]), "paths": 2 - len(keys["paths"]),
               "config": len(keys["config"]) < 2,  # both are gone when the start's channel is "product": 1 - len(keys["product"]),
               "task": 1 - len(actual["tasks"])}
    lost = sum(missing.values())
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
