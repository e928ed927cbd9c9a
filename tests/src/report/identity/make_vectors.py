#!/usr/bin/env python3
"""Derives the identifiers of a dozen machines without the product's code: writes machine_vectors.inc beside itself.

A machine is its facts and the hardware strings that follow from them, written by hand below. The hash of identifier 1 is
made here as a list of blocks: RFC 1321's own, then the two that the second finish adds. Its step over one block is
checked against hashlib's MD5 first; SHA-1 is hashlib's; the CRC is a division of polynomials.
"""
import hashlib
import json
import math
import pathlib
import struct

MASK = 0xFFFFFFFF


def step(state, block):
    words = struct.unpack("<16I", block)
    a, b, c, d = state
    for i in range(64):
        if i < 16:
            f, g = (b & c) | (~b & MASK & d), i
        elif i < 32:
            f, g = (d & b) | (~d & MASK & c), (5 * i + 1) % 16
        elif i < 48:
            f, g = b ^ c ^ d, (3 * i + 5) % 16
        else:
            f, g = c ^ (b | (~d & MASK)), (7 * i) % 16
        turn = ((7, 12, 17, 22), (5, 9, 14, 20), (4, 11, 16, 23), (6, 10, 15, 21))[i // 16][i % 4]
        total = (a + f + int(abs(math.sin(i + 1)) * 2**32) + words[g]) & MASK
        a, d, c, b = d, c, b, (b + ((total << turn | total >> (32 - turn)) & MASK)) & MASK
    return tuple((x + y) & MASK for x, y in zip(state, (a, b, c, d)))


def digest(blocks):
    state = (0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476)
    for block in blocks:
        state = step(state, block)
    return struct.pack("<4I", *state).hex()


def padded(message):
    zeros = (55 - len(message)) % 64
    return message + b"\x80" + bytes(zeros)


def blocks_of(stream):
    assert len(stream) % 64 == 0
    return [stream[i:i + 64] for i in range(0, len(stream), 64)]


def md5(message):
    return digest(blocks_of(padded(message) + struct.pack("<Q", 8 * len(message))))


def machine_hash(message):
    filled = padded(message)
    once = blocks_of(filled + struct.pack("<Q", 8 * len(message)))
    again = [once[-1][:56] + b"\x80" + bytes(7), bytes(56) + struct.pack("<Q", 8 * len(filled))]
    return digest(once + again)


def crc8(message):
    """The remainder of the bits, low bit of each byte first, by x^8 + x^5 + x^4 + 1."""
    bits = [byte >> i & 1 for byte in message for i in range(8)] + [0] * 8
    for i in range(len(bits) - 8):
        if bits[i]:
            for power in (8, 5, 4, 0):
                bits[i + 8 - power] ^= 1
    return sum(bit << i for i, bit in enumerate(bits[-8:]))


def m2(address, disk, processor, elevated):
    if not address and not disk:
        return ""  # random
    text = hashlib.sha1((address + disk + processor).encode()).hexdigest()
    if not elevated and not text.startswith("ffffffff"):
        text = "e" * 8 + text[8:]
    text += f"{0x20 | bool(address) | bool(disk) << 1 | bool(processor) << 3:02x}"
    return text + f"{crc8(text.encode()):02x}"


INTEL1 = "GenuineIntel:bfebfbff"
INTEL2 = "GenuineIntel,906ea,Intel(R) Core(TM) i5-8400 CPU @ 2.80GHz"

# name, facts, hardware of m, (address, disk, processor) of m2
MACHINES = [
    ("plain", {}, INTEL1 + "S0VP000000000001" + "025650000001",
     ("025650000001", "S0VP000000000001PLAIN SSD 256GB", INTEL2)),
    # The wireless adapter's address is the lowest of all; m takes it, m2 the lower wired one.
    ("two_wired_one_wireless",
     {"adapters": [{"address": "00:1B:21:AA:00:02"}, {"address": "00:1B:21:0A:00:01"},
                   {"address": "00:13:E8:00:00:01", "kind": "wireless"}],
      "disks": [{"serial": "WD-WCC4N5", "model": "WDC WD10EZEX-08WN4A0"}],
      "cpuid": {"vendor": "AuthenticAMD", "signature": "00870f10", "features": "178bfbff",
                "brand": "AMD Ryzen 5 3600 6-Core Processor"}},
     "AuthenticAMD:178bfbff" + "WD-WCC4N5" + "0013E8000001",
     ("001B210A0001", "WD-WCC4N5WDC WD10EZEX-08WN4A0", "AuthenticAMD,870f10,AMD Ryzen 5 3600 6-Core Processor")),
    ("wireless_only_and_no_disk",
     {"adapters": [{"address": "A4-C3-F0-11-22-33", "kind": "wireless"}], "disks": []},
     INTEL1 + "A4C3F0112233", ("A4C3F0112233", "", INTEL2)),
    ("usb_disk_alone",
     {"disks": [{"bus": "usb", "serial": "4C530001230615110032", "model": "Cruzer Blade"}],
      "adapters": [{"kind": "virtual", "address": "00:FF:01:02:03:04"}]},
     INTEL1 + "4C530001230615110032" + "00FF01020304", ("", "", INTEL2)),
    # An ATAPI device understands 0xA1 only, which m sends it; m2 sends 0xEC and is left with the descriptor.
    ("atapi_drive",
     {"disks": [{"bus": "atapi", "atapi": True, "serial": "KZ8G51A2235", "model": "DVD-RAM GH24", "vendor": "HL-DT-ST",
                 "product": "DVDRAM GH24NSD1"}]},
     INTEL1 + "KZ8G51A2235" + "025650000001",
     ("025650000001", "KZ8G51A2235" + "HL-DT-STDVDRAM GH24NSD1", INTEL2)),
    ("virtual_machine",
     {"disks": [{"bus": "virtual", "serial": "VD0001  ", "model": "Virtual Disk", "vendor": "Msft    "}],
      "adapters": [{"kind": "hyper-v", "address": "00155D010203"}]},
     INTEL1 + "VD0001" + "00155D010203", ("00155D010203", "", INTEL2)),
    ("nothing_at_all", {"disks": [], "adapters": [], "cpuid": None}, "Mid2Failed", ("", "", "")),
    # Windows XP writes an ATA serial number as the hexadecimal digits of its words: m takes them as they are.
    ("xp_without_smart",
     {"version": "xp", "windows_bits": 32,
      "disks": [{"bus": "ata", "smart": False, "serial": "5QE0ABC7", "model": "ST380011A", "vendor": "",
                 "product": " ST380011A "}]},
     INTEL1 + b"Q50EBA7C            ".hex() + "025650000001",
     ("025650000001", "5QE0ABC7ST380011A", INTEL2)),
    # Windows 7 hands it out with every pair exchanged; this odd length leaves the last character where it is.
    ("seven_raid",
     {"version": "7",
      "disks": [{"bus": "raid", "serial": "unused", "descriptor_serial": "BADCE", "vendor": "RAID    ",
                 "model": "unused", "product": "Volume0 "}]},
     INTEL1 + "BADCE" + "025650000001", ("025650000001", "ABCDE" + "RAID    Volume0", INTEL2)),
    # The driver tells no address: m asks NetBIOS, m2 the IP helper, which knows two more.
    ("scsi_port_and_silent_drivers",
     {"disks": [{"bus": "scsi", "smart": False, "serial": "3HY0 ", "model": "SCSI DISK", "descriptor_serial": None,
                 "scsi": {"port": 2, "target": 1}}],
      "adapters": [{"address": "00:50:56:00:00:09", "answers": {"address": "fails"}},
                   {"address": "00:50:56:00:00:07", "device": False, "description": "Some WiFi Thing"},
                   {"address": "00:50:56:00:00:01", "kind": "virtual", "device": False}],
      "netbios": [{"lana": 4, "address": "00:50:56:00:00:08"}, {"lana": 1, "address": "00:50:56:00:00:01"}]},
     INTEL1 + "3HY0" + "005056000008", ("005056000009", "", INTEL2)),
    ("without_elevation",
     {"elevated": False, "disks": [None, {"serial": "S3Z8NB0K", "model": "EVO 860"}]},
     INTEL1 + "S3Z8NB0K" + "025650000001", ("025650000001", "S3Z8NB0KEVO 860", INTEL2)),
    # m keeps blanks at the front. m2 moves the three blanks of the bytes as they came to the end before it swaps:
    # bytes "   A1BC2" become "A1BC2   ", which reads "1ACB 2".
    ("blanks_in_front",
     {"disks": [{"serial": "  A B12C", "model": " MODEL"}],
      "cpuid": {"vendor": "GenuineIotel", "signature": "f4a", "features": "1", "highest_extended": "80000003"}},
     "GenuineIntel:00000001" + "  A B12C" + "025650000001",
     ("025650000001", "1ACB 2" + "MODEL", "GenuineIntel,f4a,")),
]


def row(name, facts, hardware, parts):
    first = machine_hash(hardware.encode()[:259])
    second = m2(*parts, facts.get("elevated", True))
    texts = (json.dumps(name), 'R"(' + json.dumps(facts) + ')"', json.dumps(hardware), json.dumps("".join(parts)),
             json.dumps(first), json.dumps(first + machine_hash(first.encode())), json.dumps(second))
    return "    {" + ",\n     ".join(texts) + "},\n"


def main():
    for length in (0, 1, 55, 56, 57, 63, 64, 65, 119, 120, 259):
        message = bytes(range(256))[:length] if length < 256 else bytes(length)
        assert md5(message) == hashlib.md5(message).hexdigest()
    assert crc8(b"abc") == 0x42 and crc8(b"123456789") == 0xA1
    out = "// Made by make_vectors.py: name, facts, hardware strings of m and m2, m, stored mid, m2 (empty: random).\n"
    out += "".join(row(*machine) for machine in MACHINES)
    (pathlib.Path(__file__).parent / "machine_vectors.inc").write_text(out)
    print("hashes of 0xAB, by length:")
    for length in (0, 1, 32, 55, 56, 57, 63, 64, 65, 119, 120, 128, 259):
        print(f'      {{{length}, "{machine_hash(bytes([0xAB]) * length)}"}},')


if __name__ == "__main__":
    main()
