#!/usr/bin/env bash
# make test: everything under AddressSanitizer and UBSan, what has threads under ThreadSanitizer, and a short run of
# every fuzzer. One line a step; the failing tests' output is printed in full.
#   tools/test.sh JOBS
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=${1:-$(nproc)}
mkdir -p build

build() {  # preset
  cmake --preset "$1" >"build/$1.log" 2>&1 || { cat "build/$1.log"; exit 1; }
  cmake --build "build/$1" -j "$jobs"
}

export ASAN_OPTIONS=detect_stack_use_after_return=1:strict_string_checks=1 UBSAN_OPTIONS=print_stacktrace=1
export TSAN_OPTIONS=second_deadlock_stack=1

build host-asan
ctest --test-dir build/host-asan --output-on-failure -j "$jobs" --no-tests=error
build host-tsan
# Where threads or processes meet: waits, queues, sharing, the registry, the log, timers, requests, and installations
# beside a window. What the graphics and network libraries do among themselves is theirs.
export TSAN_OPTIONS=$TSAN_OPTIONS:ignore_noninstrumented_modules=1
ctest --test-dir build/host-tsan --output-on-failure -j "$jobs" --no-tests=error -R \
  '^winhost/(Threads|Messages|Windows|OtherProcess|Processes|Launch|Modules|Registry|FileSharing|FileMoves|ShellWindows|Services|Com|MultimediaTimers|WinInet|FolderDialog)|^src/(Logger|SetupDriver|MessageLoop|CrashReporter|Extraction|MakerLibraries|HttpLog|HttpRequest|EasyCurl|SetupWindow|MessageWindow)|^e2e/(window|walk)|^storm/'
tools/fuzz.sh 5
