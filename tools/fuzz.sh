#!/usr/bin/env bash
# Runs every libFuzzer target for the given number of seconds, from its seeds; a crash is printed and kept in build/fuzz.
#   tools/fuzz.sh SECONDS
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
mkdir -p build
cmake --preset host-fuzz >build/host-fuzz.log 2>&1 || { cat build/host-fuzz.log; exit 1; }
cmake --build build/host-fuzz -j "$(nproc)" --target fuzzers
export VANTA_MACHINE=$PWD/build/host-fuzz/machine
for fuzzer in build/host-fuzz/tests/fuzz/*_fuzz; do
  name=$(basename "$fuzzer")
  corpus=build/fuzz/$name
  mkdir -p "$corpus"
  log=build/fuzz/$name.log
  if ! "$fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -artifact_prefix="build/fuzz/$name-" \
       -print_final_stats=1 "$corpus" >"$log" 2>&1; then
    tail -n 60 "$log"
    echo "fuzz: $name found something, see build/fuzz/$name-*"
    exit 1
  fi
  echo "fuzz: $name $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") runs in ${seconds} s, nothing found"
done
