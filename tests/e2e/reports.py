"""What a setup told its maker: the log's URLs, the machine's identifiers, and what arrived at a server.

A scenario's "server" is "nginx" (a real one; the section "requests" lists what arrived), a word of
tests/support/https/misbehaving.py that is what every request gets ("never", "status/404" …), or one of its other ports
("closed", "silent", "wrong_name", "expired", "stranger"). Both of the maker's hosts are then found there, and its root
certificate is trusted.
"""

import json
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools/server"))

import loopback

HOSTS = ("statistics.invalid", "upgrade.invalid")
PORTS = ("closed", "silent", "wrong_name", "expired", "stranger")
TAG = "[CVantaHttpLog] "
SHARED_KEY = r"\SOFTWARE\BASTION\FRESHEN"
FORMS = {"mid": "[0-9a-f]{64}", "m2": "[0-9a-f]{44}"}


class Misbehaving:
    """The test's own server; every request gets the same."""

    def __init__(self, folder, certificates, behaviour):
        script = ROOT / "tests/support/https/misbehaving.py"
        always = [] if behaviour in PORTS else [behaviour]
        self.process = subprocess.Popen([sys.executable, str(script), str(folder), str(certificates), *always], text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        ports = json.loads(self.process.stdout.readline())
        self.port = ports[behaviour if behaviour in PORTS else "server"]
        self.root = certificates / "root.crt"

    def requests(self):
        return []

    def stop(self):
        self.process.communicate()


def start(behaviour, folder, certificates):
    """The certificates are made once and shared by all servers that name the same folder."""
    if behaviour == "nginx":
        return loopback.Server(folder, shared=certificates)
    return Misbehaving(folder, certificates, behaviour)


def facts(server):
    return {"hosts": {host: f"127.0.0.1:{server.port}" for host in HOSTS}, "tls_roots": [str(server.root)]}


def take_out(raw, server):
    """Takes what this file is about out of a machine's state and gives it in three sections:

    reports      a word for each URL in the log, in order: "status N" for one that is in good form and names the
                 identifiers that are stored, otherwise the URL
    identifiers  names of the stored ones, sorted; one that is not in good form with its value
    requests     what arrived at the server, sorted, the stored identifiers as ${m} and ${m2}
    """
    shared = [e for e in raw["registry"] if e["key"].upper().endswith(SHARED_KEY) and e["name"] in FORMS]
    raw["registry"] = [e for e in raw["registry"] if e not in shared]
    values = {e["name"]: str(e["value"]) for e in shared}
    stored = {"m": values.get("mid", "")[:32], "m2": values.get("m2", "")}
    urls = []
    for path, lines in raw["log"]["files"].items():
        urls += [line.split(TAG, 1)[1] for line in lines if TAG in line]
        raw["log"]["files"][path] = [line for line in lines if TAG not in line]
    return {
        "reports": [_word(url, stored) for url in urls],
        "identifiers": sorted(name if re.fullmatch(FORMS[name], value) else f"{name} {value}"
                              for name, value in values.items()),
        "requests": sorted(_without(line, stored) for line in (server.requests() if server else [])),
    }


def _word(url, stored):
    form = ("https://statistics.invalid/bastion/instcomp.htm?soft=2023022111&status={status}&m={m}&m2={m2}"
            "&channel={any}&ochannel={any}&version={any}&sysver={version}&pa={pa}&s1={flag}&s2={flag}&com={com}&nb={flag}")
    parts = {"status": "([012])", "any": "[^&]*", "version": r"\d+\.\d+\.\d+", "pa": "(?:x64|x86)", "flag": "[01]",
             "com": "[a-d|]*", "m": re.escape(stored["m"]), "m2": re.escape(stored["m2"])}
    pattern = re.sub(r"\\\{(\w+)\\\}", lambda m: parts[m[1]], re.escape(form))
    match = re.fullmatch(pattern, url)
    return f"status {match[1]}" if match and stored["m"] and stored["m2"] else url


def _without(line, stored):
    for name in ("m2", "m"):
        if stored[name]:
            line = line.replace(stored[name], "${" + name + "}")
    return line
