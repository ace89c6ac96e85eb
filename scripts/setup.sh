#!/usr/bin/env bash
# Installs what KORVAN needs (Debian packages, only those missing) and builds it in build/.
# Usage: scripts/setup.sh [build-folder] [extra cmake options...]
set -euo pipefail
cd "$(dirname "$0")/.."

packages=(cmake g++ make libfmt-dev libcli11-dev libgtest-dev libgmock-dev libbenchmark-dev
          qt6-base-dev qt6-charts-dev qt6-svg-dev libgl-dev xvfb clang libclang-rt-14-dev)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "setup: installing ${missing[*]}" >&2
  if [ "$(id -u)" -ne 0 ]; then SUDO=sudo; else SUDO=; fi
  $SUDO apt-get update -qq >&2 || true
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq "${missing[@]}" >&2
fi

build=${1:-build}
shift || true
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
cmake --build "$build" -j"$(nproc)" >&2
