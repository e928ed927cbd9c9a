#!/usr/bin/env bash
# Installs the Debian packages that a group of targets needs. Silent and quick when nothing is missing.
#   tools/deps.sh GROUP      build | run | test | wine | bench | lint
set -euo pipefail

build=(g++ clang cmake ninja-build ccache make pkg-config python3 git zlib1g-dev libsqlite3-dev libssl-dev
       nlohmann-json3-dev libpugixml-dev libarchive-dev libgtest-dev osslsigncode openssl librsvg2-bin icoutils optipng libnanosvg-dev
       g++-mingw-w64-i686-win32 g++-mingw-w64-x86-64-win32 libz-mingw-w64-dev libcurl4-openssl-dev ca-certificates
       libcairo2-dev libpango1.0-dev libfontconfig-dev libgdk-pixbuf-2.0-dev libxcb1-dev
       libxcb-shape0-dev libxcb-icccm4-dev libxcb-keysyms1-dev fonts-wqy-microhei)
case "${1:?group}" in
  build)   need=("${build[@]}") ;;
  run)     need=(nginx-light) ;;
  test)    need=(nginx-light libclang-rt-14-dev zip unzip p7zip-full libarchive-tools xvfb xdotool twm x11-utils) ;;
  wine)    need=(wine64 wine xvfb xauth xdotool x11-apps) ;;
  bench)   need=(unzip p7zip-full libarchive-tools time qtbase5-dev) ;;
  gallery) need=(imagemagick) ;;
  lint)    need=(clang-format python3 binutils) ;;
  *) echo "deps: no group named $1" >&2; exit 2 ;;
esac

missing=()
while IFS= read -r package; do missing+=("$package"); done < <(
  comm -23 <(printf '%s\n' "${need[@]}" | sort -u) \
           <(dpkg-query -W -f='${db:Status-Abbrev} ${Package}\n' 2>/dev/null | sed -n 's/^ii  *//p' | sort -u))
((${#missing[@]})) || exit 0

as_root=()
if ((EUID != 0)); then
  command -v sudo >/dev/null || { echo "deps: install as root: ${missing[*]}" >&2; exit 1; }
  as_root=(sudo)
fi

log=$(mktemp)
trap 'rm -f "$log"' EXIT
quietly() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "$@" >>"$log" 2>&1 || { tail -n 30 "$log" >&2; return 1; }; }

# NanoSVG entered Debian one release after 12. That release is added from the machine's own mirror, its main suite
# alone, pinned so low that a package comes from it only when no other source has it.
add_next_release() {
  . /etc/os-release
  [[ "${VERSION_CODENAME:-}" == bookworm ]] || { echo "deps: no source for libnanosvg-dev on ${PRETTY_NAME:-this system}" >&2; return 1; }
  local next=trixie uri signed
  uri=$(awk '/^URIs:/ {u=$2} /^Suites:/ && /(^| )bookworm( |$)/ {print u; exit}' /etc/apt/sources.list.d/*.sources 2>/dev/null || true)
  signed=$(awk '/^Signed-By:/ {print $2; exit}' /etc/apt/sources.list.d/debian.sources 2>/dev/null || true)
  if [[ -z "$uri" ]]; then
    uri=$(cat /etc/apt/sources.list /etc/apt/sources.list.d/*.list 2>/dev/null |
          sed -E 's/^deb +\[[^]]*\] */deb /' | awk '$1 == "deb" && $3 == "bookworm" {print $2; exit}')
  fi
  [[ -n "$uri" ]] || { echo "deps: no package source of this release found" >&2; return 1; }
  : "${signed:=/usr/share/keyrings/debian-archive-keyring.gpg}"
  printf 'Types: deb\nURIs: %s\nSuites: %s\nComponents: main\nSigned-By: %s\n' "$uri" "$next" "$signed" |
    "${as_root[@]}" tee /etc/apt/sources.list.d/vanta-next-release.sources >/dev/null
  printf 'Package: *\nPin: release n=%s\nPin-Priority: 1\n' "$next" |
    "${as_root[@]}" tee /etc/apt/preferences.d/vanta-next-release >/dev/null
}

# No server package may start its service: our own tests run the servers they need. Where nothing says so already,
# this does until the installation is over.
hold_services() {
  [[ ! -e /usr/sbin/policy-rc.d ]] || return 0
  printf '#!/bin/sh\nexit 101\n' | "${as_root[@]}" tee /usr/sbin/policy-rc.d >/dev/null
  "${as_root[@]}" chmod 755 /usr/sbin/policy-rc.d
  trap 'rm -f "$log"; "${as_root[@]}" rm -f /usr/sbin/policy-rc.d' EXIT
}

echo "deps: installing ${missing[*]}" >&2
hold_services
quietly apt-get update
if [[ " ${missing[*]} " == *" libnanosvg-dev "* ]] && [[ $(apt-cache policy libnanosvg-dev) != *"Candidate: "[0-9]* ]]; then
  add_next_release
  quietly apt-get update
fi
quietly apt-get install -y --no-install-recommends "${missing[@]}"
