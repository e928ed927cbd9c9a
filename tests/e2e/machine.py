"""A fresh machine for one scenario: made from facts, given files, and put through steps."""

import errno
import json
import os
import re
import shutil
import subprocess
import tempfile
import threading
import time
from pathlib import Path

CLOCK = {"at": "2024-03-05T14:07:09", "stands": True}
# Programs that are started have ended before their starter goes on, so that what they leave comes in one order.
DEFAULTS = {"clock": CLOCK, "launches_wait": True}
TIMEOUT = 60  # real seconds; an installation takes less than one
LOG_CONFIGURATION = "[*]\r\nlog=2\r\n"


class Machine:
    def __init__(self, build, facts):
        self.build = build
        self.scratch = Path(tempfile.mkdtemp(prefix="vanta-e2e-"))
        self.folder = self.scratch / "machine"
        self.before = {}   # Windows path → where it was put
        self.digests = {}  # … and the SHA-256 of what was put there
        self.held = []
        self.server = None  # that of the maker, where a scenario has one
        self.stderr = []
        self.seen = []     # what the driver's window was sent
        self.started = []  # what runInstaller answered, a line a driver
        self.walks = []    # what walks saw that was not expected
        self.folder.mkdir()
        (self.folder / "machine.json").write_text(json.dumps({**DEFAULTS, **facts}))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.let_go()
        if self.server:
            self.server.stop()
        shutil.rmtree(self.scratch, ignore_errors=True)

    def linux_path(self, windows_path):
        """Where a file is or would be; names that are there already are taken whatever their case."""
        drive, rest = windows_path[0].upper(), windows_path[2:].replace("\\", "/").strip("/")
        path = self.folder / drive
        for part in filter(None, rest.split("/")):
            there = [name for name in (os.listdir(path) if path.is_dir() else []) if name.lower() == part.lower()]
            path = path / (there[0] if there else part)
        return path

    def put(self, windows_path, write):
        path = self.linux_path(windows_path)
        path.parent.mkdir(parents=True, exist_ok=True)
        write(path)
        self.before[windows_path.lower()] = path

    def environment(self, more=None):
        environment = {"VANTA_MACHINE": str(self.folder),
                       "VANTA_HOST_PROGRAMS": str(self.build.folder / "winhost/programs"),
                       "MAKER_CALLS": str(self.scratch / "maker-calls")}
        # What the leak check passes over (winhost/gdi/text_engine.cpp) is no message of the program.
        return {"LSAN_OPTIONS": "print_suppressions=0", **os.environ, **environment, **(more or {})}

    def run(self, windows_path, words, more=None):
        """Runs a program of the machine to its end; its exit code is checked against the machine's own record."""
        command_line = " ".join(f'"{word}"' if " " in word else word for word in [windows_path, *words])
        started = {"VANTA_IMAGE": windows_path, "VANTA_COMMAND_LINE": command_line, **(more or {})}
        try:
            done = subprocess.run([self.linux_path(windows_path), *words], env=self.environment(started),
                                  cwd=self.scratch, capture_output=True, text=True, timeout=TIMEOUT, check=False)
        except OSError as busy:
            # Another thread of the runner forked while the program was being copied, and its child has it open yet.
            if busy.errno != errno.ETXTBSY:
                raise
            time.sleep(0.05)
            return self.run(windows_path, words, more)
        except subprocess.TimeoutExpired as slow:
            raise RuntimeError(f"still running after {TIMEOUT} seconds, having said {slow.stdout}") from None
        self.stderr += done.stderr.splitlines()
        for line in done.stdout.splitlines():
            self._heard(line)
        return done.returncode

    def _heard(self, line):
        said = json.loads(line)
        for kind in ("status", "progress"):
            if kind in said:
                self.seen.append(f"{kind} {said[kind]}")
        if "started" in said:
            self.started.append(said["started"])

    def hold(self, program, words):
        """Starts a program that runs until let_go."""
        process = subprocess.Popen([str(program), *words], env=self.environment(), cwd=self.scratch, text=True,
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.held.append(process)
        # One that the setup ends must be gone for good, as a process of Windows would be.
        threading.Thread(target=process.wait, daemon=True).start()
        said = process.stdout.readline().strip()
        if said != "ready":
            raise RuntimeError(f"hold {words}: {said} {process.stderr.read()}")

    def let_go(self):
        for process in self.held:
            _, errors = process.communicate()
            self.stderr += errors.splitlines()
        self.held = []

    def show(self):
        done = subprocess.run([self.build.vantakit, "machine", "show", "--json", self.folder], env=self.environment(),
                              capture_output=True, text=True, check=False)
        if done.returncode != 0:
            raise RuntimeError(done.stderr)
        return json.loads(done.stdout)

    def journal(self, name):
        path = self.folder / f"{name}.jsonl"
        lines = path.read_text().splitlines() if path.exists() else []
        return [json.loads(line) for line in lines]

    def services(self):
        path = self.folder / "services.json"
        return json.loads(path.read_text()) if path.exists() else {}

    def maker_calls(self):
        path = self.scratch / "maker-calls"
        return path.read_text().splitlines() if path.exists() else []


def split_words(command):
    """The words of a step; double quotes keep blanks together."""
    return [quoted or plain for quoted, plain in re.findall(r'"([^"]*)"|(\S+)', command)]
