#!/usr/bin/env bash
# Exit codes and streams of the program itself: program.sh PROGRAM EXAMPLES
set -uo pipefail
program=$1
examples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
# Under a leak checker what the kernel's part reader keeps is told from the program's own by whole stacks only.
stacks=fast_unwind_on_malloc=0

fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}

# expect CODE LINES_ON_STDERR ARGUMENT...
expect() {
    local code=$1 lines=$2 got
    shift 2
    "$program" "$@" >"$work/out" 2>"$work/err" </dev/null
    got=$?
    [ "$got" -eq "$code" ] || fail "$*: exit code $got, expected $code"
    if [ "$lines" != any ] && [ "$(wc -l <"$work/err")" -ne "$lines" ]; then
        fail "$*: standard error has $(wc -l <"$work/err") lines, expected $lines: $(cat "$work/err")"
    fi
    if [ "$code" -ne 0 ] && [ -s "$work/out" ]; then
        fail "$*: wrote to standard output in spite of the failure"
    fi
}

arm=$examples/arms/ur_ur10e.json
cell=$examples/cells/arc_welding.json

expect 0 0 info "$arm"
grep -q -- "-270 to 450" "$work/out" || fail "info: the limits are not the file's"
expect 0 0 info "$cell"
grep -q "3: -60.0001 to 65.0021, direction 0 1 0, origin 100 0 1620" "$work/out" ||
    fail "info: a joint is not shown as the files have it"
expect 0 0 fk "$arm" --values-deg -10,20,30,40,50,60
expect 0 2 fk "$arm" --values-deg -400,20,30,40,50,460
grep -q -- "-400 degrees at joint 1 of ur_ur10e, expected from -360 to 360; computed" "$work/err" &&
    grep -q "460 degrees at joint 6" "$work/err" || fail "fk: does not name the values outside the limits"
expect 1 1 fk "$arm" --strict --values-deg -10,20,30,40,50,460
coupled=$examples/arms/abb_irb5400_paint.json
"$program" fk "$coupled" --values-deg 10,20,30,40,50,60 >"$work/pose"
"$program" ik "$coupled" <"$work/pose" >"$work/solutions" || fail "ik: does not take what fk prints"
"$program" fk "$coupled" <"$work/solutions" >"$work/poses" || fail "fk: does not take what ik prints"
cat "$work/pose" "$work/poses" | tr -c '0-9eE.+\n-' ' ' | awk '
    { split("", now); n = 0; for (i = 1; i <= NF; ++i) if ($i ~ /[0-9]/) now[++n] = $i }
    NR == 1 { for (i = 1; i <= 12; ++i) first[i] = now[i] }
    { for (i = 1; i <= 12; ++i) if ((now[i] - first[i])^2 > 1e-14) bad = 1 }
    END { exit bad || NR < 9 }' || fail "fk | ik | fk: another pose, or fewer than 8"
printf '%s\n{"tcp_origin_mm": [1, 2]}\n' "$(cat "$work/pose")" | "$program" ik "$coupled" >"$work/out" 2>"$work/err" &&
    fail "ik: takes a pose of two numbers"
cmp -s "$work/out" "$work/solutions" || fail "ik: the line before a faulty one is not answered"
grep -q "line 2: tcp_origin_mm: 2 numbers, expected 3" "$work/err" || fail "ik: does not say what is wrong where"
expect 0 0 info "$examples/cells/rail_and_positioner.json" --json
grep -q '"slices"' "$work/out" || fail "info --json: does not say where the values lie"
expect 0 0 completion
bash -c "source '$work/out' && COMP_WORDS=(x re) COMP_CWORD=1 && _mechanism_cell && [ \${COMPREPLY[0]} = render ]" ||
    fail "completion: re does not complete to render"
expect 0 0 plan "$cell" --out "$work/plan"
[ -s "$work/plan/trace.json" ] || fail "plan: no trace"

expect 0 0 save "$cell" --out "$work/saved"
expect 0 0 info "$work/saved/cell.json"
expect 0 0 info "$examples/cells/painting.json"
grep -q "spray cone" "$work/out" || fail "info: the painting tool has no cone"

expect 0 0 plan "$examples/cells/rail_and_positioner.json" --out "$work/rail"
grep -q removed "$work/out" || fail "plan: does not say how many states it removed"
expect 0 0 plan "$examples/cells/two_robots.json" --out "$work/two"
grep -q SystemIndex "$work/two/trace.json" || fail "plan: no context states in the trace of two robots"

ASAN_OPTIONS=$stacks expect 0 0 path "$examples/cells/seam.json" --name saddle --out "$work/path.json"
[ -s "$work/path.json" ] || fail "path: wrote nothing"

ASAN_OPTIONS=$stacks expect 0 0 workspace "$cell" --robot welder --out "$work/reach.step" --section "$work/reach.svg"
grep -q "height z (mm)" "$work/reach.svg" || fail "workspace: the section has no axis in millimetres"
expect 0 0 workspace "$cell" --robot welder --out "$work/reach.stl" --json
grep -q '"section_mm"' "$work/out" || fail "workspace --json: no section"
expect 0 0 workspace --help
grep -q "Examples:" "$work/out" || fail "workspace: help without an example"

