#!/usr/bin/env python3
"""Runs the storm program several times, each on a machine of its own with a fast clock.

  run.py PROGRAM
"""
import json
import os
import subprocess
import sys
import tempfile
from pathlib import Path

ROUNDS = 5
FACTS = {"clock": {"at": "2024-03-05T14:00:00", "speed": 20000}}

for _ in range(ROUNDS):
    with tempfile.TemporaryDirectory(prefix="vanta-storm-") as folder:
        (Path(folder) / "machine.json").write_text(json.dumps(FACTS))
        done = subprocess.run([sys.argv[1]], env={**os.environ, "VANTA_MACHINE": folder}, timeout=100, check=False)
        if done.returncode != 0:
            sys.exit(f"ended with {done.returncode}")
