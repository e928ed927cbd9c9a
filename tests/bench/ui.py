"""The rows of the user interface: markup, layouts, painting, windows."""
import json
import os
import statistics
import subprocess

import corpora
from corpora import KB, MB

# Qt warns when it has no run-time folder, and would look for a display.
ENVIRONMENT = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "XDG_RUNTIME_DIR": os.environ.get("XDG_RUNTIME_DIR", "/tmp")}


def run(*command):
    done = subprocess.run([str(part) for part in command], check=True, capture_output=True, text=True, env=ENVIRONMENT)
    return json.loads(done.stdout)


def rounds(commands, count):
    """What each program says, `count` times, the programs taking turns: {name: [figures…]}."""
    figures = {name: [] for name in commands}
    for _ in range(count):
        for name, command in commands.items():
            figures[name].append(run(*command))
    return figures


def ratio(ours, peers, field, peer_field=None):
    """The median of what the rounds say, each of which ran both."""
    return statistics.median(a[field] / b[peer_field or field] for a, b in zip(ours, peers))


def middle(figures):
    return {field: statistics.median(row[field] for row in figures) for field in figures[0]}


def markup(table, programs, out):
    """Loading and walking layouts, beside pugixml in one process; each figure is the median of its turns."""
    results = {}
    print("\nThe markup reader beside pugixml")
    for size, title in ((12 * KB, "a 12 KB layout"), (10 * MB, "a 10 MB document")):
        path = corpora.make_layout(out / "corpora", size)
        runs = rounds({"both": [programs / "markup_bench", path]}, 5)["both"]
        figures = results[title] = middle(runs)
        load = figures["load_to_peer"] = ratio(runs, runs, "load_ms", "peer_load_ms")
        walk = figures["walk_to_peer"] = ratio(runs, runs, "walk_ms", "peer_walk_ms")
        print(f"  {title}: load {figures['load_ms']:.4f} ms (peer {figures['peer_load_ms']:.4f}), "
              f"walk {figures['walk_ms']:.4f} ms (peer {figures['peer_walk_ms']:.4f})")
        table.target(f"loading {title}", load, 1, f"{load:.2f} of pugixml's time (at most 1)")
        table.target(f"walking {title}", walk, 2, f"{walk:.2f} of pugixml's time (at most 2)")
    return results


def layouts(table, programs, out):
    """A tree of 10,500 nodes, beside Qt's box layouts on the same tree."""
    results = {}
    print("\nLayouts of 10,500 nodes in six levels, beside Qt's box layouts (milliseconds)")
    for verb, title, limit in (("measured", "measuring and arranging all", 0.5), ("leaf", "one leaf changed", 0.1)):
        runs = rounds({"ours": [programs / "layout_bench", verb], "qt": [programs / "layout_peer", verb]}, 7)
        ours, qt = (middle(runs[name])["milliseconds"] for name in ("ours", "qt"))
        share = ratio(runs["ours"], runs["qt"], "milliseconds")
        results[title] = {"ours_ms": ours, "qt_ms": qt, "to_qt": share}
        print(f"  {title}: {ours:.4f} (Qt {qt:.4f})")
        table.target(title, share, limit, f"{share:.3f} of Qt's time (at most {limit})")
    return results


def painting(table, programs, out):
    """The scene of the setup window's size and contents, beside Qt's raster painter."""
    pictures = out / "pictures"
    pictures.mkdir(parents=True, exist_ok=True)
    subprocess.run([programs / "paint_bench", "pictures", pictures], check=True)
    runs = rounds({"ours": [programs / "paint_bench"], "qt": [programs / "paint_peer", pictures]}, 7)
    figures = {name: middle(rows) for name, rows in runs.items()}
    full = ratio(runs["ours"], runs["qt"], "full_us")
    step = ratio(runs["ours"], runs["ours"], "step_us", "full_us")
    print("\nPainting a scene of 600 × 400, beside Qt's raster painter (microseconds)")
    for name, row in figures.items():
        print(f"  {name:5} whole {row['full_us']:7.1f}   progress step {row['step_us']:6.1f}")
    table.target("painting the scene", full, 1, f"{full:.2f} of Qt's time (at most 1)")
    table.target("a progress step in the scene", step, 0.1, f"{step:.3f} of a whole paint (under 0.1)")
    return {**figures, "to_qt": full, "step_to_whole": step}


def window(table, programs, out):
    """The setup's own window, from the skin that the build packs."""
    bench, skin = programs / "window_bench", programs.parent.parent / "skin"
    paint = rounds({"paint": [bench, "paint", skin]}, 5)["paint"]
    first = middle(rounds({"first": [bench, "first", skin]}, 7)["first"])
    left = run(bench, "leaks", skin)
    step = ratio(paint, paint, "step_us", "full_us")
    figures = middle(paint)
    print("\nThe setup window, off-screen")
    print(f"  whole repaint {figures['full_us']:.1f} µs, progress step {figures['step_us']:.1f} µs")
    print(f"  from creation to the end of the first paint: {first['later_ms']:.2f} ms, "
          f"{first['first_ms']:.2f} ms for the first window of a process")
    table.target("a progress step of the window", step, 0.1, f"{step:.3f} of a whole repaint (under 0.1)")
    table.target("a window's first paint", first["later_ms"], 15, f"{first['later_ms']:.2f} ms (under 15)")
    table.target("the process's first paint, fonts and libraries with it", first["first_ms"], 15,
                 f"{first['first_ms']:.2f} ms (under 15)")
    # The heap's own bookkeeping and full-grown tables: no more than 64 bytes a window.
    table.target("heap after a thousand windows", left["heap_bytes"], 64 * 1000, f"{left['heap_bytes'] / 1000:.1f} KB more")
    kept = {name: count for name, count in left.items() if name != "heap_bytes" and count}
    table.target("descriptors, graphics objects, fonts and pictures after a thousand windows", len(kept), 0,
                 ", ".join(f"{count} more {name}" for name, count in kept.items()) or "as before")
    return {"paint": figures, "step_to_whole": step, "first": first, "left_by_1000": left}
