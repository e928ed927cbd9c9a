"""Reads a shell link (.lnk), independently of the setup's own reader. Format: [MS-SHLLINK]."""
import struct

HAS_ID_LIST, HAS_LINK_INFO, HAS_NAME, HAS_RELATIVE, HAS_DIRECTORY, HAS_ARGUMENTS, HAS_ICON, UNICODE = (
    1 << bit for bit in range(8))


def _id_list_path(data):
    """The path that an item list spells: drive item, then folder and file items with their Unicode names."""
    parts, at = [], 0
    while at + 2 <= len(data):
        size = struct.unpack_from("<H", data, at)[0]
        if size < 3:
            break
        item = data[at:at + size]
        kind = item[2] & 0x70
        if kind == 0x20:
            parts.append(item[3:].split(b"\0")[0].decode("latin-1").rstrip("\\"))
        elif kind == 0x30:
            name = item[14:].split(b"\0")[0].decode("latin-1")
            extension = struct.unpack_from("<H", item, size - 2)[0]
            if 14 < extension < size - 4 and item[extension + 4:extension + 8] == b"\x04\x00\xef\xbe":
                version = struct.unpack_from("<H", item, extension + 2)[0]
                start = extension + {3: 20, 7: 38, 8: 42, 9: 46}.get(version, 20)
                text = item[start:size - 2].decode("utf-16-le", "replace")
                name = text.split("\0")[0] or name
            parts.append(name)
        at += size
    return "\\".join(parts)


def read(data):
    if len(data) < 76 or struct.unpack_from("<I", data)[0] != 76:
        raise ValueError("no shell link")
    flags = struct.unpack_from("<I", data, 20)[0]
    icon_index = struct.unpack_from("<i", data, 56)[0]
    at = 76
    link = {"target": "", "arguments": "", "directory": "", "icon": "", "icon_index": icon_index, "description": ""}
    if flags & HAS_ID_LIST:
        size = struct.unpack_from("<H", data, at)[0]
        link["target"] = _id_list_path(data[at + 2:at + 2 + size])
        at += 2 + size
    if flags & HAS_LINK_INFO:
        size, header, info_flags, _, base = struct.unpack_from("<5I", data, at)
        if info_flags & 1:
            if header >= 0x24:
                start = at + struct.unpack_from("<I", data, at + 28)[0]
                link["target"] = data[start:at + size].decode("utf-16-le", "ignore").split("\0")[0]
            else:
                link["target"] = data[at + base:at + size].split(b"\0")[0].decode("latin-1")
        at += size
    for bit, name in ((HAS_NAME, "description"), (HAS_RELATIVE, None), (HAS_DIRECTORY, "directory"),
                      (HAS_ARGUMENTS, "arguments"), (HAS_ICON, "icon")):
        if not flags & bit:
            continue
        count = struct.unpack_from("<H", data, at)[0]
        size = count * 2 if flags & UNICODE else count
        text = data[at + 2:at + 2 + size].decode("utf-16-le" if flags & UNICODE else "latin-1")
        at += 2 + size
        if name:
            link[name] = text
    return link
