#!/usr/bin/env bash
# Writes the seed corpora of the fuzz targets into DIR/<target>/ from the test scripts and the
# reference tables:  bash fuzz/seed_corpus.sh DIR
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
OUT="${1:?usage: seed_corpus.sh DIR}"
SCRIPTS="$ROOT/tests/scripts"
REF="$ROOT/tests/reference"

# seed TARGET: one corpus file per input read from stdin, NUL-separated, named by its hash.
seed() {
    local dir="$OUT/$1" item
    mkdir -p "$dir"
    while IFS= read -r -d '' item; do
        printf '%s' "$item" >"$dir/seed-$(printf '%s' "$item" | md5sum | cut -c1-16)"
    done
}

# The argument text of the script lines whose keyword matches the pattern.
arguments_of() {
    cat "$SCRIPTS"/*.prg | tr -d '\r' | awk -v pat="$1" '
        { sub(/^[ \t]+/, ""); k = tolower($1) }
        k ~ pat { sub(/^[^ \t]+[ \t]*/, ""); printf "%s%c", $0, 0 }'
}

arguments_of '.' | seed fuzz_splitter
arguments_of '.' | awk -v RS='\0' '{ printf "a=1|b=$x$|list[3]=three|i=3|x[3]=i\n%s%c", $0, 0 }' |
    seed fuzz_substitution
arguments_of '^(if|ifnot|while|until)$' | seed fuzz_condition
arguments_of '^set$' | seed fuzz_set_expression
for t in number-recognition date-recognition; do
    tail -n +2 "$REF/$t.tsv" | cut -f1 | tr '\n' '\0' | seed fuzz_number_date
done
for t in number-formats date-formats; do
    tail -n +2 "$REF/$t.tsv" | awk -F'\t' '{ printf "%s\n%s%c", $1, $2, 0 }' | seed fuzz_format
done
for f in "$SCRIPTS"/*.files/*.ini; do
    [ -f "$f" ] || continue
    { printf 'Settings\nname\nvalue\n'; cat "$f"; printf '\0'; } | seed fuzz_ini
done
printf 'a\nb\nc\n\0' | seed fuzz_ini
for f in "$SCRIPTS"/*.files/*.reg; do
    mkdir -p "$OUT/fuzz_registry_file"
    cp "$f" "$OUT/fuzz_registry_file/seed-$(basename "$f")"
done
mkdir -p "$OUT/fuzz_script"
for f in "$SCRIPTS"/*.prg; do cp "$f" "$OUT/fuzz_script/seed-$(basename "$f")"; done
