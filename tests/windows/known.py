"""What Wine lacks or does otherwise, each with its reason. The comparison passes over nothing else, and what is listed
here must really be so: an entry that no longer holds fails the test, so that the list stays the truth.

An entry takes what it explains out of the states of one round and answers whether it found it so.
"""
import collections

TRUST_STATE = (r"HKCU\Software\Microsoft\Windows\CurrentVersion\Wintrust\Trust Providers\Software Publishing", "State")
DRIVER_DATE = "DriverDateData"
PROXY_STATE = (r"HKCU\Software\Microsoft\Windows\CurrentVersion\Internet Settings", "ProxyEnable")
TASK_FILE = r"C:\Windows\System32\Tasks\VantaPictorUpdate"
STARTS = r"\VantaPictor\starts.log"
CLASSES = "HKLM\\Software\\Classes\\"

Known = collections.namedtuple("Known", "name reason take")


def _take(entries, wanted):
    taken = [entry for entry in entries if wanted(entry)]
    entries[:] = [entry for entry in entries if not wanted(entry)]
    return taken


def _scheduled_task(it):
    made = it.machine.pop("tasks")
    files = _take(it.machine["files"], lambda file: file["path"] == TASK_FILE)
    refused = "Principal_put_GroupId" in it.wine_trace
    registered = [task["name"] for task in made] == ["VantaPictorUpdate"] and len(files) == 1
    return registered and refused and not it.wine.pop("tasks")


def _link_texts(it):
    texts = [(link, key) for link in it.wine["shortcuts"] for key in ("arguments", "directory", "icon") if link[key]]
    counted = all(link[key].endswith("\0") for link, key in texts)
    for link, key in texts:
        link[key] = link[key][:-1]
    return bool(texts) and counted


def _proxy_state(it):
    return len(_take(it.wine["registry"], lambda value: (value["key"], value["name"]) == PROXY_STATE)) == 1


def _driver_date(it):
    return len(_take(it.wine["registry"], lambda value: value["name"] == DRIVER_DATE)) == 1


def _trust_state(it):
    # Nothing is checked by the first, silent installation: no program is started by it.
    found = _take(it.wine["registry"], lambda value: (value["key"], value["name"]) == TRUST_STATE)
    return len(found) == it.wine_starts


def _windows_programs(it):
    registered = _take(it.wine["registry"], lambda value: value["key"].startswith(CLASSES))
    started = _take(it.wine["files"], lambda file: file["path"].endswith(STARTS))
    no_library = r"regsvr32: cannot load C:\Program Files\VantaPictor\ShellExt64.dll" in it.machine["log"]["debugger"]
    asked = [launch for launch in it.machine["launches"] if launch["file"].endswith(r"\VantaPictor.exe")]
    not_run = [launch["result"] for launch in asked] == [193] * (it.round - 1)
    # What they do is compared with the twin instead.
    it.expect_same("what the shell extension registers", registered,
                   [value for value in it.twin["registry"] if value["key"].startswith(CLASSES)], ("key", "name"))
    it.expect("programs that noted their start", len(started), it.wine_starts)
    return no_library and not_run


KNOWN = [
    Known("scheduled task", "Wine's IPrincipal::put_GroupId answers E_NOTIMPL, and the registration ends with the "
          "first call that fails", _scheduled_task),
    Known("texts of links", "Wine counts the terminator in a link's texts, Windows does not", _link_texts),
    Known("proxy setting", "Wine writes down that no proxy is set when WinINet is first used", _proxy_state),
    Known("driver date", "Wine notes the date of its display driver anew at each start of its desktop", _driver_date),
    Known("trust provider's state", "Wine's trust provider stores its default policy when first asked about a file",
          _trust_state),
    Known("Windows programs", "the product's programs for Windows do not run on the Linux side", _windows_programs),
]

# Checks of tests/seam that fail under Wine.
SEAM_GAPS = {
    "read-only files are protected": "Wine leaves the protection to Linux, whose root may write everything",
    "CREATE_ALWAYS must name the hidden attribute": "Wine does not look at the attributes of the file it replaces",
    "29 February needs a leap year": "Wine's calendar gives February 29 days in every year",
}


# Pictures of the skin's pages. Wine fills shapes without smoothing their edges, and draws no line under a text of GDI+.
# The largest difference between the mean colours of two tiles (compare_pictures.cpp) that this and glyphs half a pixel
# apart make, as measured: 23.
TILES = 30
# The font has no bold face. Bold texts are drawn twice, one pixel apart, on both sides, but Wine then gives every glyph
# one pixel more: the longest one ends a glyph later (79 measured), and what is as wide as its bold text is wider.
BOLD_PAGES = {"message", "update"}
BOLD_TILES = 100
# There the icon stands beside such a text, and moves with it.
MOVED_PAGES = {"update"}


def without_bold_texts(lines):
    """The rectangles of a page without those that a bold text decides on: the row that it is in."""
    rows = {tuple(line.split()[1:4:2]) for line in lines if line.endswith((" lb_desc", " lb_text"))}
    return [line for line in lines if tuple(line.split()[1:4:2]) not in rows]
