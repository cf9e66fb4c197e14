#!/usr/bin/env bash
# dircopy against rsync, in one run:
#   1. 100,000 small files (100 folders of 1,000) into an empty target: dircopy vs rsync -a;
#   2. a mirror with nothing to do: two identical trees of 1,000,000 entries (1,000 folders of
#      1,000 empty files; the second made of hard links): dircopy vs rsync -a -n --delete;
# and the merge of two 1,000,000-entry listings alone (quiller_micro_bench, when built with
# -DQUILLER_BENCH=ON).
#
#   bash bench/dircopy.sh             # the full sizes
#   bash bench/dircopy.sh 100         # folders of the no-op trees (100: 100,100 entries)
#   QUILLERC=build/src/quillerc MICRO=build-bench/bench/quiller_micro_bench bash bench/dircopy.sh
#                                     # programs already built
set -euo pipefail

BIG_FOLDERS="${1:-1000}"
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
WORK="$(mktemp -d "${TMPDIR:-/tmp}/quiller-dircopy.XXXXXX")"
trap 'rm -rf "$WORK"' EXIT

[ -n "${QUILLERC:-}" ] || . "$ROOT/bench/build_quillerc.sh"  # or QUILLERC=... given
export TMPDIR="$WORK/" QUILLER_REGISTRY="$WORK/registry.db"
command -v rsync >/dev/null || { echo "bench: rsync is needed (apt-get install rsync)" >&2; exit 1; }

now() { date +%s.%N; }
secs() { echo "$2 - $1" | bc -l | xargs printf '%.2f'; }
ratio() { echo "$1 / $2" | bc -l | xargs printf '%.2f'; }

# make_tree DIR FOLDERS FILES BYTES: FOLDERS folders of FILES files of BYTES bytes each.
make_tree() {
    python3 - "$@" <<'PY'
import os, sys
root, folders, files, size = sys.argv[1], int(sys.argv[2]), int(sys.argv[3]), int(sys.argv[4])
data = b"x" * size
for d in range(folders):
    folder = os.path.join(root, "folder%04d" % d)
    os.makedirs(folder)
    for f in range(files):
        with open(os.path.join(folder, "file%04d.dat" % f), "wb") as out:
            out.write(data)
PY
}

cat >"$WORK/dircopy.prg" <<'PRG'
sub main
  dircopy "$param[1]$" "$param[2]$" {hidemeter quiet}
endsub
PRG

# row LABEL OURS PEER_LABEL PEER
row() { printf '  %-34s %8s s   %-30s %8s s   ratio %s\n' "$1" "$2" "$3" "$4" "$(ratio "$4" "$2")"; }

echo "dircopy against rsync (time of rsync / time of dircopy: above 1 dircopy is faster)"
echo "Generating 100,000 small files..." >&2
make_tree "$WORK/small" 100 1000 100
sync
t0=$(now); "$QUILLERC" "$WORK/dircopy.prg" "$WORK/small" "$WORK/small-q" >/dev/null; t1=$(now)
r0=$(now); rsync -a "$WORK/small/" "$WORK/small-r/"; r1=$(now)
[ "$(find "$WORK/small-q" -type f | wc -l)" = 100000 ] || { echo "dircopy: wrong file count" >&2; exit 1; }
row "dircopy, 100,000 files, empty target" "$(secs "$t0" "$t1")" "rsync -a" "$(secs "$r0" "$r1")"
rm -rf "$WORK/small-q" "$WORK/small-r" "$WORK/small"

echo "Generating two trees of $((BIG_FOLDERS * 1001)) entries..." >&2
make_tree "$WORK/big" "$BIG_FOLDERS" 1000 0
cp -al "$WORK/big" "$WORK/big-copy"
"$QUILLERC" "$WORK/dircopy.prg" "$WORK/big" "$WORK/big-copy" >/dev/null  # warm the cache
n0=$(now); "$QUILLERC" "$WORK/dircopy.prg" "$WORK/big" "$WORK/big-copy" >/dev/null; n1=$(now)
m0=$(now); rsync -a -n --delete "$WORK/big/" "$WORK/big-copy/"; m1=$(now)

row "dircopy, $((BIG_FOLDERS * 1001)) entries, nothing to do" "$(secs "$n0" "$n1")" \
    "rsync -a -n --delete" "$(secs "$m0" "$m1")"

if [ -z "${MICRO:-}" ] &&
    cmake -S "$ROOT" -B "$ROOT/build-bench-micro" -DCMAKE_BUILD_TYPE=Release -DQUILLER_BENCH=ON \
        -DQUILLER_TESTS=OFF >"$WORK/micro.log" 2>&1 &&
    cmake --build "$ROOT/build-bench-micro" -j 2 --target quiller_micro_bench >>"$WORK/micro.log" 2>&1; then
    MICRO="$ROOT/build-bench-micro/bench/quiller_micro_bench"
fi
if [ -n "${MICRO:-}" ]; then
    echo "merge of two 1,000,000-entry listings (CPU time; goal: under 300 ms)"
    "$MICRO" --benchmark_filter=SyncActions --benchmark_format=console 2>/dev/null |
        awk '/SyncActions/ { printf "  %-34s %8s ms\n", $1, $4 }'
else
    echo "  (merge: quiller_micro_bench not built; see $WORK/micro.log)"
fi
