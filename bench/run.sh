#!/usr/bin/env bash
# Times the same counting loop in quillerc and in bash, python3 and tclsh, and prints a table.
#
#   bash bench/run.sh [ITERATIONS]      (default 1000000)
#
# quillerc is built in Release in build-bench/ when needed (an up-to-date build takes a second).
# A peer that is not installed is skipped. See bench/README.md.
set -euo pipefail

ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
N="${1:-1000000}"
[[ "$N" =~ ^[1-9][0-9]*$ ]] || { echo "usage: bench/run.sh [ITERATIONS]" >&2; exit 2; }
# Statements per iteration, counted the same way for every peer: the loop test, the increment
# and the jump back (in a script: while, set, endwhile).
STATEMENTS=$((3 * N))

WORK="$(mktemp -d "${TMPDIR:-/tmp}/quiller-bench.XXXXXX")"
trap 'rm -rf "$WORK"' EXIT

. "$ROOT/bench/build_quillerc.sh"

# The loop in each language; each prints the final count so the result can be checked.
sed "s/1000000/$N/" "$ROOT/bench/loop.prg" >"$WORK/loop.prg"
cat >"$WORK/loop.sh" <<EOF
main() {
    local i=0
    while (( i < $N )); do
        i=\$((i + 1))
    done
    echo "\$i"
}
main
EOF
cat >"$WORK/loop.py" <<EOF
def main():
    i = 0
    while i < $N:
        i = i + 1
    print(i)
main()
EOF
cat >"$WORK/loop.tcl" <<EOF
proc main {} {
    set i 0
    while {\$i < $N} {
        set i [expr {\$i + 1}]
    }
    puts \$i
}
main
EOF

# run NAME COMMAND...: times one peer; appends "name seconds status" to the results.
RESULTS=()
run() {
    local name="$1" start end out rc secs
    shift
    echo "Running $name..."
    start=$(date +%s.%N)
    set +e
    out=$("$@" </dev/null 2>"$WORK/$name.err")
    rc=$?
    set -e
    end=$(date +%s.%N)
    secs=$(awk -v a="$start" -v b="$end" 'BEGIN { printf "%.3f", b - a }')
    if [ "$rc" -ne 0 ]; then
        RESULTS+=("$name $secs failed(exit-$rc)")
        sed -n '1,5p' "$WORK/$name.err" | sed "s/^/  $name: /" >&2
    elif [ "$(printf '%s' "$out" | tail -n 1 | tr -d '[:space:]')" != "$N" ]; then
        RESULTS+=("$name $secs wrong-result")
        echo "  $name printed: $(printf '%s' "$out" | tail -n 1)" >&2
    else
        RESULTS+=("$name $secs ok")
    fi
}

run quillerc "$QUILLERC" "$WORK/loop.prg"
run bash bash "$WORK/loop.sh"
for peer in python3 tclsh; do
    if command -v "$peer" >/dev/null 2>&1; then
        case "$peer" in
            python3) run python3 python3 "$WORK/loop.py" ;;
            tclsh) run tclsh tclsh "$WORK/loop.tcl" ;;
        esac
    else
        echo "Skipping $peer: not installed"
    fi
done

# The table. "time / quillerc" is the peer's time divided by quillerc's: above 1 means the peer
# is slower than quillerc.
echo
echo "Counting loop, $N iterations, $STATEMENTS statements"
printf '%s\n' "${RESULTS[@]}" | awk -v stmts="$STATEMENTS" '
    { name[NR] = $1; secs[NR] = $2; status[NR] = $3
      if ($1 == "quillerc" && $3 == "ok") base = $2 }
    END {
        printf "%-10s %10s %16s %16s  %s\n", "peer", "seconds", "statements/s", "time/quillerc", "note"
        for (i = 1; i <= NR; i++) {
            rate = (secs[i] > 0) ? sprintf("%.0f", stmts / secs[i]) : "-"
            ratio = (base > 0 && status[i] == "ok") ? sprintf("%.2f", secs[i] / base) : "n/a"
            note = (status[i] == "ok") ? "" : status[i]
            if (status[i] != "ok") rate = "-"
            printf "%-10s %10.3f %16s %16s  %s\n", name[i], secs[i], rate, ratio, note
        }
    }'
