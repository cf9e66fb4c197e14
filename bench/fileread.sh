#!/usr/bin/env bash
# Times `fileread` over a large text file against `wc -l` on the same file, and prints the ratio.
#
#   bash bench/fileread.sh [LINES]      (default 1000000 lines of 100 bytes: 100 MB)
#
# quillerc is built in Release in build-bench/ when needed. The file is generated once in
# ${TMPDIR:-/tmp} and read once before timing, so both programs read it from the page cache.
# The script loop runs four statements per line (while, the counter, fileread, endwhile), so the
# interpreter's per-statement cost, not the reading, sets quillerc's time.
set -euo pipefail

ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
N="${1:-1000000}"
[[ "$N" =~ ^[1-9][0-9]*$ ]] || { echo "usage: bench/fileread.sh [LINES]" >&2; exit 2; }

WORK="$(mktemp -d "${TMPDIR:-/tmp}/quiller-fileread.XXXXXX")"
trap 'rm -rf "$WORK"' EXIT

. "$ROOT/bench/build_quillerc.sh"

# 100-byte lines: a 7-digit number, a blank, 91 letters and a line feed.
DATA="$WORK/lines.txt"
echo "Generating $N lines in $DATA..."
awk -v n="$N" 'BEGIN { pad = sprintf("%91s", ""); gsub(/ /, "q", pad)
                       for (i = 1; i <= n; i++) printf "%07d %s\n", i, pad }' >"$DATA"
BYTES=$(stat -c %s "$DATA")
cat "$DATA" >/dev/null

cat >"$WORK/fileread.prg" <<'PRG'
sub main
  set $f$ fileopen "$param[1]$"
  set $n$ 0
  set $line$ fileread $f$
  while "$line$" <> "(eof)"
    set $n$ $n$ + 1
    set $line$ fileread $f$
  endwhile
  fileclose $f$
  print $n$
endsub
PRG

# seconds COMMAND...: wall-clock seconds of one run; its stdout goes to $WORK/out.
seconds() {
    local start end
    start=$(date +%s.%N)
    "$@" </dev/null >"$WORK/out"
    end=$(date +%s.%N)
    awk -v a="$start" -v b="$end" 'BEGIN { printf "%.3f", b - a }'
}

echo "Running wc -l..."
WC=$(seconds wc -l "$DATA")
[ "$(awk '{ print $1 }' "$WORK/out")" = "$N" ] || { echo "bench: wc -l miscounted" >&2; exit 1; }
echo "Running quillerc..."
Q=$(seconds "$QUILLERC" "$WORK/fileread.prg" "$DATA")
[ "$(tr -d '[:space:]' <"$WORK/out")" = "$N" ] || {
    echo "bench: quillerc counted $(cat "$WORK/out")" >&2
    exit 1
}

echo
echo "fileread over $N lines, $BYTES bytes"
awk -v n="$N" -v bytes="$BYTES" -v wc="$WC" -v q="$Q" 'BEGIN {
    printf "%-10s %10s %14s %10s\n", "program", "seconds", "lines/s", "MB/s"
    printf "%-10s %10.3f %14.0f %10.1f\n", "wc -l", wc, n / wc, bytes / wc / 1e6
    printf "%-10s %10.3f %14.0f %10.1f\n", "quillerc", q, n / q, bytes / q / 1e6
    printf "quillerc takes %.1f times as long as wc -l (the goal is at most 2)\n", q / wc
}'
