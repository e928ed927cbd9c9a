#!/usr/bin/env python3
"""Uses a live preview of one layout with a real pointer and real keys, on a display of its own.

    live.py --vantakit PROGRAM --skin FOLDER [--page NAME] LAYOUT BUTTON

BUTTON is a button of the layout that has not got the focus at first. What the program tells is held against what the
display shows: neither is believed alone.
"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile

from display import OUTSIDE, PATIENCE, Display, Failed, missing_tools, until
from preview import Preview

THEME = "resources/themes/default"
WHITE, DARK = b"\xff\xff\xff", b"\x60\x40\x20"


def differs(pixels, *others):
    return pixels if pixels not in others else None


def alike(picture, other):
    """The same but for what a tool or a blinking cursor may cover."""
    return len(picture) == len(other) and sum(a != b for a, b in zip(picture, other)) < len(picture) // 50


def mostly(picture, color):
    """The picture, when an eighth of it is of this colour: blue, green, red."""
    count = sum(picture[at:at + 3] == color for at in range(0, len(picture), 4))
    return picture if count * 32 > len(picture) else None


def hover_and_press(preview, button):
    display = preview.display
    plain = preview.pixels_of(button)
    display.move(*preview.middle_of(button))
    preview.expect("mouseenter", control=button)
    hot = until("the button looks hot", lambda: differs(preview.pixels_of(button), plain))
    display.press()
    preview.expect("buttondown", control=button)
    pressed = until("the button looks pressed", lambda: differs(preview.pixels_of(button), plain, hot))
    display.release()
    preview.expect("buttonup", without="click", control=button)
    preview.expect("click", control=button)
    until("the button looks hot again", lambda: preview.pixels_of(button) == hot)
    # The second half of a double click, if the machine is quick: a press like any other, of which no handler hears.
    display.press()
    until("the button looks pressed again", lambda: preview.pixels_of(button) == pressed)
    display.move(*OUTSIDE)
    display.release()
    preview.expect("buttonup", control=button)
    until("the button looks as before", lambda: preview.pixels_of(button) == plain)
    display.move(*preview.middle_of(button))
    preview.expect("mouseenter", without="click", control=button)
    display.move(*OUTSIDE)
    preview.expect("mouseleave", control=button)


def tab_to(preview, button, key="Tab"):
    for _ in preview.tab_stops():
        preview.display.key(key)
        if preview.expect("setfocus")["control"] == button:
            return
    raise Failed(f"{key} does not reach {button}")


def focus_and_keys(preview, button):
    """Tab goes round; Space and Return click what has the focus. The display's focus follows the pointer."""
    preview.display.move(*preview.caption())
    preview.expect("activated")
    plain = preview.pixels_of(button)
    tab_to(preview, button)
    focused = until("the focus is seen", lambda: differs(preview.pixels_of(button), plain))
    for key in ("space", "Return"):
        preview.display.key(key)
        preview.expect("keydown", without="click", control=button)
        preview.expect("click", control=button)
    if len(preview.tab_stops()) == 1:
        return
    preview.display.key("Tab")
    preview.expect("setfocus", without="click")
    until("the focus has left the button", lambda: preview.pixels_of(button) == plain)
    preview.display.key("shift+Tab")
    preview.expect("setfocus", control=button)
    until("the focus is back", lambda: preview.pixels_of(button) == focused)


def drag(preview, _):
    display = preview.display
    left, top, right, bottom = preview.place
    picture = preview.pixels_of_window()
    x, y = preview.caption()
    display.move(x, y)
    display.press()
    for dx, dy in ((10, 5), (60, 40), (120, 70)):
        display.move(x + dx, y + dy)
    display.release()
    goal = [left + 120, top + 70, right + 120, bottom + 70]
    preview.expect("dragged", rect=goal)
    preview.place = goal
    until("the display has moved the window", preview.lies_in_place)
    display.move(*OUTSIDE)
    until("the picture has moved along", lambda: alike(preview.pixels_of_window(), picture))


def minimise_and_restore(preview, _):
    """Again and again: an event that is taken off the connection at the wrong moment must not be lost."""
    for _ in range(8):
        minimise_and_restore_once(preview)


def minimise_and_restore_once(preview):
    """By its own button, or, without one, by the window manager."""
    display = preview.display
    picture = preview.pixels_of_window()
    if any(each["name"] == "__min" for each in preview.controls):
        preview.click("__min")
    else:
        display.xdotool("windowminimize", preview.window)
    preview.expect("minimised")
    until("the window is an icon", lambda: display.is_iconic(preview.window))
    until("nothing of it is seen", lambda: not alike(preview.pixels_of_window(), picture))
    display.move(*OUTSIDE)
    display.xdotool("windowmap", preview.window)
    preview.expect("restored")
    until("the window is no icon", lambda: not display.is_iconic(preview.window))
    until("the window is where it was", preview.lies_in_place)
    until("it shows its picture again", lambda: alike(preview.pixels_of_window(), picture))


def change_the_skin(preview, _):
    """The window follows the files; a skin that does not load leaves it as it is."""
    colors = os.path.join(preview.skin, THEME, "global.xml")
    folder = os.path.splitext(preview.layout)[0]
    layout = os.path.join(preview.skin, THEME, folder, preview.layout)
    with changed(colors, 'name="window_bk" value="#ffffffff"', 'name="window_bk" value="#ff204060"'):
        preview.open()
        dark = until("the new colour is on the display", lambda: mostly(preview.pixels_of_window(), DARK))
        with changed(layout, "</VBox>", ""):
            preview.expect("failed")
            until("the picture stays", lambda: alike(preview.pixels_of_window(), dark))
        preview.open()
    preview.open()
    until("the old colour is back", lambda: mostly(preview.pixels_of_window(), WHITE))


class changed:
    """A file with one piece replaced, written at once as editors do; as it was on leaving the context."""

    def __init__(self, name, piece, replacement):
        self.name = name
        with open(name) as file:
            self.text = file.read()
        if piece not in self.text:
            raise Failed(f"{name} does not hold {piece}")
        self.other = self.text.replace(piece, replacement, 1)

    def __enter__(self):
        self.write(self.other)

    def __exit__(self, *_):
        self.write(self.text)

    def write(self, text):
        with open(self.name + ".new", "w") as file:
            file.write(text)
        os.replace(self.name + ".new", self.name)


def close(preview, _):
    preview.click("__close")
    status = preview.process.wait(timeout=PATIENCE)
    if status != 0:
        raise Failed(f"the process ended with {status}")


STEPS = (hover_and_press, focus_and_keys, drag, minimise_and_restore, change_the_skin, close)


def run(arguments, skin):
    options = ["--page", arguments.page] if arguments.page else []
    with Display() as display, Preview(arguments.vantakit, skin, arguments.layout, display, *options) as preview:
        preview.open()
        for step in STEPS:
            print(f"{arguments.layout}: {step.__name__.replace('_', ' ')}", flush=True)
            step(preview, arguments.button)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--vantakit", required=True)
    parser.add_argument("--skin", required=True)
    parser.add_argument("--page")
    parser.add_argument("layout")
    parser.add_argument("button")
    arguments = parser.parse_args()
    if missing := missing_tools():
        sys.exit(f"live.py: {', '.join(missing)} missing: tools/deps.sh test")
    folder = tempfile.mkdtemp(prefix="vanta-live-")
    skin = os.path.join(folder, "skin")
    try:
        subprocess.run([os.path.join(arguments.skin, "make_skin.sh"), skin], check=True)
        run(arguments, skin)
    except Failed as failure:
        sys.exit(f"live.py: {failure}")
    finally:
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    main()
