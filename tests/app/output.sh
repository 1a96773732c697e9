#!/usr/bin/env bash
# What --out does to links, devices, folders and other processes: output.sh PROGRAM EXAMPLES
set -uo pipefail
program=$(realpath "$1")
examples=$(realpath "$2")
[ -x "$program" ] || exit 1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0
export ASAN_OPTIONS=fast_unwind_on_malloc=0

fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}

path() { "$program" path "$examples/cells/seam.json" --name saddle --out "$@"; }
save() { "$program" save "$examples/cells/arc_welding.json" --out "$@" >/dev/null; }
path good.json >/dev/null || fail "path: no output to compare with"

# Standard output by its names holds the result alone.
for name in - /dev/stdout; do
    path "$name" 2>err | cmp -s - good.json || fail "--out $name: not what a file gets"
    grep -q smoothed err || fail "--out $name: says nothing on standard error"
done
"$program" plan "$examples/cells/arc_welding.json" --out - 2>/dev/null >trace.json
grep -q '"motions"' trace.json || fail "plan --out -"
save - 2>err && fail "save: took standard output for a folder"
grep -q "^-: is standard output, expected" err || fail "save --out -: $(cat err)"

# What is no regular file stays what it is.
mkfifo pipe
cat pipe >piped.json &
path pipe >/dev/null || fail "--out PIPE"
wait $!
[ -p pipe ] && cmp -s piped.json good.json || fail "a pipe was replaced, or did not get the result"
if mknod null c 1 3 2>/dev/null && true >null; then
    path null >/dev/null || fail "--out DEVICE"
    [ -c null ] || fail "a device was replaced"
fi
path /dev/full 2>err >/dev/null && fail "a full device went unseen"
grep -q "^/dev/full: cannot be written, expected" err || fail "full device: $(cat err)"

# Links stay, what they name is written, and who may read it stays as it was.
ln -s real.json link.json
path link.json >/dev/null
[ -L link.json ] && cmp -s real.json good.json || fail "a link was replaced, or its target not written"
chmod 600 real.json
path link.json >/dev/null
[ "$(stat -c %a real.json)" = 600 ] || fail "an output file changed its permissions"
mkdir real
ln -s real link
save link || fail "save into a linked folder"
save link || fail "save into a linked folder again"
[ -L link ] && [ -s real/cell.json ] || fail "a link to a folder was replaced, or its target not written"
touch real/mechanisms/notes
save link 2>err && fail "save: took somebody's notes away"
grep -q "holds mechanisms/notes" err || fail "save: $(cat err)"

# Each report names the file and what was expected.
ln -s loop loop
long=$(printf 'x%.0s' {1..300})
for target in loop "$long"; do
    for command in path save; do
        $command "$target" >/dev/null 2>err && fail "$command: wrote to ${target:0:9}"
        [[ $(wc -l <err) -eq 1 && $(cat err) == "$target: cannot be written ("*"), expected "* ]] || fail "$command: $(cat err)"
    done
    "$program" info "$target" 2>err && fail "info: read ${target:0:9}"
    [[ $(wc -l <err) -eq 1 && $(cat err) == "$target: cannot be read ("*"), expected "* ]] || fail "info: $(cat err)"
done
path "${long:0:255}" >/dev/null || fail "the longest name that the system takes was refused"
printf '{"name": "\xff\xfe"}' >bytes.json
"$program" info bytes.json 2>err && fail "info: took bytes that are no UTF-8"
grep -q "^bytes.json: Line 1: .*, expected UTF-8" err || fail "invalid UTF-8: $(cat err)"
# The address sanitizer reserves more address space than the limit allows.
if ! grep -q __asan_init "$program"; then
    (ulimit -v 1000000 && head -c 400000000 /dev/zero | tr '\0' '[' >big.json && "$program" info big.json 2>err >out)
    grep -q "^big.json: .*, expected" err || fail "the end of memory: $(cat err)"
    rm -f big.json
fi

(ulimit -f 8 && "$program" workspace "$examples/cells/arc_welding.json" --robot welder --out full.brep 2>err) &&
    fail "workspace: a full disk went unseen"
grep -q "^full.brep: cannot be written, expected" err || fail "a full disk behind a BRep: $(cat err)"

# Several at once: one of them is there, whole, and nothing else.
rm -rf real
mkdir many
for _ in 1 2 3 4; do save many/out & done
wait
"$program" info many/out/cell.json >/dev/null || fail "saves at once: no whole cell"
[ "$(ls -A many)" = out ] || fail "saves at once left $(ls -A many)"

# Interrupted: the old result or the new one, and nothing else; the next run clears what a killed one left.
for delay in 0.05 0.1 0.15 0.2; do
    for signal in TERM INT HUP KILL; do
        "$program" save "$examples/cells/painting.json" --out many/out >/dev/null &
        sleep "$delay"
        kill -s "$signal" $! 2>/dev/null
        wait $! 2>/dev/null
        "$program" info many/out/cell.json >/dev/null || fail "$signal after $delay s: no whole cell"
        [ "$signal" = KILL ] && save many/out
        [ "$(ls -A many)" = out ] || fail "$signal after $delay s left $(ls -A many)"
    done
done

# A signal just before the new folder is exchanged for the old one, which happens while scratch is removed slowly.
if command -v strace >/dev/null; then
    strace -f -o /dev/null -e inject=renameat2:delay_enter=1500000 -e inject=unlinkat:delay_enter=60000 \
        "$program" save "$examples/cells/painting.json" --out many/out >/dev/null 2>&1 &
    tracer=$!
    sleep 1
    kill -s TERM "$(pgrep -P "$tracer")"
    wait "$tracer"
    "$program" info many/out/cell.json >/dev/null || fail "TERM during the exchange: no whole cell"
    [ "$(ls -A many)" = out ] || fail "TERM during the exchange left $(ls -A many)"
fi

exit $((failures > 0))
