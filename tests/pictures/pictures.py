#!/usr/bin/env python3
"""Draws every page of the skin and lays it beside the picture of it in references/.

    tests/pictures/pictures.py --build build/host-asan --scale 150
    tests/pictures/pictures.py --build build/host --scale 150 --accept     takes what is drawn as the new reference

Flat colours may differ by 2, and the mean colours of two tiles of 25 x 25 pixels by 3 a channel: a radius, a colour, a
text or a part of a nine-grid that is wrong moves a tile by more, another version of the font library by less. Look at
every picture before it is accepted.
"""
import argparse
import json
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import zlib

HERE = pathlib.Path(__file__).resolve().parent
FLAT, TILE = 2, 3
HEADER = 54


def write_png(bitmap, path):
    """A picture of draw_pages as PNG."""
    data = bitmap.read_bytes()
    width, height = struct.unpack("<ii", data[18:26])
    rows = bytearray()
    for y in range(-height):
        line = data[HEADER + y * width * 4:HEADER + (y + 1) * width * 4]
        pixels = bytearray(width * 3)
        pixels[0::3], pixels[1::3], pixels[2::3] = line[2::4], line[1::4], line[0::4]
        # Each byte less the one of the pixel before: what is flat or runs evenly packs well.
        rows += b"\1" + bytes((a - b) & 255 for a, b in zip(pixels, b"\0\0\0" + pixels))

    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, -height, 8, 2, 0, 0, 0)) +
                     chunk(b"IDAT", zlib.compress(bytes(rows), 9)) + chunk(b"IEND", b""))


def write_bitmap(png, path):
    """A PNG of write_png as draw_pages writes pictures."""
    data, at, packed = png.read_bytes(), 8, b""
    while at < len(data):
        size, kind = struct.unpack(">I4s", data[at:at + 8])
        body = data[at + 8:at + 8 + size]
        if kind == b"IHDR":
            width, height = struct.unpack(">II", body[:8])
        elif kind == b"IDAT":
            packed += body
        at += 12 + size
    raw, out = zlib.decompress(packed), bytearray()
    for y in range(height):
        line = bytearray(raw[y * (width * 3 + 1) + 1:(y + 1) * (width * 3 + 1)])
        for i in range(3, len(line)):
            line[i] = (line[i] + line[i - 3]) & 255
        pixels = bytearray(width * 4)
        pixels[0::4], pixels[1::4], pixels[2::4] = line[2::3], line[1::3], line[0::3]
        out += pixels
    header = struct.pack("<2sIII", b"BM", HEADER + len(out), 0, HEADER)
    header += struct.pack("<IiiHHIIiiII", 40, width, -height, 1, 32, 0, 0, 0, 0, 0, 0)
    path.write_bytes(header + out)


def draw(build, scale, scratch):
    """The folder with the pages as this build draws them."""
    machine, disk = scratch / "machine", scratch / "machine" / "C"
    (scratch / "facts.json").write_text(json.dumps({"dpi": scale * 96 // 100}))
    subprocess.run([build / "vantakit", "machine", "new", scratch / "facts.json", machine], check=True,
                   stdout=subprocess.DEVNULL)
    (disk / "pages").mkdir(parents=True)
    shutil.make_archive(str(disk / "skin"), "zip", build / "skin")
    shutil.copy(build / "tests/windows/draw_pages.exe", disk)
    subprocess.run([disk / "draw_pages.exe", r"C:\skin.zip", r"C:\pages"], check=True,
                   env={**os.environ, "VANTA_MACHINE": str(machine)}, stdout=subprocess.DEVNULL)
    return disk / "pages"


def differences(build, reference, page, scratch):
    if not reference.exists():
        return "no reference"
    bitmap = scratch / "reference.bmp"
    write_bitmap(reference, bitmap)
    seen = json.loads(subprocess.run([build / "tests/windows/compare_pictures", bitmap, page], check=True,
                                     capture_output=True, text=True).stdout)
    if seen["size"] and seen["flat_difference"] <= FLAT and seen["tile_difference"] <= TILE:
        return None
    return json.dumps(seen)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--scale", type=int, required=True)
    parser.add_argument("--accept", action="store_true")
    options = parser.parse_args()
    references = HERE / "references" / str(options.scale)
    failed = 0
    with tempfile.TemporaryDirectory(prefix="vanta-pictures-") as scratch:
        scratch = pathlib.Path(scratch)
        pages = sorted(draw(options.build.resolve(), options.scale, scratch).glob("*.bmp"))
        if len(pages) < 10:
            sys.exit(f"only {len(pages)} pages were drawn")
        for page in pages:
            reference = references / f"{page.stem}.png"
            if options.accept:
                references.mkdir(parents=True, exist_ok=True)
                write_png(page, reference)
                continue
            found = differences(options.build.resolve(), reference, page, scratch)
            failed += bool(found)
            print(f"{'FAILED' if found else 'ok    '} {page.stem}{': ' + found if found else ''}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
