#!/usr/bin/env bash
# Runs the x86_64 setup under Wine and the Linux build on a machine with the same facts, twice each (a first
# installation, then one over it), and compares what they left; then once more by hand, and every page of the skin as
# both sides draw it. Everything is built before. Ends with "N passed, 0 failed".
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
cd "$here/../.."
work=$PWD/build/wine
host=build/host
windows=build/windows-x64
setup=VantaPictorSetup.exe
first=(--silent --from=demo)
second=(--silent --from=other --src=UPGRADE --assoc)

cannot() {
  printf '##### test-windows: NOTHING WAS TESTED UNDER WINE: %s #####\n' "$1" >&2
  exit 0
}

if [[ ${1:-} != --with-display ]]; then
  tools/deps.sh wine || cannot 'its packages cannot be installed'
  for program in wine wineserver xvfb-run xdotool xwd; do command -v $program >/dev/null || cannot "$program is missing"; done
  timeout 30 xvfb-run -a true || cannot 'no virtual display starts'
  exec xvfb-run -a -s "-screen 0 1280x1024x24" "$here/run.sh" --with-display
fi

rm -rf "$work"
mkdir -p "$work/home"
# winemenubuilder would put menu entries of its own on the desktop; mono and the browser engine are not asked for.
export HOME=$work/home WINEDEBUG=-all TZ=UTC LC_ALL=C.UTF-8 PYTHONDONTWRITEBYTECODE=1
export WINEDLLOVERRIDES='winemenubuilder.exe=d;mscoree=d;mshtml=d'
unset WINEARCH XDG_CONFIG_HOME XDG_DATA_HOME
server=$work/server
trap 'wineserver -k 2>/dev/null || true; python3 tools/server/loopback.py stop "$server" 2>/dev/null || true' EXIT

# The registry is written to its files when the server ends, which it does once all programs have ended.
settle() { timeout 60 wineserver -w || { echo 'programs under Wine do not end' >&2; exit 1; }; }

# Makes a prefix of that name the current one.
new_prefix() {
  export WINEPREFIX=$work/$1
  timeout 120 wine wineboot -i >"$work/wineboot.log" 2>&1 ||
    cannot "it makes no prefix ($(tail -n 1 "$work/wineboot.log"))"
  settle
  profile=$(find "$WINEPREFIX/drive_c/users" -mindepth 1 -maxdepth 1 ! -name Public | head -n 1)
  user=$(basename "$profile")
  # Desktop, downloads … are links out of the prefix; the comparison wants them inside.
  find "$profile" -maxdepth 1 -type l | while IFS= read -r link; do rm "$link" && mkdir "$link"; done
}

in_registry() {  # FILE
  timeout 60 wine regedit /S "$(winepath -w "$1")" >>"$work/regedit.log" 2>&1
  settle
}

new_prefix prefix
python3 "$here/wine_state.py" facts "$WINEPREFIX" "$user" >"$work/facts.json"

put_setup() {  # FOLDER SETUP
  mkdir -p "$1"
  cp "$2" "$1/$setup"
  printf '[*]\r\nlog=2\r\n' >"$1/xLogConfig.ini"
}

under_wine() {  # ROUND ARGUMENTS…
  local round=$1 code=0
  shift
  # The channel tells which of the scheduler's calls Wine refuses.
  WINEDEBUG=-all,fixme+taskschd timeout 60 wine "C:\\users\\$user\\Downloads\\$setup" "$@" \
    >"$work/wine$round.log" 2>&1 || code=$?
  settle
  keep "$round" wine "$WINEPREFIX/drive_c/users/$user" "$code"
  python3 "$here/wine_state.py" state "$WINEPREFIX" "$user" "$work/baseline.json" >"$work/wine$round.json"
}

on_machine() {  # NAME ROUND ARGUMENTS…
  local name=$1 round=$2 code=0
  shift 2
  VANTA_HOST_PROGRAMS=$PWD/$host/winhost/programs VANTA_MACHINE=$work/$name timeout 60 \
    "$work/$name/C/Users/$user/Downloads/$setup" "$@" || code=$?
  $host/vantakit machine show --json "$work/$name" >"$work/$name$round.json"
  keep "$round" "$name" "$work/$name/C/Users/$user" "$code"
}

keep() {  # ROUND SIDE PROFILE CODE: what the listings do not hold, kept word for word
  local roaming=$3/AppData/Roaming
  echo "$4" >"$work/$2$1.exit"
  cp "$roaming/$setup/Logs/$setup.log" "$work/$2$1.setup-log" 2>/dev/null || : >"$work/$2$1.setup-log"
  cp "$roaming/VantaPictor/starts.log" "$work/$2$1.starts" 2>/dev/null || : >"$work/$2$1.starts"
}

# The Linux build gets the product of the Windows one, so both install the same bytes. As it cannot run a Windows
# program, a twin installs the product built for Linux, which shows what those programs do when they are started.
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
$host/vantakit pack --setup $host/bare/$setup --payload $windows/sample-product --skin skin --version "$version" \
  --sign-key build/devkey/dev.key --sign-cert build/devkey/dev.crt --out "$work/$setup" >/dev/null
