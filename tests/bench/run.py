#!/usr/bin/env python3
"""Speed and size, each beside its peer: prints a table and writes build/bench/results.json.

  tests/bench/run.py --build build/host [--windows build/windows-i686] [--only NAME]… [--quick] [--strict]

Extraction is measured on a tmpfs and on the disk that holds build/, in runs that take turns, each into a folder of its
own; a figure is the median. --only measures one part: extraction, reader, markup, layout, painting, window, answers or size.
--quick leaves out the large archive and makes the fewest rounds; --strict ends with 1 when a target is missed, and
without it only what does not work does.
"""
import argparse
import hashlib
import json
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

import corpora
import ui

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
OUT = ROOT / "build/bench"
# Rounds in which every program runs once; no further one begins when the time is used up.
MOST_ROUNDS = {"product": 15, "small": 9, "large": 5}
LEAST_ROUNDS = 3
SECONDS = 30
# What can be measured alone, and the programs that it takes.
PARTS = {
    "extraction": ["extract_bench"],
    "reader": ["extract_bench"],
    "markup": ["markup_bench"],
    "layout": ["layout_bench", "layout_peer"],
    "painting": ["paint_bench", "paint_peer"],
    "window": ["window_bench"],
    "answers": [],
    "size": [],
}


class Programs:
    """What extracts: each turns (archive, empty folder) into (seconds, figures)."""

    def __init__(self, bench):
        self.bench = bench

    def run(self, name, archive, folder):
        environment = dict(os.environ)
        if name in ("setup", "memory"):
            # A machine of its own; its drive C: holds the result.
            environment["VANTA_MACHINE"] = str(folder)
            command = [self.bench, "product" if name == "setup" else "memory", archive, "C:\\out"]
        elif name == "loop":
            command = [self.bench, "loop", archive, folder / "out"]
        elif name == "unzip":
            command = ["unzip", "-q", archive, "-d", folder / "out"]
        elif name == "7z":
            command = ["7z", "x", "-y", "-bd", "-bso0", "-bsp0", f"-o{folder / 'out'}", archive]
        else:
            (folder / "out").mkdir()
            command = ["bsdtar", "-xf", archive, "-C", folder / "out"]
        start = time.perf_counter()
        done = subprocess.run([str(part) for part in command], env=environment, capture_output=True, text=True)
        wall = time.perf_counter() - start
        if done.returncode != 0:
            sys.exit(f"bench: {name} failed on {archive}:\n{done.stdout}{done.stderr}")
        figures = json.loads(done.stdout) if name in ("setup", "memory", "loop") else {}
        out = folder / ("out" if name not in ("setup", "memory") else "C/out")
        return wall, figures, out


PEERS = ["unzip", "7z", "bsdtar"]
NAMES = ["setup", "loop", *PEERS]


def digest(folder):
    """One hash over all names, contents and modification times."""
    total = hashlib.sha256()
    for path in sorted(p for p in folder.rglob("*") if p.is_file()):
        total.update(f"{path.relative_to(folder)} {path.stat().st_mtime_ns}\n".encode())
        total.update(hashlib.sha256(path.read_bytes()).digest())
    return total.hexdigest()


def measure_extraction(programs, archive, medium, most_rounds):
    walls = {name: [] for name in NAMES}
    inner = {"setup": [], "loop": []}
    digests = {}

    def once(name, keep=None):
        folder = pathlib.Path(tempfile.mkdtemp(prefix="vanta-bench-", dir=medium))
        try:
            wall, figures, out = programs.run(name, archive, folder)
            if keep is not None:
                keep[name] = digest(out)
            return wall, figures
        finally:
            shutil.rmtree(folder)
            os.sync()

    for name in inner:  # for the caches, and to see that both do the same
        once(name, digests)
    if digests["setup"] != digests["loop"]:
        sys.exit(f"bench: setup and loop left different files of {archive}")
    started = time.monotonic()
    for turn in range(most_rounds):
        if turn >= LEAST_ROUNDS and time.monotonic() - started > SECONDS:
            break
        for name in NAMES[turn % len(NAMES):] + NAMES[:turn % len(NAMES)]:
            wall, figures = once(name)
            walls[name].append(wall)
            if figures:
                inner[name].append(figures["seconds"])
    ratio = statistics.median(a / b for a, b in zip(inner["setup"], inner["loop"]))
    return {"seconds": {name: statistics.median(values) for name, values in walls.items()},
            "extraction_seconds": {name: statistics.median(values) for name, values in inner.items()},
            "to_loop": ratio, "memory": once("memory")[1]["memory"], "rounds": len(walls["setup"])}


class Table:
    def __init__(self):
        self.targets = []

    def target(self, what, value, limit, text):
        met = value <= limit
        self.targets.append({"what": what, "value": value, "limit": limit, "met": met})
        print(f"  {'ok    ' if met else 'MISSED'} {what}: {text}", flush=True)


