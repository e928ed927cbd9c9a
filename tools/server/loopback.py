#!/usr/bin/env python3
"""A real HTTPS server on the loopback address, to see what a setup sends.

  loopback.py start FOLDER     makes certificates and starts nginx, everything it writes in FOLDER; prints the port
  loopback.py stop FOLDER      ends it

FOLDER/root.crt is the root to trust, FOLDER/access.log has a line a request: "HOST METHOD TARGET STATUS".
"""
import os
import signal
import socket
import subprocess
import sys
import time
from pathlib import Path

sys.dont_write_bytecode = True

import certificates

# Every path is ours: nothing of the system's own nginx is read, written or started.
CONFIGURATION = """
daemon {daemon};
master_process off;
pid {folder}/nginx.pid;
error_log {folder}/error.log;
events {{}}
http {{
  log_format requests escape=none '$ssl_server_name $request_method $request_uri $status';
  access_log {folder}/access.log requests;
  client_body_temp_path {folder}/temp;
  proxy_temp_path {folder}/temp;
  fastcgi_temp_path {folder}/temp;
  uwsgi_temp_path {folder}/temp;
  scgi_temp_path {folder}/temp;
  server {{
    listen 127.0.0.1:{port} ssl;
    ssl_certificate {certificates}/server.crt;
    ssl_certificate_key {certificates}/server.key;
    location / {{ default_type text/plain; return 200 "ok\\n"; }}
  }}
}}
"""


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def answers(port):
    try:
        socket.create_connection(("127.0.0.1", port), 1).close()
        return True
    except OSError:
        return False


class Server:
    """nginx in a folder of its own. With `detached` it outlives this program, until stop(folder). Its certificates are
    made in the folder too, or, for several servers that share them, in another."""

    def __init__(self, folder, detached=False, shared=None):
        self.folder = Path(folder).resolve()
        self.folder.mkdir(parents=True, exist_ok=True)
        self.certificates = certificates.make_once(Path(shared).resolve() if shared else self.folder)
        self.process = None
        for _ in range(5):  # another program may take the port between
            self.port = free_port()
            if self._start(detached):
                return
        raise RuntimeError(f"nginx does not start:\n{(self.folder / 'error.log').read_text()}")

    def _start(self, detached):
        configuration = self.folder / "nginx.conf"
        configuration.write_text(CONFIGURATION.format(folder=self.folder, certificates=self.certificates, port=self.port,
                                                      daemon="on" if detached else "off"))
        nginx = next((p for p in ("/usr/sbin/nginx", "/usr/local/sbin/nginx") if os.path.exists(p)), "nginx")
        self.process = subprocess.Popen([nginx, "-p", self.folder, "-c", configuration, "-e", self.folder / "error.log"],
                                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        for _ in range(1000):
            if answers(self.port) and (self.folder / "nginx.pid").exists():
                return True
            if self.process.poll() not in (None, 0):
                return False
            time.sleep(0.01)
        self.stop()
        return False

    @property
    def root(self):
        return self.certificates / "root.crt"

    def requests(self):
        """What arrived, a line a request, in the order of arrival."""
        log = self.folder / "access.log"
        return [line for line in log.read_text().splitlines() if not line.endswith(" 400")] if log.exists() else []

    def stop(self):
        if self.process and self.process.poll() is None:
            self.process.terminate()
            self.process.wait(10)
        else:
            stop(self.folder)


def stop(folder):
    pid_file = Path(folder) / "nginx.pid"
    if not pid_file.exists():
        return
    pid = int(pid_file.read_text())
    os.kill(pid, signal.SIGTERM)
    for _ in range(1000):
        if not pid_file.exists():
            return
        time.sleep(0.01)


def main():
    what, folder = sys.argv[1:]
    if what == "start":
        print(Server(folder, detached=True).port)
    else:
        stop(folder)


if __name__ == "__main__":
    main()
