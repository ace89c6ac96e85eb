#!/usr/bin/env bash
# The floors of src/ and what each may include (a test of the suite runs this):
#   store/      records and bounds: nothing outside store/
#   text/       store/ and text/
#   run/        store/, text/ and run/; run/prompt_service.h nothing of ours at all
#   analysis rooms (input, engine, bootstrap, comparison, multinomial, groupreared, transforms,
#   analyses): never commands/ or ui/
# Prints every include that breaks a rule and exits 1 when there is one.
set -uo pipefail
cd "$(dirname "$0")/../src"
bad=0
report() { echo "$1: $2"; bad=1; }

includes() {  # file -> the folders of its own includes, one "folder header" per line
  grep -hoE '^[[:space:]]*#[[:space:]]*include[[:space:]]+"[^"]+"' "$1" | sed -E 's/.*"([^"]+)".*/\1/'
}

check_room() {  # room, allowed folders (regex)
  local room=$1 allowed=$2
  [ -d "$room" ] || return 0
  while IFS= read -r f; do
    while IFS= read -r inc; do
      [[ "$inc" == */* ]] || continue
      [[ "${inc%%/*}" =~ ^($allowed)$ ]] || report "$f" "includes $inc"
    done < <(includes "$f")
  done < <(find "$room" -name '*.h' -o -name '*.cpp')
}

check_room store 'store'
check_room text 'store|text'
check_room run 'store|text|run'
for room in input engine bootstrap comparison multinomial groupreared transforms analyses; do
  check_room "$room" 'store|text|run|input|engine|bootstrap|comparison|multinomial|groupreared|transforms|analyses'
done
if [ -n "$(includes run/prompt_service.h)" ]; then report run/prompt_service.h "includes a header of ours"; fi
exit $bad
