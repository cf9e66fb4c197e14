#!/usr/bin/env bash
# Times `readini` on a 10,000-line INI file: 10,000 calls in one script after the first, against
# python3's configparser answering the same lookups (parsing once), and prints the per-call time.
#
#   bash bench/ini.sh
set -euo pipefail

ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
WORK="$(mktemp -d "${TMPDIR:-/tmp}/quiller-ini.XXXXXX")"
trap 'rm -rf "$WORK"' EXIT

. "$ROOT/bench/build_quillerc.sh"

awk 'BEGIN { for (s = 0; s < 1000; s++) { printf "[Section%d]\n", s
             for (k = 0; k < 9; k++) printf "Key%d=value %d\n", k, s * 10 + k } }' >"$WORK/big.ini"
# A settled file (not written in the last seconds), as INI files usually are: the cache then
# trusts its size and time.
touch -d '-1 min' "$WORK/big.ini"

cat >"$WORK/ini.prg" <<'PRG'
sub main
  set $v$ readini "$param[1]$" Section0 Key0 none
  set $i$ 0
  while $i$ < 10000
    set $v$ readini "$param[1]$" Section500 Key4 none
    set $i$ $i$ + 1
  endwhile
  print $v$
endsub
PRG
cat >"$WORK/ini.py" <<'PY'
import configparser, sys
c = configparser.ConfigParser(); c.read(sys.argv[1])
for i in range(10000): v = c["Section500"]["Key4"]
print(v)
PY

now() { date +%s.%N; }
t0=$(now); "$QUILLERC" "$WORK/ini.prg" "$WORK/big.ini" >/dev/null; t1=$(now)
printf '%-10s %8.3f s  %8.1f us/call (incl. the loop statements)\n' quillerc "$(echo "$t1 - $t0" | bc)" \
    "$(echo "($t1 - $t0) * 100" | bc -l)"
if command -v python3 >/dev/null; then
    t0=$(now); python3 "$WORK/ini.py" "$WORK/big.ini" >/dev/null; t1=$(now)
    printf '%-10s %8.3f s  (parses once, then dictionary lookups)\n' python3 "$(echo "$t1 - $t0" | bc)"
fi
