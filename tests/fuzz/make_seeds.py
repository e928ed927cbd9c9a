#!/usr/bin/env python3
"""Writes small first inputs for every fuzzer: make_seeds.py CORPORA puts them into CORPORA/<fuzzer>/seed-*."""
import io
import pathlib
import struct
import sys
import zipfile
import zlib


def archive(entries, comment=b"", method=zipfile.ZIP_DEFLATED):
    memory = io.BytesIO()
    with zipfile.ZipFile(memory, "w", method) as made:
        for name, content, external, host in entries:
            info = zipfile.ZipInfo(name, (2024, 2, 29, 12, 30, 58))
            info.compress_type = method
            info.create_system = host
            info.external_attr = external
            info.extra = b"UT" + struct.pack("<HBII", 9, 3, 1700000000, 1700000001)
            made.writestr(info, content)
        made.comment = comment
    return memory.getvalue()


def encrypt(content, password, check):
    table = [zlib.crc32(bytes([i]), 0xFFFFFFFF) ^ 0xFFFFFFFF for i in range(256)]
    step = lambda crc, byte: table[(crc ^ byte) & 0xFF] ^ (crc >> 8)
    keys = [0x12345678, 0x23456789, 0x34567890]

    def update(byte):
        keys[0] = step(keys[0], byte)
        keys[1] = ((keys[1] + (keys[0] & 0xFF)) * 134775813 + 1) & 0xFFFFFFFF
        keys[2] = step(keys[2], keys[1] >> 24)

    for byte in password:
        update(byte)
    out = bytearray()
    for byte in bytes(11) + bytes([check]) + content:
        odd = (keys[2] & 0xFFFF) | 2
        out.append(byte ^ (odd * (odd ^ 1) >> 8 & 0xFF))
        update(byte)
    return bytes(out)


def encrypted_archive():
    content = b"what is kept secret"
    crc = zlib.crc32(content)
    data = encrypt(content, b"secret", crc >> 24)
    common = struct.pack("<HHHHIIIHH", 1, 0, 0x6000, 0x5821, crc, len(data), len(content), 5, 0)
    local = b"PK\3\4" + struct.pack("<H", 20) + common + b"a.txt" + data
    central = b"PK\1\2" + struct.pack("<HH", 20, 20) + common + struct.pack("<HHHII", 0, 0, 0, 32, 0) + b"a.txt"
    return local + central + b"PK\5\6" + struct.pack("<HHHHIIH", 0, 0, 1, 1, len(central), len(local), 0)


TEXT = b"the quick brown fox " * 20
SEEDS = {
    "zip_fuzz": [
        archive([]),
        archive([("a.txt", TEXT, 0x20, 0), ("d/", b"", 0x10, 0)]),
        archive([("a.txt", TEXT, 0o100644 << 16, 3), ("../x", b"", 0, 3)], b"a comment", zipfile.ZIP_STORED),
        b"MZ in front" + archive([("C:\\a\\..\\nul.txt", TEXT, 0x27, 11)]),
        archive([("zeros", bytes(70000), 0, 7)]),
        encrypted_archive(),
    ],
    "options_fuzz": [
        b"setup.exe --silent --from=demo --src=UPGRADE",
        b'"C:\\a b\\setup.exe" -show --fro=x --s -- --auto',
        b"setup word --assoc=1 --notifyhwnd=\"12 34\" --instse --unknown=1",
    ],
    "string_table_fuzz": [
        b"; comment = x\r\nKEY = value\\nnext\n\nA=\nB= \nC=1=2\nKEY=later",
        "\ufeffSTRID_PICTOR_INSTING = \u6b63\u5728\u4e3a\u60a8\u5b89\u88c5  %d%%\r\n".encode(),
    ],
    "skin_path_fuzz": [
        b"resources\\themes\\default\\SetupWnd\\../public//icon/./logo.svg",
        b"../a/b/../../../c", b"/a/..", b"C:/x/..\\y/.",
    ],
}


def main():
    for fuzzer, inputs in SEEDS.items():
        folder = pathlib.Path(sys.argv[1]) / fuzzer
        folder.mkdir(parents=True, exist_ok=True)
        for number, seed in enumerate(inputs):
            (folder / f"seed-{number}").write_bytes(seed)


if __name__ == "__main__":
    main()