for name in machine twin; do $host/vantakit machine new "$work/facts.json" "$work/$name"; done
put_setup "$profile/Downloads" $windows/$setup
put_setup "$work/machine/C/Users/$user/Downloads" "$work/$setup"
put_setup "$work/twin/C/Users/$user/Downloads" $host/$setup

date +%s >"$work/begin"
python3 "$here/wine_state.py" baseline "$WINEPREFIX" "$user" >"$work/baseline.json"
under_wine 1 "${first[@]}"
under_wine 2 "${second[@]}"
for name in machine twin; do
  on_machine $name 1 "${first[@]}"
  on_machine $name 2 "${second[@]}"
done
date +%s >"$work/end"

# Once more under Wine, packed for a server that is there and whose root is trusted: what arrives there counts.
port=$(python3 tools/server/loopback.py start "$server")
$host/vantakit pack --setup $windows/bare/$setup --payload $windows/sample-product --skin skin --version "$version" \
  --statistics "localhost:$port" --upgrade "localhost:$port" \
  --sign-key build/devkey/dev.key --sign-cert build/devkey/dev.crt --out "$work/reporting.exe" >/dev/null
put_setup "$profile/Downloads" "$work/reporting.exe"
python3 "$here/trust_root.py" "$server/root.crt" >"$work/root.reg"
in_registry "$work/root.reg"
under_wine 3 "${second[@]}"
# Later starts report to the same server.
cp "$server/access.log" "$work/wine3.requests"

# Libraries that lie beside the setup are left alone. Of those that it takes late, Wine's own system libraries ask for
# imm32 and version too and look for them there, which Windows' do not; the others nobody but the setup asks for.
planted=(psapi wininet winmm wintrust crypt32 gdiplus msimg32)
for name in "${planted[@]}"; do cp $windows/tests/seam/planted.dll "$profile/Downloads/$name.dll"; done
native=$(IFS=,; echo "${planted[*]}")=n,b
if ! WINEDLLOVERRIDES="$native;$WINEDLLOVERRIDES" timeout 60 wine "C:\\users\\$user\\Downloads\\$setup" "${second[@]}" \
    >"$work/planted.log" 2>&1 || [[ -e $WINEPREFIX/drive_c/planted.txt ]]; then
  echo 'a library beside the setup was loaded' >&2
  exit 1
fi
settle

timeout 120 wine "$windows/tests/seam/seam_check.exe" >"$work/seam.log" 2>&1 || true
settle

# By hand, where nothing is installed yet. One font file stands for Windows' own faces, as it does on the Linux side.
new_prefix by_hand
python3 "$here/prefix_settings.py" fonts >"$work/fonts.reg"
in_registry "$work/fonts.reg"
put_setup "$profile/Downloads" $windows/$setup
python3 "$here/wine_state.py" baseline "$WINEPREFIX" "$user" >"$work/baseline_by_hand.json"
$host/vantakit preview SetupWnd.xml --skin $host/skin --page vb_inst --state lb_tips=shown --rects >"$work/rects.json"
WINEDEBUG=-all,fixme+taskschd timeout 300 python3 "$here/by_hand.py" "C:\\users\\$user\\Downloads\\$setup" \
  "$work/rects.json" "$work/code" --from=demo >"$work/hand.log" 2>&1 || { cat "$work/hand.log" >&2; exit 1; }
settle
keep '' hand "$WINEPREFIX/drive_c/users/$user" "$(<"$work/code")"
python3 "$here/wine_state.py" state "$WINEPREFIX" "$user" "$work/baseline_by_hand.json" >"$work/hand.json"
date +%s >"$work/end"

# Every page of the skin, drawn by the same program on both sides.
(cd $host/skin && python3 -c 'import shutil, sys; shutil.make_archive(sys.argv[1], "zip", ".")' "$work/skin")
for dpi in 96 144; do
  mkdir -p "$work/pages/wine$dpi"
  python3 "$here/prefix_settings.py" dpi $dpi >"$work/dpi.reg"
  in_registry "$work/dpi.reg"
  timeout 120 wine $windows/tests/windows/draw_pages.exe "$(winepath -w "$work/skin.zip")" \
    "$(winepath -w "$work/pages/wine$dpi")" >>"$work/pages.log" 2>&1 || { cat "$work/pages.log" >&2; exit 1; }
  settle
  canvas=$work/canvas$dpi
  echo "{\"dpi\": $dpi}" >"$work/canvas.json"
  $host/vantakit machine new "$work/canvas.json" "$canvas"
  mkdir -p "$canvas/C/pages"
  cp "$work/skin.zip" $host/tests/windows/draw_pages.exe "$canvas/C/"
  VANTA_MACHINE=$canvas timeout 120 "$canvas/C/draw_pages.exe" 'C:\skin.zip' 'C:\pages' >>"$work/pages.log" 2>&1 ||
    { cat "$work/pages.log" >&2; exit 1; }
  mv "$canvas/C/pages" "$work/pages/linux$dpi"
done

python3 "$here/compare.py" "$work" "$host/tests/windows/compare_pictures"
