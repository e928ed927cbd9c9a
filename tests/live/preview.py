"""A live preview as a process, and what it tells about itself."""
import json
import queue
import subprocess
import threading

from display import PATIENCE, Failed, until

CAPTION = (200, 16)  # in every layout something lies there that drags the window


class Preview:
    """Ends the process on leaving the context, if it has not ended."""

    def __init__(self, vantakit, skin, layout, display, *options):
        self.display = display
        self.skin = skin
        self.layout = layout
        self.process = subprocess.Popen(
            [vantakit, "preview", layout, "--skin", skin, "--window", "--trace", *options],
            env=display.environment, stdout=subprocess.PIPE, text=True)
        self.lines = queue.Queue()
        self.told = []
        self.reader = threading.Thread(target=self.read, daemon=True)
        self.reader.start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self.reader.join()

    def read(self):
        for line in self.process.stdout:
            self.lines.put(json.loads(line))
        self.lines.put(None)

    def next_line(self):
        try:
            line = self.lines.get(timeout=PATIENCE)
        except queue.Empty:
            line = None
        if line is None:
            last = [line for line in self.told if line["event"] != "opened"][-5:]
            raise Failed("nothing more is told; the last lines: " + json.dumps(last))
        self.told.append(line)
        return line

    def expect(self, event, without=None, **values):
        """The next line with that event and these values. Others before it are passed over, but for `without`."""
        while True:
            try:
                line = self.next_line()
            except Failed as failure:
                raise Failed(f"no {event} {values}: {failure}") from None
            if line["event"] == event and all(line.get(name) == value for name, value in values.items()):
                return line
            if line["event"] == without:
                raise Failed(f"{without} before {event}: {line}")

    def open(self):
        """Waits for the window to be on the display."""
        opened = self.expect("opened")
        self.controls = opened["controls"]
        self.place = opened["rect"]
        self.window = until("the window is on the display", self.display.find_window)
        until("the window lies where it says", self.lies_in_place)
        until("the window shows a picture", lambda: len(set(self.pixels_of_window())) > 8)
        return opened

    def lies_in_place(self):
        return self.display.pixels.place_of(self.window) == tuple(self.place[:2])

    def click(self, name):
        self.display.move(*self.middle_of(name))
        self.display.press()
        self.display.release()

    def tab_stops(self):
        """Names of the buttons that Tab reaches; the window's own take no focus."""
        return [each["name"] for each in self.controls
                if each["visible"] and each["class"] in ("Button", "CheckBox") and not each["name"].startswith("__")]

    def caption(self):
        return self.place[0] + CAPTION[0], self.place[1] + CAPTION[1]

    def control(self, name):
        return next(each for each in self.controls if each["name"] == name)

    def on_screen(self, rect):
        left, top = self.place[0], self.place[1]
        return left + rect[0], top + rect[1], left + rect[2], top + rect[3]

    def middle_of(self, name):
        left, top, right, bottom = self.on_screen(self.control(name)["rect"])
        return (left + right) // 2, (top + bottom) // 2

    def pixels_of(self, name):
        return self.display.pixels.area(*self.on_screen(self.control(name)["rect"]))

    def pixels_of_window(self):
        return self.display.pixels.area(*self.place)
