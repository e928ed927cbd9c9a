#!/usr/bin/env bash
# The main job: installs the sample product silently on a fresh machine folder and shows what that did.
#   tools/run.sh BUILD_FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:?build folder}
machine=build/machine
setup_name=VantaPictorSetup.exe
if [[ -t 1 ]]; then bold=$'\e[1m' dim=$'\e[2m' off=$'\e[0m'; else bold='' dim='' off=''; fi

# The maker's hosts of this setup exist nowhere, so a server on the loopback address stands in for both, and the
# machine is told where they are and whom to trust.
server=build/server
rm -rf "$machine" "$server"
port=$(python3 tools/server/loopback.py start "$server")
trap 'python3 tools/server/loopback.py stop "$server"' EXIT
cat >"$server/facts.json" <<END
{"hosts": {"statistics.invalid": "127.0.0.1:$port", "upgrade.invalid": "127.0.0.1:$port"},
 "tls_roots": ["$PWD/$server/root.crt"]}
END
"$build/vantakit" machine new "$server/facts.json" "$machine"
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

printf '\n%sRequests%s  %s%s at 127.0.0.1:%s%s\n' "$bold" "$off" "$dim" "$(wc -l <"$server/access.log")" "$port" "$off"
sed 's/^/  /' "$server/access.log"

printf '\n%sExit code %d%s\n' "$bold" "$code" "$off"
printf 'Installed files   %s\n' "$machine/C/Program Files (x86)/VantaPictor"
printf 'Log               %s\n' "$machine/C/Users/user/AppData/Roaming/$setup_name/Logs/$setup_name.log"
for executable in build/windows-i686/$setup_name build/windows-x64/$setup_name; do
  [[ -f $executable ]] && printf 'For Windows       %s  (%s bytes)\n' "$executable" "$(stat -c %s "$executable")"
done
exit "$code"
