#!/usr/bin/env python3
"""Writes the sample product's colour profiles: small ICC version 2 profiles, the same bytes every time.

usage: make_profiles.py FOLDER
"""
import struct
import sys
from pathlib import Path

D50 = (0.9642, 1.0, 0.8249)
# Primaries adapted to D50, as (X, Y, Z) of red, green and blue, and the display's gamma.
PROFILES = {
    "sRGB": (((0.4361, 0.2225, 0.0139), (0.3851, 0.7169, 0.0971), (0.1431, 0.0606, 0.7141)), 2.2),
    "DisplayP3": (((0.5151, 0.2412, -0.0011), (0.2920, 0.6922, 0.0419), (0.1571, 0.0666, 0.7841)), 2.2),
    "Gray22": (None, 2.2),
}


def fixed(value):
    return struct.pack(">i", round(value * 65536))


def xyz(values):
    return b"XYZ \0\0\0\0" + b"".join(fixed(v) for v in values)


def curve(gamma):
    return b"curv\0\0\0\0" + struct.pack(">IH", 1, round(gamma * 256))


def description(name):
    text = name.encode() + b"\0"
    return b"desc\0\0\0\0" + struct.pack(">I", len(text)) + text + b"\0" * (4 + 4 + 2 + 1 + 67)


def profile(name, primaries, gamma):
    tags = [(b"desc", description(name)), (b"cprt", b"text\0\0\0\0No copyright\0"), (b"wtpt", xyz(D50))]
    if primaries:
        tags += [(b"rXYZ", xyz(primaries[0])), (b"gXYZ", xyz(primaries[1])), (b"bXYZ", xyz(primaries[2]))]
        tags += [(tag, curve(gamma)) for tag in (b"rTRC", b"gTRC", b"bTRC")]
    else:
        tags.append((b"kTRC", curve(gamma)))
    table, data = struct.pack(">I", len(tags)), b""
    start = 128 + 4 + 12 * len(tags)
    for tag, body in tags:
        table += tag + struct.pack(">II", start + len(data), len(body))
        data += body + b"\0" * (-len(body) % 4)
    space = b"RGB " if primaries else b"GRAY"
    head = struct.pack(">I4sI4s4s4s6H4s", start + len(data), b"\0" * 4, 0x02100000, b"mntr", space, b"XYZ ",
                       2024, 1, 1, 0, 0, 0, b"acsp")
    head = head.ljust(68, b"\0") + b"".join(fixed(v) for v in D50)
    return head.ljust(128, b"\0") + table + data


def main():
    folder = Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name, (primaries, gamma) in PROFILES.items():
        (folder / f"{name}.icc").write_bytes(profile(name, primaries, gamma))


if __name__ == "__main__":
    main()
