#!/usr/bin/env bash
# dircopy under faults a script can't make: a run killed in the middle and run again, and a
# source folder that can't be read (run as an unprivileged user when the test runs as root).
#   dircopy_faults.sh QUILLERC
set -euo pipefail
QUILLERC="$1"
WORK="$(mktemp -d "${TMPDIR:-/tmp}/quiller-dircopy-faults.XXXXXX")"
trap 'chmod -R u+rwx "$WORK"; rm -rf "$WORK"' EXIT
export TMPDIR="$WORK/" QUILLER_REGISTRY="$WORK/registry.db"
fail() { echo "FAIL: $*" >&2; exit 1; }

cat >"$WORK/mirror.prg" <<'PRG'
sub main
  errorshow off
  dircopy "$param[1]$" "$param[2]$" {hidemeter quiet}
endsub
sub on_error
  print "warning: $param[0]$"
endsub
PRG

# --- Killed in the middle, then run again ---------------------------------------------------
mkdir -p "$WORK/src/big" "$WORK/dst"
for i in $(seq 1 40); do head -c 3000000 /dev/urandom >"$WORK/src/big/f$i"; done
for i in $(seq 1 200); do echo "small $i" >"$WORK/src/s$i.txt"; done
echo "stale" >"$WORK/dst/s1.txt"
before="$(cd "$WORK/src" && find . -type f -exec md5sum {} + | sort)"
"$QUILLERC" "$WORK/mirror.prg" "$WORK/src" "$WORK/dst" >/dev/null &
pid=$!
sleep 0.3
kill -9 "$pid" 2>/dev/null || true
wait "$pid" 2>/dev/null || true
# Under a real name there is either nothing, the old file or the whole new one.
while IFS= read -r -d '' f; do
    rel="${f#"$WORK/dst/"}"
    case "$(basename "$rel")" in .~qlsync-*.tmp) continue ;; esac
    [ "$rel" = s1.txt ] && grep -qx stale "$f" && continue
    cmp -s "$f" "$WORK/src/$rel" || fail "half-written file under a real name: $rel"
done < <(find "$WORK/dst" -type f -print0)
"$QUILLERC" "$WORK/mirror.prg" "$WORK/src" "$WORK/dst" >"$WORK/out.txt"
[ ! -s "$WORK/out.txt" ] || fail "second run warned: $(cat "$WORK/out.txt")"
diff -r "$WORK/src" "$WORK/dst" >/dev/null || fail "target differs from source after the second run"
[ -z "$(find "$WORK/dst" -name '.~qlsync-*')" ] || fail "temporaries left"
[ "$before" = "$(cd "$WORK/src" && find . -type f -exec md5sum {} + | sort)" ] || fail "source changed"

# --- A source folder that can't be read: no deletions in that run -------------------------
rm -rf "$WORK/src" "$WORK/dst"
mkdir -p "$WORK/src/locked" "$WORK/dst/locked"
echo a >"$WORK/src/a.txt"
echo l >"$WORK/src/locked/l.txt"
echo l >"$WORK/dst/locked/l.txt"
echo old >"$WORK/dst/old.txt"
chmod 000 "$WORK/src/locked"
run=("$QUILLERC")
if [ "$(id -u)" = 0 ]; then
    command -v setpriv >/dev/null || { echo "skipped: setpriv missing"; exit 0; }
    chmod 755 "$WORK"
    chown -R nobody "$WORK"
    run=(setpriv --reuid=nobody --regid=nogroup --clear-groups "$QUILLERC")
fi
"${run[@]}" "$WORK/mirror.prg" "$WORK/src" "$WORK/dst" >"$WORK/out.txt"
grep -q "nothing is deleted in this run" "$WORK/out.txt" || fail "no warning: $(cat "$WORK/out.txt")"
[ -f "$WORK/dst/old.txt" ] && [ -f "$WORK/dst/locked/l.txt" ] || fail "deleted after a failed scan"
[ -f "$WORK/dst/a.txt" ] || fail "the readable part was not copied"
echo "dircopy faults: passed"