expect 1 1 info "$work/absent.json"
expect 1 1 workspace "$cell" --robot nobody --out "$work/none.step"
grep -q "nobody, expected one of welder" "$work/err" || fail "workspace: does not name the robots"
ASAN_OPTIONS=$stacks expect 1 1 path "$examples/cells/seam.json" --name nobody --out "$work/none"
expect 1 1 save "$arm" --out "$work/none"
expect 1 1 fk "$arm" --values-deg 1,2
expect 1 1 fk "$arm" --robot nobody --values-deg 1,2,3,4,5,6
expect 1 1 plan "$arm" --out "$work/none"
[ ! -e "$work/none" ] || fail "a refused command wrote something"
DISPLAY='' expect 1 1 render "$cell" --out "$work/none.png"
expect 1 1 render "$cell" --out "$work/none.txt"
[ ! -e "$work/none.png" ] || fail "render: left a picture behind"

# Names of files are the user's, in any script and locale.
cp -r "$work/saved" "$work/焊接 单元"
LC_ALL=C expect 0 0 save "$work/焊接 单元/cell.json" --out "$work/输出 文件"
cmp -s "$work/saved/cell.json" "$work/输出 文件/cell.json" || fail "save: not the same cell under another name"

# Where the disk has no more room the old output stays, whole and alone.
find "$work/plan" "$work/saved" -type f -exec cksum {} + | sort >"$work/before"
for kilobytes in 0 8 64; do
    ulimit -S -f "$kilobytes"
    expect 1 any plan "$cell" --out "$work/plan"
    expect 1 any save "$cell" --out "$work/saved"
    ulimit -S -f unlimited
    [ "$kilobytes" = 0 ] || grep -q "^$work/saved[/:]" "$work/err" ||
        fail "save: does not name the place it was to write to: $(cat "$work/err")"
done
find "$work/plan" "$work/saved" -type f -exec cksum {} + | sort | cmp - "$work/before" ||
    fail "a full disk changed what was there"
compgen -G "$work/.mechanism-cell-*" && fail "save: left litter behind"
ASAN_OPTIONS=$stacks expect 1 1 path "$examples/cells/seam.json" --name saddle --out /proc/none.json
"$program" info "$arm" >/dev/full 2>"$work/err" && fail "info: a full disk behind standard output went unseen"
head -c 1000 "$arm" >"$work/part.json"
expect 1 1 info "$work/part.json"

expect 2 any
expect 2 any paint "$cell"
expect 2 any plan
expect 2 any render "$cell" --out "$work/none.png" --frames 0
expect 2 any render "$cell" --out "$work/none.png" --sheet

# A picture needs a display; without Xvfb there is nothing to try it on.
if command -v xvfb-run >/dev/null; then
    # Graphics drivers keep memory until the end, which is not the program's to free.
    draw() { ASAN_OPTIONS=detect_leaks=0 xvfb-run -a -s "-screen 0 1280x1024x24" "$program" render "$@"; }
    draw "$cell" --state "$work/plan/trace.json" --out "$work/cell.png" 2>"$work/err" || fail "render: $(cat "$work/err")"
    size=$(od -An -tx1 -j16 -N8 "$work/cell.png" | tr -d ' \n')
    [ "$size" = 00000500000003c0 ] || fail "render: width and height are $size, expected 1280 x 960"
    draw "$examples/cells/two_robots.json" --frames 2 --out "$work/two.png" || fail "render: no frames"
    [ -s "$work/two_01.png" ] && [ -s "$work/two_02.png" ] || fail "render: not one file a frame"
    cmp -s "$work/two_01.png" "$work/two_02.png" && fail "render: nothing moves from frame to frame"
    draw "$cell" --workspace --max-reach --state "$work/plan/trace.json" --out "$work/reach.png" ||
        fail "render: no reach"
    cmp -s "$work/cell.png" "$work/reach.png" && fail "render: the reach is not in the picture"
    draw "$cell" --frames 2 --sheet --focus nobody --out "$work/none.png" 2>"$work/err" && fail "render: focus on nobody"
    grep -q -- "--focus: nobody, expected" "$work/err" || fail "render --focus: $(cat "$work/err")"
    draw "$cell" --frames 1 --sheet --out "$work/all.png"
    draw "$cell" --frames 1 --sheet --focus torch --out "$work/torch.png"
    cmp -s "$work/all.png" "$work/torch.png" && fail "render --frames: the focus changes nothing"
    draw "$cell" --state above_start --out "$work/key.png" ||
        fail "render: no picture of a key state"
    # An empty background compresses to a few kilobytes.
    [ "$(wc -c <"$work/cell.png")" -gt 40000 ] || fail "render: the picture is blank"
fi

exit $((failures > 0))
