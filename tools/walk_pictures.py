#!/usr/bin/env python3
"""Plays the walks of walks.json off-screen and leaves a picture of every step that takes one:
OUT/SCALE/NN walk, name.png. With --film, the walk as a strip of pictures.

    walk_pictures.py --build build/host --out build/walk [--scale 100 150] [--film docs/walk.png]
"""
import argparse
import json
import pathlib
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
# A clock that stands would end a tip before its picture; `pass` moves this one on.
CLOCK = {"at": "2024-03-05T14:07:09", "speed": 1}


def machine(arguments, walk, scale, folder):
    facts = {"clock": CLOCK, "dpi": scale * 96 // 100, "launches_wait": True, **walk.get("facts", {})}
    file = folder.with_suffix(".json")
    file.write_text(json.dumps(facts))
    run([arguments.build / "vantakit", "machine", "new", file, folder])
    for name in walk.get("folders", []):
        (folder / name).mkdir(parents=True, exist_ok=True)


def run(words, **more):
    done = subprocess.run([str(word) for word in words], capture_output=True, text=True, check=False, **more)
    if done.returncode != 0:
        raise SystemExit(f"{' '.join(map(str, words))}\n{done.stdout[-2000:]}{done.stderr}")
    return done.stdout


def play(arguments, walk, scale, pictures):
    """The pictures' paths are entered under (walk, name)."""
    with tempfile.TemporaryDirectory(prefix="vanta-walk-") as scratch:
        folder = pathlib.Path(scratch) / "machine"
        machine(arguments, walk, scale, folder)
        script = []
        for step in walk["steps"]:
            if "shot" in step:
                key = (walk["name"], step["shot"])
                number = len([each for each in pictures if each[2] == scale]) + 1
                path = arguments.out / str(scale) / f"{number:02} {', '.join(key)}.png"
                pictures[(*key, scale)] = path
                step = {"shot": str(path.resolve())}
            script.append(json.dumps(step))
        run([arguments.build / "vantakit", "walk", "-", "--machine", folder, "--", "--from=demo"],
            input="\n".join(script) + "\n")


def film(pictures, scenes, target):
    target.parent.mkdir(parents=True, exist_ok=True)
    files = [str(pictures[(*scene, 100)]) for scene in scenes]
    run(["montage", *files, "-resize", "444x336>", "-gravity", "center", "-background", "#e4e8ed", "-geometry",
         "444x336+3+3", "-tile", "4x", "-depth", "8", "-define", "png:compression-level=9", f"PNG24:{target}"])


def main():
    parser = argparse.ArgumentParser(description="Pictures of the setup's windows, taken on walks through them.")
    parser.add_argument("--build", type=pathlib.Path, default=pathlib.Path("build/host"))
    parser.add_argument("--out", type=pathlib.Path, default=pathlib.Path("build/walk"))
    parser.add_argument("--scale", type=int, nargs="*", default=[100])
    parser.add_argument("--film", type=pathlib.Path)
    arguments = parser.parse_args()
    told = json.loads((HERE / "walks.json").read_text())
    pictures = {}
    for scale in arguments.scale:
        shutil.rmtree(arguments.out / str(scale), ignore_errors=True)
        (arguments.out / str(scale)).mkdir(parents=True)
        for walk in told["walks"]:
            play(arguments, walk, scale, pictures)
    for path in pictures.values():
        print(path)
    if arguments.film:
        film(pictures, told["film"], arguments.film)
        print(arguments.film)
    return 0


if __name__ == "__main__":
    sys.exit(main())
