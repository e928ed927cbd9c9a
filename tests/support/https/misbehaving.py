#!/usr/bin/env python3
"""An HTTPS server that does what servers do at their worst. The path says what:

  /ok …                200                         /status/N          that status
  /hops/N              redirects N times, then 200 (302, 301, 303 by turns)
  /loop                redirects to itself         /nowhere           302 without a location
  /to?URL              redirects there             /long              302 to a location of 2,000 characters
  /early               closes in the status line   /cut               closes in the body
  /slow                a byte of the headers now and then, for ever
  /never               no answer                   /garbage           an answer that is not HTTP's
  /interim             a 100 before the 200        /relative          302 to a path without a host

  misbehaving.py FOLDER CERTIFICATES [WHAT]

makes certificates in their folder where there are none, prints {"server": port, "wrong_name": …, "expired": …, "stranger": …, "silent": …,
"closed": …} and serves until its standard input ends. With WHAT ("never", "status/404" …) every request gets that,
whatever its path.

"silent" takes connections and says nothing, not even for TLS; nobody listens on "closed". FOLDER/requests.log has a
line a request: METHOD TARGET, then its headers in brackets, then its body.
"""
import json
import os
import socket
import ssl
import sys
import threading
import time
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parents[3] / "tools/server"))

import certificates

LOCK = threading.Lock()
ALWAYS = "".join(f"/{what}" for what in sys.argv[3:])


def answer(status, *headers, body=b""):
    lines = [f"HTTP/1.1 {status} Said", f"Content-Length: {len(body)}", *headers, "", ""]
    return "\r\n".join(lines).encode() + body


def redirect(location, status=302):
    return answer(status, f"Location: {location}")


def read_request(connection):
    data = b""
    while b"\r\n\r\n" not in data:
        more = connection.recv(4096)
        if not more:
            return None
        data += more
    head, body = data.split(b"\r\n\r\n", 1)
    lines = head.decode("latin-1").split("\r\n")
    length = next((int(line.split(":")[1]) for line in lines if line.lower().startswith("content-length:")), 0)
    while len(body) < length:
        body += connection.recv(4096)
    return lines[0].rsplit(" ", 1)[0], lines[1:], body


def dribble(connection):
    for byte in (b"HTTP/1.1 200 Said\r\nX-Long: " + b"x" * 100000):
        connection.sendall(bytes([byte]))
        time.sleep(0.01)


def serve(connection, target, host):
    path, _, rest = target.partition("?")
    parts = path.strip("/").split("/")
    kind = parts[0]
    if kind == "never":
        connection.recv(1)
    elif kind == "slow":
        dribble(connection)
    elif kind == "early":
        connection.sendall(b"HTTP/1.1 20")
    elif kind == "garbage":
        connection.sendall(b"this is no answer\r\n\r\n")
    elif kind == "cut":
        connection.sendall(b"HTTP/1.1 200 Said\r\nContent-Length: 100\r\n\r\nhalf")
        connection.unwrap()  # TLS ends well, so that it is the body that is found to be cut
    elif kind == "interim":
        connection.sendall(b"HTTP/1.1 100 Continue\r\n\r\n" + answer(200))
    else:
        connection.sendall(reply(kind, parts, rest, host))


def reply(kind, parts, rest, host):
    if kind == "status":
        return answer(int(parts[1]))
    if kind == "hops" and parts[1] != "0":
        left = int(parts[1])
        return redirect(f"https://{host}/hops/{left - 1}", (302, 301, 303)[left % 3])
    if kind == "loop":
        return redirect(f"https://{host}/loop")
    if kind == "nowhere":
        return answer(302)
    if kind == "to":
        return redirect(rest)
    if kind == "relative":
        return redirect("/ok")
    if kind == "long":
        return redirect(f"https://{host}/" + "x" * 2000)
    return answer(200, body=b"ok\n")


def handle(context, plain, log):
    try:
        with context.wrap_socket(plain, server_side=True) as connection:
            request = read_request(connection)
            if not request:
                return
            line, headers, body = request
            with LOCK, log.open("a") as out:
                out.write(f"{line} [{'; '.join(headers)}] {body.decode('latin-1')}\n")
            host = next(h.split(": ")[1] for h in headers if h.startswith("Host: "))
            serve(connection, ALWAYS or line.split(" ", 1)[1], host)
    except (OSError, ssl.SSLError):
        pass  # clients give up, which is what they are here for


def listen(accepted):
    listener = socket.create_server(("127.0.0.1", 0))

    def run():
        while True:
            connection, _ = listener.accept()
            threading.Thread(target=accepted, args=(connection,), daemon=True).start()

    threading.Thread(target=run, daemon=True).start()
    return listener.getsockname()[1]


def main():
    folder, keys = Path(sys.argv[1]), certificates.make_once(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    ports = {}
    for name in ("server", "wrong_name", "expired", "stranger"):
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(keys / f"{name}.crt", keys / f"{name}.key")
        ports[name] = listen(lambda plain, context=context: handle(context, plain, folder / "requests.log"))
    ports["silent"] = listen(lambda plain: plain.recv(1 << 20) and time.sleep(3600))
    with socket.create_server(("127.0.0.1", 0)) as gone:
        ports["closed"] = gone.getsockname()[1]
    print(json.dumps(ports), flush=True)
    sys.stdin.read()
    os._exit(0)


if __name__ == "__main__":
    main()
