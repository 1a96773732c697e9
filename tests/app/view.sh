#!/usr/bin/env bash
# The interactive window under real key and mouse events: view.sh PROGRAM EXAMPLES (inside a display of its own)
set -uo pipefail
program=$1
examples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"; kill "$pid" 2>/dev/null' EXIT
cd "$work" || exit 1
failures=0

fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}

open_window() {
    "$program" view "$1" 2>err &
    pid=$!
    local window
    window=$(timeout 60 xdotool search --sync --onlyvisible --name mechanism-cell | head -1)
    [ -n "$window" ] || { fail "no window: $(cat err)"; exit 1; }
    xdotool windowfocus "$window" mousemove 640 400
}

# Keys are not heard before the motions are planned: presses them until a picture comes, slowly, since every
# press that is heard late gives a picture of its own. ready KEY...
ready() {
    local tries=0 waits
    until compgen -G "${cell}_*.png" >/dev/null; do
        xdotool key "$@"
        tries=$((tries + 1))
        [ $tries -lt 12 ] || { fail "never ready: $(cat err)"; exit 1; }
        for ((waits = 0; waits < 100; ++waits)); do
            compgen -G "${cell}_*.png" >/dev/null && break
            sleep 0.1
        done
    done
    count=0
    while [ "$count" -ne "$(compgen -G "${cell}_*.png" | wc -l)" ]; do
        count=$(compgen -G "${cell}_*.png" | wc -l)
        [ $tries -eq 1 ] || sleep 3
    done
}

# Saves a picture and waits for it: shoot NAME
shoot() {
    count=$((count + 1))
    xdotool key s
    local tries=0
    until [ -s "${cell}_$count.png" ]; do
        sleep 0.1
        tries=$((tries + 1))
        [ $tries -lt 300 ] || { fail "no picture $1"; exit 1; }
    done
    mv "${cell}_$count.png" "$1.png"
}

same() { cmp -s "$1.png" "$2.png" || fail "$3"; }
differ() { ! cmp -s "$1.png" "$2.png" || fail "$3"; }

cell=rail_and_positioner
open_window "$examples/cells/$cell.json"
ready s
shoot start
xdotool key 2 Right shift+Right; shoot jogged
differ start jogged "an axis does not move"
xdotool key Home 1; shoot home
same start home "Home does not bring the axes back"
for toggle in t w m p h; do
    xdotool key $toggle; shoot on
    xdotool key $toggle; shoot off
    xdotool key $toggle $toggle; shoot again
    differ on home "key $toggle shows nothing"
    differ on off "key $toggle cannot be undone"
    same off again "key $toggle twice leaves something behind"
done
xdotool key space; sleep 1; xdotool key space; shoot played
differ start played "the motion does not play"
xdotool key Home comma comma f; xdotool mousedown 1 mousemove_relative 150 50 mouseup 1; shoot turned
xdotool click 4 click 4; shoot zoomed
differ turned zoomed "the wheel does not zoom"
xdotool key f; shoot fitted
differ zoomed fitted "F does not bring the whole cell back"
xdotool key q
wait "$pid" || fail "closing gives exit code $?: $(cat err)"

# A motion of very many states can be cancelled; the cell stays, without motions.
cell=long
sed 's/"steps_deg": \[[^]]*\]/"steps_deg": [0.0005, 1, 1, 1, 1, 1]/; s#"\.\./#"'"$examples"'/#' \
    "$examples/cells/arc_welding.json" | sed 's/"name": "arc_welding"/"name": "long"/' >long.json
open_window "$work/long.json"
ready Escape s
shoot cancelled
xdotool key space; sleep 0.5; shoot still
same cancelled still "a cancelled motion plays"
xdotool key q
wait "$pid" || fail "closing gives exit code $?: $(cat err)"

[ $failures -eq 0 ] && echo "view: all passed"
exit $failures