def extraction(table, programs, quick):
    results = {}
    media = {"tmpfs": pathlib.Path("/dev/shm"), "disk": OUT / "work"}
    media["disk"].mkdir(parents=True, exist_ok=True)
    wanted = ["product", "small"] if quick else ["product", "small", "large"]
    for title, archive in corpora.make_all(OUT / "corpora", wanted).items():
        kind = archive.stem
        for medium, folder in media.items():
            most = LEAST_ROUNDS if quick else MOST_ROUNDS[kind]
            figures = results.setdefault(title, {})[medium] = measure_extraction(programs, archive, folder, most)
            seconds = figures["seconds"]
            print(f"\nExtraction, {title}, {medium} (median of {figures['rounds']}, whole process)")
            for name in NAMES:
                print(f"  {name:8} {seconds[name] * 1000:10.1f} ms   {seconds[name] / seconds['setup']:5.2f} of the setup's time")
            table.target(f"{title}, {medium}: against the minimal loop", figures["to_loop"], 1.05,
                         f"{figures['to_loop']:.3f} times its time (at most 1.05)")
            for peer in ["unzip", "7z"] + (["bsdtar"] if kind == "small" else []):
                table.target(f"{title}, {medium}: ahead of {peer}", seconds["setup"], seconds[peer],
                             f"{seconds[peer] / seconds['setup']:.2f} times as fast")
            table.target(f"{title}, {medium}: memory beyond the archive", figures["memory"], 1 << 20,
                         f"{figures['memory'] / 1024:.0f} KB (under 1024)")
    return results


def listing(table, bench):
    """The least of some runs that take turns: other work on the machine only ever adds."""
    results = {}
    for verb, field, counts, title in (("list", "nanoseconds_an_entry", (4096, 16384, 65535), "an entry, in order"),
                                       ("lookup", "nanoseconds_a_lookup", (10, 1000, 60000), "a lookup of a skin's file")):
        runs = ui.rounds({count: [bench, verb, corpora.make_listing(OUT / "corpora", count)] for count in counts}, 9)
        least = results[verb] = {count: min(row[field] for row in rows) for count, rows in runs.items()}
        print(f"\nNanoseconds {title}")
        for count, nanoseconds in least.items():
            print(f"  of {count:6}: {nanoseconds:8.1f}")
    growth = results["list"][65535] / results["list"][4096]
    # Were it quadratic, this would be 16.
    table.target("listing 65,535 entries is linear", growth, 1.5, f"an entry costs {growth:.2f} times what it costs of 4,096")
    growth = results["lookup"][60000] / results["lookup"][10]
    table.target("a lookup costs the same in 10 and 60,000", growth, 1.5, f"{growth:.2f} times")
    return results


def require(programs, wanted):
    missing = [tool for tool in PEERS if "extraction" in wanted and not shutil.which(tool)]
    missing += [name for part in wanted for name in PARTS[part] if not (programs / name).exists()]
    if missing:
        sys.exit(f"bench: missing {', '.join(dict.fromkeys(missing))}; `make bench` builds and installs what it needs")


def executable_size(table, windows):
    bare = windows / "bare/VantaPictorSetup.exe"
    if not bare.exists():
        print(f"\nThe Windows executable is not built ({bare}); `make windows` does.")
        return None
    size = bare.stat().st_size
    print("\nThe Windows executable without payload and skin")
    table.target("executable size", size, 500 * 1024, f"{size / 1024:.0f} KiB (at most 500, with the whole UI library)")
    return size


def answers(table, build):
    """The window during an installation of 800 MB; see responsive.py."""
    done = subprocess.run([sys.executable, pathlib.Path(__file__).with_name("responsive.py"), "--build", build,
                           "--folder", "/dev/shm"], capture_output=True, text=True, check=False)
    if not done.stdout.startswith("{"):
        sys.exit(done.stderr)
    figures = json.loads(done.stdout)
    print(f"\nThe window while {figures['megabytes']} MB are installed ({figures['inputs']} inputs)")
    table.target("the window answers while it installs", figures["p99_ms"], 50,
                 f"99 of 100 inputs within {figures['p99_ms']:.1f} ms (at most 50), the longest {figures['most_ms']:.1f}")
    return figures


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build/host")
    parser.add_argument("--windows", type=pathlib.Path, default=ROOT / "build/windows-i686")
    parser.add_argument("--only", metavar="NAME", action="append", choices=PARTS, help=", ".join(PARTS))
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--strict", action="store_true")
    arguments = parser.parse_args()
    programs = arguments.build.resolve() / "tests/bench"
    wanted = [part for part in PARTS if not arguments.only or part in arguments.only]
    require(programs, wanted)
    table = Table()
    parts = {
        "extraction": lambda: extraction(table, Programs(programs / "extract_bench"), arguments.quick),
        "reader": lambda: listing(table, programs / "extract_bench"),
        "markup": lambda: ui.markup(table, programs, OUT),
        "layout": lambda: ui.layouts(table, programs, OUT),
        "painting": lambda: ui.painting(table, programs, OUT),
        "window": lambda: ui.window(table, programs, OUT),
        "answers": lambda: answers(table, arguments.build),
        "size": lambda: executable_size(table, arguments.windows),
    }
    results = {part: parts[part]() for part in wanted}
    results["targets"] = table.targets
    OUT.mkdir(parents=True, exist_ok=True)
    (OUT / "results.json").write_text(json.dumps(results, indent=2) + "\n")
    missed = [row["what"] for row in table.targets if not row["met"]]
    print(f"\n{len(table.targets) - len(missed)} of {len(table.targets)} targets met; figures in {OUT / 'results.json'}")
    for what in missed:
        print(f"  missed: {what}")
    return 1 if missed and arguments.strict else 0


if __name__ == "__main__":
    sys.exit(main())
