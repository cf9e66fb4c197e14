#!/usr/bin/env bash
# Times the POSIX registry store through quillerc:
#   1. writereg + readreg round trips in one script (each call one SQLite transaction),
#   2. loadreg of a generated export file of 100,000 values (one transaction for the file),
# and, for scale, python3's sqlite3 doing the same work on the same kind of database.
#
#   bash bench/registry.sh            # 20,000 round trips
#   bash bench/registry.sh 5000       # a quicker run
set -euo pipefail

ROUNDS="${1:-20000}"
VALUES=100000
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
WORK="$(mktemp -d "${TMPDIR:-/tmp}/quiller-registry.XXXXXX")"
trap 'rm -rf "$WORK"' EXIT

. "$ROOT/bench/build_quillerc.sh"
export TMPDIR="$WORK/"

now() { date +%s.%N; }
rate() { echo "$1 / ($3 - $2)" | bc -l | xargs printf '%.0f'; }
secs() { echo "$2 - $1" | bc -l | xargs printf '%.3f'; }

# --- 1. Round trips --------------------------------------------------------------------------
cat >"$WORK/round.prg" <<'PRG'
sub main
  set $i$ 0
  while $i$ < $param[1]$
    writereg "HKEY_CURRENT_USER\Software\Corvale\Bench" Value $i$
    set $v$ readreg "HKEY_CURRENT_USER\Software\Corvale\Bench" Value
    set $i$ $i$ + 1
  endwhile
  print $v$
endsub
PRG
# The same loop without the registry, to show what the interpreter itself takes.
sed -e '/writereg/d' -e 's/set \$v\$ readreg.*/set $v$ $i$/' "$WORK/round.prg" >"$WORK/loop.prg"

t0=$(now); QUILLER_REGISTRY="$WORK/round.db" "$QUILLERC" "$WORK/round.prg" "$ROUNDS" >"$WORK/round.out"; t1=$(now)
[ "$(cat "$WORK/round.out")" = "$((ROUNDS - 1))" ] || { echo "round trips: wrong result" >&2; exit 1; }
l0=$(now); "$QUILLERC" "$WORK/loop.prg" "$ROUNDS" >/dev/null; l1=$(now)
echo "writereg + readreg round trips: $ROUNDS"
printf '  %-28s %8s s  %8s round trips/s\n' quillerc "$(secs "$t0" "$t1")" "$(rate "$ROUNDS" "$t0" "$t1")"
printf '  %-28s %8s s\n' "quillerc, loop alone" "$(secs "$l0" "$l1")"

# --- 2. loadreg ----------------------------------------------------------------------------
awk -v n="$VALUES" 'BEGIN {
    printf "REGEDIT4\r\n\r\n"
    for (i = 0; i < n; i++) {
        if (i % 100 == 0) printf "\r\n[HKEY_CURRENT_USER\\Software\\Corvale\\Load\\Key%d]\r\n", i / 100
        if (i % 2) printf "\"Value%d\"=dword:%08x\r\n", i, i
        else printf "\"Value%d\"=\"C:\\\\Data\\\\item %d\"\r\n", i, i
    }
}' >"$WORK/big.reg"
cat >"$WORK/load.prg" <<'PRG'
sub main
  loadreg "$param[1]$"
  set $v$ readreg "HKEY_CURRENT_USER\Software\Corvale\Load\Key999" Value99999
  print $v$
endsub
PRG
t0=$(now); QUILLER_REGISTRY="$WORK/load.db" "$QUILLERC" "$WORK/load.prg" "$WORK/big.reg" >"$WORK/load.out"; t1=$(now)
[ "$(cat "$WORK/load.out")" = "99999" ] || { echo "loadreg: wrong result" >&2; exit 1; }
echo "loadreg of $VALUES values ($(du -k "$WORK/big.reg" | cut -f1) KB, 1,000 keys)"
printf '  %-28s %8s s  %8s values/s\n' quillerc "$(secs "$t0" "$t1")" "$(rate "$VALUES" "$t0" "$t1")"

# --- Peer: python3's sqlite3 -----------------------------------------------------------------
if command -v python3 >/dev/null; then
    cat >"$WORK/peer.py" <<'PY'
import sqlite3, sys, time
rounds, values, path = int(sys.argv[1]), int(sys.argv[2]), sys.argv[3]
db = sqlite3.connect(path, isolation_level=None)
db.execute("PRAGMA journal_mode=WAL"); db.execute("PRAGMA synchronous=NORMAL")
db.execute("CREATE TABLE v(key INTEGER, name TEXT, folded TEXT, type INTEGER, data BLOB, "
           "PRIMARY KEY(key, folded)) WITHOUT ROWID")
up = ("INSERT INTO v VALUES(?,?,?,?,?) ON CONFLICT(key, folded) DO UPDATE SET "
      "type=excluded.type, data=excluded.data")
t = time.time()
for i in range(rounds):
    db.execute("BEGIN IMMEDIATE"); db.execute(up, (1, "Value", "value", 1, str(i).encode())); db.execute("COMMIT")
    db.execute("BEGIN"); db.execute("SELECT data FROM v WHERE key=1 AND folded='value'").fetchone(); db.execute("COMMIT")
t1 = time.time()
db.execute("BEGIN IMMEDIATE")
for i in range(values):
    db.execute(up, (2 + i // 100, "Value%d" % i, "value%d" % i, 1, ("C:\\Data\\item %d" % i).encode()))
db.execute("COMMIT")
t2 = time.time()
print("%.3f %.0f %.3f %.0f" % (t1 - t, rounds / (t1 - t), t2 - t1, values / (t2 - t1)))
PY
    read -r rs rr ls lr < <(python3 "$WORK/peer.py" "$ROUNDS" "$VALUES" "$WORK/peer.db")
    echo "python3 sqlite3, same statements and transactions (no parsing, no interpreter)"
    printf '  %-28s %8s s  %8s round trips/s\n' "round trips" "$rs" "$rr"
    printf '  %-28s %8s s  %8s values/s\n' "inserts, one transaction" "$ls" "$lr"
else
    echo "python3 not found: no peer figures"
fi
