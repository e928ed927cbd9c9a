"""Steps that a hand does: the setup's window on an X display of its own, with real pointer and key events.

    {"by_hand": ["click cb_agree", "pick C:\\\\Program Files", "click btn_inst"], "words": "--from=demo", "exit": 0}

"click NAME" is a click into the middle of a control of the first page, "pick PATH" answers the folder picker that a click
has opened, "key NAME" presses a key (xdotool's names). What comes of them in the window is for walks to say (walks.py);
here the installation that they lead to counts.
"""

import json
import os
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "live"))
from display import Display, until

TITLE, PICKER = "VantaView", "选择文件夹"
TIMEOUT = 120  # real seconds


def by_hand(run, step):
    path = run.put_setup(step, "setup")
    words = run.fill(step.get("words", "--from=demo")).split()
    with Display() as display:
        environment = {**run.machine.environment(), "DISPLAY": display.environment["DISPLAY"], "VANTA_DISPLAY": "x11",
                       "VANTA_IMAGE": path, "VANTA_COMMAND_LINE": " ".join([path, *words])}
        setup = subprocess.Popen([run.machine.linux_path(path), *words], env=environment, cwd=run.machine.scratch,
                                 stderr=subprocess.PIPE, text=True)
        window = Hand(run, display, setup)
        for each in step["by_hand"]:
            word, rest = each.split(" ", 1)
            getattr(window, word)(run.fill(rest))
        _, errors = setup.communicate(timeout=TIMEOUT)
    run.machine.stderr += errors.splitlines()
    if setup.returncode != step.get("exit", 0):
        run.machine.stderr.append(f"by hand: ended with {setup.returncode}")


class Hand:
    def __init__(self, run, display, setup):
        self.display, self.setup = display, setup
        said = subprocess.run([run.build.vantakit, "preview", "SetupWnd.xml", "--page", "vb_inst", "--rects"], text=True,
                              capture_output=True, check=True, env={**os.environ, "LSAN_OPTIONS": "print_suppressions=0"})
        self.rects = {each["name"]: each["rect"] for each in json.loads(said.stdout)["controls"] if each["name"]}
        self.left, self.top = until("the window is there", lambda: self.place(TITLE))

    def shown(self, title):
        if self.setup.poll() is not None:
            raise RuntimeError(f"the setup has ended with {self.setup.returncode}")
        found = self.display.xdotool("search", "--onlyvisible", "--name", f"^{title}$").split()
        return found[-1] if found else None

    def place(self, title):
        window = self.shown(title)
        return window and self.display.pixels.place_of(window)

    def click(self, name):
        left, top, right, bottom = self.rects[name]
        self.display.move(self.left + (left + right) // 2, self.top + (top + bottom) // 2)
        self.display.press()
        self.display.release()

    def pick(self, path):
        left, top = until("the folder picker is there", lambda: self.place(PICKER))
        # The display's focus follows the pointer.
        self.display.move(left + 40, top + 12)
        self.display.xdotool("type", path)
        self.display.key("Return")
        until("the folder picker is gone", lambda: not self.shown(PICKER))

    def key(self, name):
        self.display.key(name)
