#!/usr/bin/env bash
# The setup with its window, on a fresh machine. On a display: the real window, to be used by hand. Without one: the
# whole walk off-screen, with a picture of every step.
#   tools/run_window.sh BUILD_FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:?build folder}

if [[ -z "${DISPLAY:-}" ]]; then
  rm -rf build/walk
  tools/walk_pictures.py --build "$build" --out build/walk --scale 100 --film build/walk/film.png
  exit
fi

machine=build/machine-window
setup_name=VantaPictorSetup.exe
rm -rf "$machine"
printf '{}' >build/machine-window.json
"$build/vantakit" machine new build/machine-window.json "$machine"
downloads="$machine/C/Users/user/Downloads"
mkdir -p "$downloads"
cp "$build/$setup_name" "$downloads/"
printf '[*]\r\nlog=2\r\n' >"$downloads/xLogConfig.ini"
code=0
export VANTA_HOST_PROGRAMS=$PWD/$build/winhost/programs
VANTA_DISPLAY=x11 VANTA_MACHINE="$PWD/$machine" "$downloads/$setup_name" --from=demo || code=$?
"$build/vantakit" machine show "$machine"
printf '\nExit code %d\n' "$code"
exit "$code"
