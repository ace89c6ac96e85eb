#!/usr/bin/env bash
# Takes the picture of the console that the README shows: korvan-gui runs "A1. Read data" and
# "A2. Basic Run" on the bundled example under a virtual X display (Xvfb), answering its
# dialogues from the answers below, and saves a picture of its window once the run has ended.
# Usage: scripts/screenshot.sh [image]   (default docs/screenshot.png; builds what is missing)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
image=${1:-docs/screenshot.png}
case "$image" in /*) ;; *) image="$root/$image" ;; esac

[ -x build/korvan-gui ] || scripts/setup.sh build
command -v xvfb-run >/dev/null || { echo "screenshot: xvfb-run is missing (scripts/setup.sh installs xvfb)" >&2; exit 1; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp examples/mite.txt "$work/"
# The regular road through A1 (no Fast Run, no flow record); A2's own dialogues at their defaults.
cat >"$work/basic.answers" <<'ANSWERS'
Open life table data file = mite.txt
Do you need only the basic output (0A) and figure files? = No
Fast run for two-sex or parthenogenetic population? = Cancel
Do you need flow record? = No
Do you need the contribution of this life table to intrinsic rate? = No
Life table only? = Yes
ANSWERS

mkdir -p "$(dirname "$image")"
cd "$work"
xvfb-run -a -s "-screen 0 1400x1050x24" \
  "$root/build/korvan-gui" --answers basic.answers --defaults --grab "$image" A1 A2
echo "screenshot: $image"
