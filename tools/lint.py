#!/usr/bin/env python3
"""Checks what the compiler cannot: layering, forbidden constructs, formatting, imports of the shipped executable.

Prints one line a finding, "file:line: what", and exits 1 when there is any.
"""
import json
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
RULES = json.loads((ROOT / "tools/layers.json").read_text())
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"')


def sources():
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "*.cpp", "*.h"], cwd=ROOT,
                            capture_output=True, text=True, check=True).stdout.split()
    return [name for name in listed if (ROOT / name).exists()]


def layer_of(name):
    return next((row for row in RULES["layers"] if name.startswith(row["folder"] + "/")), None)


def check_includes(name, lines):
    layer = layer_of(name)
    if layer is None:
        yield f"{name}:1: lies in no layer that tools/layers.json names"
        return
    if "*" in layer["may"]:
        return
    own = str(pathlib.PurePosixPath(name).parent)
    for number, line in enumerate(lines, 1):
        found = INCLUDE.match(line)
        if not found or "/" not in found.group(1):
            continue
        target = found.group(1)
        if ("src/" + target).startswith(own + "/") or target.startswith(own + "/"):
            continue
        if not any(target == allowed or target.startswith(allowed + "/") for allowed in layer["may"]):
            yield f'{name}:{number}: {layer["folder"]} may not include "{target}"'


def check_forbidden(name, lines):
    for rule in RULES["forbidden"]:
        if rule["in"] != "." and not name.startswith(rule["in"] + "/"):
            continue
        pattern = re.compile(rule["pattern"])
        for number, line in enumerate(lines, 1):
            code = line.split("//")[0] if rule["in"] != "." else line
            code = re.sub(r'"(\\.|[^"\\])*"', '""', code) if "L\\\"" not in rule["pattern"] else code
            if pattern.search(code if "include" not in rule["pattern"] else line):
                yield f'{name}:{number}: {rule["why"]}'


def check_format(names):
    run = subprocess.run(["clang-format", "--dry-run", "-Werror", *names], cwd=ROOT, capture_output=True, text=True)
    seen = set()
    for line in run.stderr.splitlines():
        found = re.match(r"(.+?):(\d+):\d+: error", line)
        if found and found.group(1) not in seen:
            seen.add(found.group(1))
            yield f"{found.group(1)}:{found.group(2)}: not as clang-format writes it (make format)"


def check_imports(executable):
    if not executable.exists():
        yield f"{executable}: not built"
        return
    dump = subprocess.run(["i686-w64-mingw32-objdump", "-p", executable], capture_output=True, text=True, check=True).stdout
    allowed = {name.lower() for name in RULES["imports"]["dlls"]}
    refused = set(RULES["imports"]["refused"])
    for dll in re.findall(r"DLL Name: (\S+)", dump):
        if dll.lower() not in allowed:
            yield f"{executable.name}: imports from {dll}"
    for function in re.findall(r"^\s+[0-9a-f]+\s+\d+\s+(\S+)\s*$", dump, re.M):
        if function in refused:
            yield f"{executable.name}: imports {function}, which Windows XP lacks; look it up at run time"


def check_delayed(archives):
    """Delayed imports stand in no table of the executable, so what the objects ask for is looked at."""
    refused = set(RULES["imports"]["refused"])
    for archive in archives:
        symbols = subprocess.run(["i686-w64-mingw32-nm", "-u", archive], capture_output=True, text=True, check=True).stdout
        for function in sorted(set(re.findall(r"U _(?:_imp__)?(\w+)@\d+", symbols)) & refused):
            yield f"{archive.name}: imports {function}, which Windows XP lacks; look it up at run time"
    linked = re.findall(r"^delayed_imports\((.*)\)", (ROOT / "cmake/windows.cmake").read_text(), re.M)[0].split()
    preloaded = re.findall(r'TEXT\("(\w+)\.dll"\)', (ROOT / "src/app/library_search.cpp").read_text())
    for name in sorted(set(linked) ^ (set(preloaded) - {"Kernel32"})):
        yield f"src/app/library_search.cpp:1: {name}.dll is delayed in cmake/windows.cmake alone, or here alone"


def check_subsystem(executable):
    dump = subprocess.run(["i686-w64-mingw32-objdump", "-p", executable], capture_output=True, text=True, check=True).stdout
    version = tuple(int(re.search(rf"{which}SubsystemVersion\s+(\d+)", dump).group(1)) for which in ("Major", "Minor"))
    if version > (5, 1):
        yield f"{executable.name}: asks for Windows {version[0]}.{version[1]}, the setup starts on 5.1"


def main():
    findings = []
    names = sources()
    for name in names:
        lines = (ROOT / name).read_text(encoding="utf-8").splitlines()
        findings += check_includes(name, lines)
        findings += check_forbidden(name, lines)
    findings += check_format(names)
    shipped = ROOT / "build/windows-i686/bare/VantaPictorSetup.exe"
    findings += check_imports(shipped)
    if shipped.exists():
        findings += check_subsystem(shipped)
        findings += check_delayed(sorted((ROOT / "build/windows-i686").glob("*.a")))
    for finding in findings:
        print(finding)
    print(f"lint: {len(names)} files, {len(findings)} findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
