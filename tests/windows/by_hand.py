"""Installs under Wine as a person does: by_hand.py SETUP RECTS CODE WORDS…

  SETUP   the setup's path as Wine's programs see it
  RECTS   what `vantakit preview SetupWnd.xml --page vb_inst --rects` says
  CODE    file that gets the setup's exit code

Real pointer and key events by xdotool, on a display without a window manager: install is refused until the agreement is
accepted, the folder is picked in the system's dialog, the default program is left as it is. Every step waits for what
it brings about; one that never comes is an error.
"""
import json
import pathlib
import struct
import subprocess
import sys
import time

TITLE = "VantaView"
PICKER = "选择文件夹"
PATIENCE = 60  # seconds until a step counts as failed


def xdotool(*words):
    return subprocess.run(["xdotool", *words], capture_output=True, text=True, check=False).stdout.split()


def until(what, ask):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        answer = ask()
        if answer:
            return answer
        time.sleep(0.05)
    sys.exit(f"by hand: {what} never came")


def shown(title):
    return xdotool("search", "--onlyvisible", "--name", f"^{title}$")


def pixel(x, y):
    """(red, green, blue) of the screen."""
    dump = subprocess.run(["xwd", "-root", "-silent"], capture_output=True, check=True).stdout
    size, *fields = struct.unpack(">25I", dump[:100])
    line, colours = fields[11], fields[18]
    bytes_each = fields[10] // 8
    at = size + colours * 12 + y * line + x * bytes_each
    blue, green, red = dump[at:at + 3]
    return red, green, blue


class Window:
    def __init__(self, identifier, rects):
        self.identifier = identifier
        place = dict(word.split("=") for word in xdotool("getwindowgeometry", "--shell", identifier) if "=" in word)
        self.left, self.top = int(place["X"]), int(place["Y"])
        self.rects = {control["name"]: control["rect"] for control in rects["controls"] if control["name"]}

    def point(self, name, across=0.5):
        left, top, right, bottom = self.rects[name]
        return self.left + left + int((right - left) * across), self.top + (top + bottom) // 2

    def move(self, name, across=0.5):
        x, y = self.point(name, across)
        xdotool("mousemove", str(x), str(y))

    def click(self, name, across=0.5):
        self.move(name, across)
        xdotool("click", "1")

    def colour(self, name, across=0.5):
        return pixel(*self.point(name, across))


def is_green(colour):
    red, green, blue = colour
    return green > red + 40 and green >= blue


def main():
    setup, rects, code, *words = sys.argv[1:]
    program = subprocess.Popen(["wine", setup, *words])
    window = Window(until("the window", lambda: shown(TITLE))[-1], json.loads(pathlib.Path(rects).read_text()))
    until("the install button", lambda: is_green(window.colour("btn_inst", 0.15)))

    before = window.colour("lb_tips", 0.5)
    window.click("btn_inst")
    until("the tip", lambda: window.colour("lb_tips", 0.5) != before)
    until("the end of the tip", lambda: window.colour("lb_tips", 0.5) == before)

    window.click("cb_agree", 0.15)
    until("the mark of the agreement", lambda: is_green(window.colour("cb_agree", 0.05)))
    window.click("cb_default", 0.07)
    window.move("btn_inst")
    until("the default program's empty box", lambda: not is_green(window.colour("cb_default", 0.02)))

    window.click("btn_browse")
    picker = until("the folder picker", lambda: shown(PICKER))[-1]
    xdotool("windowfocus", "--sync", picker)
    xdotool("type", r"C:\Program Files")
    xdotool("key", "Return")
    until("the picker's end", lambda: not shown(PICKER))

    window.click("btn_inst")
    # The page with the bar has no green button where the first page has one.
    until("the installation's start", lambda: program.poll() is not None or
          not is_green(window.colour("btn_inst", 0.15)))
    end = program.wait(timeout=PATIENCE)
    pathlib.Path(code).write_text(f"{end}\n")


if __name__ == "__main__":
    main()
