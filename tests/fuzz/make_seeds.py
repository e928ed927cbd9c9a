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
    "markup_fuzz": [
        b"<?xml version='1.0' encoding='gb2312'?><!DOCTYPE a [<!b>]><Window size=\"600,400\"><VBox/><!-- c --></Window>",
        b"<a b='x>y' c=d e><b></c></a>&amp;<![CDATA[<]]><p q='&#x41;&nbsp;&lt;'/>",
        b"<html><head><meta http-equiv='Content-Type' content='text/html; charset=big5'>\xa4\xa4",
        b"\xff\xfe<\0a\0/\0>\0", b"\xfe\xff\0<\0a\0/\0>", b"\xef\xbb\xbf<a/>",
    ],
    "globals_fuzz": [
        b"<Font id='system_12' name='system' size='12' bold='1' default='1'/><Color name='c' value='#ff00bb96'/>",
        b"<Theme name='a' x='1' theme='b b'/><Theme name='b' theme='a c' y='2'/><Theme name='c' z='3'/>",
    ],
    "attribute_lists_fuzz": [
        b"normaltextcolor=\"dark\" bkimage=\"file='a.png' corner='1,2,3,4'\"",
        b"file='../public/icon/logo.svg' color='svg_01' dest='0,0,16,16' fade=''",
    ],
    "skin_path_fuzz": [
        b"resources\\themes\\default\\SetupWnd\\../public//icon/./logo.svg",
        b"../a/b/../../../c", b"/a/..", b"C:/x/..\\y/.",
    ],
    # The first "<" is the fuzzer's own.
    "layout_fuzz": [
        b"Window size='600,400' caption='0,0,0,280' sizebox='4,4,4,4' roundcorner='8,8' shadowattached='1'><VBox>"
        b"<HBox height='32' padding='1,2,3,4'><Label name='t' width='auto' text='a b'/><Button name='__close' "
        b"width='32'/></HBox><TabBox name='b' selectedid='1'><VBox name='p'><CheckBox selected='1'/><Option group='g'/>"
        b"<Option group='g'/></VBox><TileBox><Progress value='5' max='9'/></TileBox></TabBox></VBox></Window>",
        b"Window><HBox width='auto' height='auto'><Label width='auto' height='auto' maxwidth='80' singleline='0' "
        b"text='one two three'/><Control float='1' margin='1,2' halign='center' minwidth='3' visible='0'/>"
        b"<ButtonBox tooltip='x' font='f' theme='t'><Event type='all' receiver='r' applyattribute='a'/>"
        b"</ButtonBox></HBox></Window>",
    ],
    "image_attribute_fuzz": [
        b"./bk_bg.png",
        b"file='a.svg' dest='0,0,16,16' source='1,2,3,4' corner='5,5,5,5' fade='128' xtiled='1' ytiled='1' "
        b"playcount='-1' interval='40' framecount='3' angle='30' color='svg_01' scale='1.6'",
    ],
    "svg_fuzz": [
        b"\0<svg width='16' height='16' viewBox='0 0 32 32'><g transform='rotate(10 4 4)' style='stroke:#fff'>"
        b"<path d='M1 1C2 3 4 5 6 7A3 4 5 0 1 8 9z' fill='url(#g)' stroke-dasharray='2 1'/></g></svg>",
        b"\5<svg width='9' height='9'><defs><linearGradient id='g' x2='1'><stop offset='0' stop-color='#f80'/>"
        b"<stop offset='1' stop-opacity='.5'/></linearGradient><radialGradient id='r' xlink:href='#g'/></defs>"
        b"<rect width='9' height='4' rx='1' fill='url(#g)'/><circle cx='4' cy='6' r='2' fill='url(#r)' stroke='red' "
        b"stroke-linejoin='round'/><polygon points='1,1 2,2 3,1' stroke-width='2' stroke='#123'/></svg>",
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
