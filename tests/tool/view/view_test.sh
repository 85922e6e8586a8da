#!/usr/bin/env bash
# The viewer in a real window under a virtual X server: real X input typed, clicked and wheeled into
# it, the script's printed events checked, and the window's pixels compared with the host's own
# snapshot of the same area (scaled up by the window's factor). With the script "showcase" it opens
# the built-in form instead and types into its auto-complete field.
#   view_test.sh TOOL SCRIPT OUTDIR SCALE    (run under xvfb-run)
set -euo pipefail
tool=$1 script=$2 out=$3 scale=$4
mkdir -p "$out"
cd "$out"
rm -f host.png real.png events.txt errors.txt

args=(view)
[ "$script" = showcase ] || args+=("$script")
"$tool" "${args[@]}" --scale "$scale" --snapshot host.png --latency >events.txt 2>errors.txt &
viewer=$!
win=$(timeout 20 xdotool search --sync --onlyvisible --name 'quillon view' | head -1)
eval "$(xdotool getwindowgeometry --shell "$win")"
# The keyboard's focus given to the window before any input, and a moment for its first frame: on a
# busy machine the first keys could otherwise reach the window before it takes them.
xdotool windowfocus --sync "$win"
sleep 0.5

# Moves the pointer to a point of the form, in the form's own pixels.
at() { xdotool mousemove --sync $((X + $1 * scale)) $((Y + $2 * scale)); }
fail() { echo "view_test: $*" >&2; cat errors.txt >&2; exit 1; }
heard() { grep -c "$1" events.txt || true; }

if [ "$script" = showcase ]; then
  at 450 124 && xdotool click 1 && xdotool type --delay 20 ber && xdotool key Down   # the city field
  at 300 280
else
  at 100 22 && xdotool click 1 && xdotool type --delay 20 5551234567   # the phone field
  at 202 50 && xdotool mousedown 1 && sleep 0.8 && xdotool mouseup 1    # the upper spin button, held
  at 100 56 && xdotool click 5 && xdotool click 4                       # a wheel turn each way
  at 150 70
fi
sleep 0.5
import -window "$win" real.png
xdotool key ctrl+q
wait "$viewer"

if [ "$script" = showcase ]; then
  [ "$(heard '^City: ber$')" -eq 1 ] || fail "the city field did not hear 'ber': $(tr '\n' '|' <events.txt)"
else
  [ "$(heard '^Change (555) 123-4567$')" -eq 1 ] || fail "the last digit's Change is missing: $(tr '\n' '|' <events.txt)"
  [ "$(heard '^Change')" -eq 10 ] || fail "expected 10 Change events: $(tr '\n' '|' <events.txt)"
  [ "$(heard '^ClickSpin 0$')" -ge 3 ] || fail "a held spin button repeats: $(tr '\n' '|' <events.txt)"
fi
expected=host.png
if [ "$scale" != 1 ]; then
  /usr/bin/convert host.png -scale "$((scale * 100))%" host-scaled.png
  expected=host-scaled.png
fi
differing=$(compare -metric AE real.png "$expected" null: 2>&1 || true)
[ "$differing" = 0 ] || fail "the window differs from the host's screen in $differing pixels"
grep 'key to repainted window' errors.txt
echo "view_test: $script at scale $scale: window and host agree"
