#!/usr/bin/env bash
# The main job: installs the sample product silently on a fresh machine folder and shows what that did.
#   tools/run.sh BUILD_FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:?build folder}
machine=build/machine
setup_name=VantaPictorSetup.exe
if [[ -t 1 ]]; then bold=$'\e[1m' dim=$'\e[2m' off=$'\e[0m'; else bold='' dim='' off=''; fi

rm -rf "$machine"
"$build/vantakit" machine new - "$machine"
downloads="$machine/C/Users/user/Downloads"
mkdir -p "$downloads"
cp "$build/$setup_name" "$downloads/"
# The log is off until such a file lies beside the program: 2 writes it to a file below the application data.
printf '[*]\r\nlog=2\r\n' >"$downloads/xLogConfig.ini"

printf '%s%s --silent --from=demo%s  %son the machine %s%s\n' "$bold" "$setup_name" "$off" "$dim" "$machine" "$off"
code=0
export VANTA_HOST_PROGRAMS=$PWD/$build/winhost/programs
VANTA_MACHINE="$PWD/$machine" "$downloads/$setup_name" --silent --from=demo || code=$?
"$build/vantakit" machine show "$machine"

printf '\n%sExit code %d%s\n' "$bold" "$code" "$off"
printf 'Installed files   %s\n' "$machine/C/Program Files (x86)/VantaPictor"
printf 'Log               %s\n' "$machine/C/Users/user/AppData/Roaming/$setup_name/Logs/$setup_name.log"
for executable in build/windows-i686/$setup_name build/windows-x64/$setup_name; do
  [[ -f $executable ]] && printf 'For Windows       %s  (%s bytes)\n' "$executable" "$(stat -c %s "$executable")"
done
exit "$code"
