"""An X display of a test's own: server, window manager, pointer, keys and pixels.

Needs Xvfb, twm, xdotool and xprop. Nothing here sleeps for a fixed time: `until` asks again and again until it is so.
"""
import contextlib
import os
import shutil
import socket
import struct
import subprocess
import tempfile
import time

PATIENCE = 60  # seconds, for machines that are busy
TOOLS = ("Xvfb", "twm", "xdotool", "xprop")
SIZE = (1000, 700)
OUTSIDE = (5, 695)  # where no window of the tests comes

# Windows are put where they ask to be, and get a frame that they do not want: nothing may depend on there being none.
# The font is the server's own.
TWM_SETTINGS = "RandomPlacement\nBorderWidth 2\n" + "".join(
    f'{kind}Font "fixed"\n' for kind in ("Title", "Menu", "Icon", "Resize", "IconManager"))


class Failed(Exception):
    """What did not become so, in words."""


def until(what, condition):
    """The condition's first answer that is not false. Failed when it does not come."""
    end = time.monotonic() + PATIENCE
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise Failed(f"it never came true that {what}")
        time.sleep(0.01)


def missing_tools():
    return [tool for tool in TOOLS if not shutil.which(tool)]


class Display:
    """Ends its server, and what else it started, on leaving the context."""

    def __enter__(self):
        self.ending = contextlib.ExitStack()
        with self.ending:
            self.start()
            self.ending = self.ending.pop_all()
        return self

    def __exit__(self, *_):
        self.ending.close()

    def start(self):
        folder = tempfile.mkdtemp(prefix="vanta-display-")
        self.ending.callback(shutil.rmtree, folder, ignore_errors=True)
        reader, writer = os.pipe()
        self.begin(["Xvfb", "-displayfd", str(writer), "-screen", "0", "%dx%dx24" % SIZE, "-nolisten", "tcp"],
                   pass_fds=[writer])
        os.close(writer)
        with os.fdopen(reader) as answer:
            number = answer.readline().strip()
        if not number:
            raise Failed("Xvfb names no display")
        self.environment = dict(os.environ, DISPLAY=f":{number}")
        self.pixels = Pixels(number)
        self.ending.callback(self.pixels.close)
        settings = os.path.join(folder, "twmrc")
        with open(settings, "w") as file:
            file.write(TWM_SETTINGS)
        manager = self.begin(["twm", "-f", settings], env=dict(self.environment, LC_ALL="C"))
        until("the window manager is there", lambda: manager.poll() is not None or self.pixels.is_managed())
        if manager.poll() is not None:
            raise Failed("twm does not start")
        self.move(*OUTSIDE)

    def begin(self, command, **options):
        process = subprocess.Popen(command, stderr=subprocess.DEVNULL, **options)
        self.ending.callback(process.wait)
        self.ending.callback(process.terminate)
        return process

    def tool(self, *arguments):
        result = subprocess.run(arguments, env=self.environment, capture_output=True, text=True, timeout=PATIENCE)
        return result.stdout

    def xdotool(self, *arguments):
        return self.tool("xdotool", *[str(each) for each in arguments])

    def move(self, x, y):
        self.xdotool("mousemove", x, y)

    def press(self):
        self.xdotool("mousedown", 1)

    def release(self):
        self.xdotool("mouseup", 1)

    def key(self, name):
        self.xdotool("key", name)

    def find_window(self):
        """The id of the only window; None until it is shown."""
        found = self.xdotool("search", "--onlyvisible", "--class", "UI_WND_CLASS").split()
        return found[0] if len(found) == 1 else None

    def is_iconic(self, window):
        return "Iconic" in self.tool("xprop", "-id", window, "WM_STATE")


class Pixels:
    """A connection to the display that reads the screen: a few requests of the X protocol."""

    SUBSTRUCTURE_REDIRECT = 1 << 20

    def __init__(self, number):
        self.stream = socket.socket(socket.AF_UNIX)
        self.stream.connect(f"/tmp/.X11-unix/X{number}")
        self.stream.sendall(struct.pack("<BxHHHHxx", ord("l"), 11, 0, 0, 0))
        accepted, _, _, length = struct.unpack("<BxHHH", self.read(8))
        setup = self.read(length * 4)
        if accepted != 1:
            raise Failed("the display takes no connection")
        vendor, formats = struct.unpack_from("<H", setup, 16)[0], setup[21]
        self.root = struct.unpack_from("<I", setup, 32 + (vendor + 3) // 4 * 4 + formats * 8)[0]

    def close(self):
        self.stream.close()

    def read(self, size):
        data = b""
        while len(data) < size:
            piece = self.stream.recv(size - len(data))
            if not piece:
                raise Failed("the display has gone")
            data += piece
        return data

    def ask(self, request):
        """The answer's head and body; without a body when it is an error. Everyone gets events of the keyboard's layout."""
        self.stream.sendall(request)
        head = self.read(32)
        while head[0] > 1:
            head = self.read(32)
        body = self.read(struct.unpack_from("<I", head, 4)[0] * 4) if head[0] == 1 else b""
        return head, body

    def is_managed(self):
        head, body = self.ask(struct.pack("<BxHI", 3, 2, self.root))
        return head[0] == 1 and struct.unpack_from("<I", body)[0] & self.SUBSTRUCTURE_REDIRECT != 0

    def place_of(self, window):
        """Left and top on the screen, without a frame around it."""
        head, _ = self.ask(struct.pack("<BxHIIhh", 40, 4, int(window), self.root, 0, 0))
        return struct.unpack_from("<hh", head, 12) if head[0] == 1 else None

    def area(self, left, top, right, bottom):
        """What the screen shows there: rows of blue, green, red, unused bytes. Cut to the screen."""
        left, top = max(left, 0), max(top, 0)
        right, bottom = min(right, SIZE[0]), min(bottom, SIZE[1])
        if left >= right or top >= bottom:
            return b""
        head, body = self.ask(struct.pack("<BBHIhhHHI", 73, 2, 5, self.root, left, top, right - left, bottom - top,
                                          0xFFFFFFFF))
        return body if head[0] == 1 else b""
