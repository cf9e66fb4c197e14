#!/usr/bin/env bash
# Directory scans against their peers, in one run:
#   1. dirscan (walk + sort + scan file) of a tree of FOLDERS x FILES entries (default
#      1,000 x 1,000, warm cache) against `find TREE -printf '%P*%T@*%m*%s\n'`, with the peak
#      memory of both;
#   2. sorting 1,000,000 names (quiller_micro_bench) against `sort -f` of the same names;
#   3. reading a 1,000,000-line scan file (quiller_micro_bench) against awk splitting the
#      lines at "*".
# The mirror's own figures (dircopy against rsync) come from bench/dircopy.sh.
#
#   bash bench/sync.sh              # 1,000 folders of 1,000 files
#   bash bench/sync.sh 100 1000     # a smaller tree: 100 folders of 1,000 files
set -euo pipefail

FOLDERS="${1:-1000}"
FILES="${2:-1000}"
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
WORK="$(mktemp -d "${TMPDIR:-/tmp}/quiller-sync.XXXXXX")"
trap 'rm -rf "$WORK"' EXIT

. "$ROOT/bench/build_quillerc.sh"
export TMPDIR="$WORK/" QUILLER_REGISTRY="$WORK/registry.db"

now() { date +%s.%N; }
secs() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", b - a }'; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", (b > 0) ? a / b : 0 }'; }
# peak_kb COMMAND...: runs it, prints its peak resident memory in KB (GNU time).
peak_kb() { /usr/bin/time -f %M -o "$WORK/peak" "$@" >/dev/null; cat "$WORK/peak"; }
# row LABEL OURS PEER_LABEL PEER [NOTE]
row() {
    printf '  %-30s %8s s   %-34s %8s s   peer/ours %s %s\n' "$1" "$2" "$3" "$4" "$(ratio "$4" "$2")" "${5:-}"
}

# The tree generator: FOLDERS folders of FILES empty files, folder and file times set.
echo "Generating $FOLDERS x $FILES entries..." >&2
python3 - "$WORK/tree" "$FOLDERS" "$FILES" <<'PY'
import os, sys
root, folders, files = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
for d in range(folders):
    folder = os.path.join(root, "Folder%04d" % d)
    os.makedirs(folder)
    for f in range(files):
        path = os.path.join(folder, "file_%d.dat" % (f * 7919 % files))
        open(path, "wb").close()
        os.utime(path, (1600000000 + f, 1600000000 + f))
PY
ENTRIES=$((FOLDERS * (FILES + 1)))

cat >"$WORK/dirscan.prg" <<'PRG'
sub main
  dirscan "$param[1]$" "$param[2]$" {quiet}
endsub
PRG

find "$WORK/tree" -printf '%P*%T@*%m*%s\n' >/dev/null  # warm the cache
"$QUILLERC" "$WORK/dirscan.prg" "$WORK/tree" "$WORK/tree.scn" >/dev/null
d0=$(now); "$QUILLERC" "$WORK/dirscan.prg" "$WORK/tree" "$WORK/tree.scn" >/dev/null; d1=$(now)
f0=$(now); find "$WORK/tree" -printf '%P*%T@*%m*%s\n' >"$WORK/find.txt"; f1=$(now)
[ "$(($(wc -l <"$WORK/tree.scn") - 1))" = "$ENTRIES" ] || { echo "bench: dirscan miscounted" >&2; exit 1; }
DPEAK=$(peak_kb "$QUILLERC" "$WORK/dirscan.prg" "$WORK/tree" "$WORK/tree.scn")
FPEAK=$(peak_kb find "$WORK/tree" -printf '%P*%T@*%m*%s\n')

# 1,000,000 names for sort -f, as the micro benchmark makes them.
awk 'BEGIN { for (d = 0; d < 1000; d++) { print "Folder" (1000 + d)
             for (f = 999; f >= 0; f--) print "Folder" (1000 + d) "/file_" (f * 7919 % 1000) ".Dat" } }' \
    >"$WORK/names.txt"
s0=$(now); LC_ALL=C.UTF-8 sort -f "$WORK/names.txt" >/dev/null; s1=$(now)
# A 1,000,000-line scan file for awk.
awk 'BEGIN { for (i = 0; i < 1000000; i++) printf "Folder%d/file_%d.Dat*45000.2500115741*32*%d\n", i % 1000, i, i }' \
    >"$WORK/million.scn"
a0=$(now); awk -F'*' '{ n += $4 } END { print n }' "$WORK/million.scn" >/dev/null; a1=$(now)

echo
echo "Directory scans (load average $(cut -d' ' -f1 /proc/loadavg); peer/ours above 1: Quiller is faster)"
row "dirscan, $ENTRIES entries" "$(secs "$d0" "$d1")" "find -printf" "$(secs "$f0" "$f1")"
printf '  %-30s %8s MB   %-34s %8s MB   (goal: under 200 MB)\n' "dirscan, peak memory" \
    "$((DPEAK / 1024))" "find, peak memory" "$((FPEAK / 1024))"

MICRO="$ROOT/build-bench-micro/bench/quiller_micro_bench"
if cmake -S "$ROOT" -B "$ROOT/build-bench-micro" -DCMAKE_BUILD_TYPE=Release -DQUILLER_BENCH=ON \
        -DQUILLER_TESTS=OFF >"$WORK/micro.log" 2>&1 &&
    cmake --build "$ROOT/build-bench-micro" -j 2 --target quiller_micro_bench >>"$WORK/micro.log" 2>&1; then
    "$MICRO" --benchmark_filter='SyncSort|SyncRead' --benchmark_format=csv 2>/dev/null >"$WORK/micro.csv"
    ms() { awk -F, -v name="$1" 'index($1, name) { printf "%.2f", $4 / 1000 }' "$WORK/micro.csv"; }
    row "sort 1,000,000 names" "$(ms SyncSort)" "sort -f" "$(secs "$s0" "$s1")" "(goal: under 0.5 s, CPU)"
    row "read 1,000,000-line scan file" "$(ms SyncRead)" "awk -F'*'" "$(secs "$a0" "$a1")" "(goal: under 0.5 s, CPU)"
else
    echo "  (sort and read: quiller_micro_bench not built; see $WORK/micro.log)"
fi
