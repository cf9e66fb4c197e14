#!/usr/bin/env bash
# Runs a Windows program under Wine without a display, in a Wine prefix of its own that is
# created on first use.
#
#   wine-run.sh --prefix DIR PROGRAM.exe [ARG...]   runs the program
#   wine-run.sh --prefix DIR --init                 only creates the prefix
#   wine-run.sh --prefix DIR --stop                 ends the prefix's Wine server
#
# Wine's own messages are turned off (WINEDEBUG=-all), so what reaches stdout and stderr is the
# program's. The exit status is the program's.
set -euo pipefail

if [ "${1:-}" != "--prefix" ] || [ $# -lt 3 ]; then
    echo "usage: wine-run.sh --prefix DIR (PROGRAM.exe [ARG...] | --init | --stop)" >&2
    exit 125
fi
export WINEPREFIX="$2"
shift 2

export WINEDEBUG=-all
export DISPLAY=
# No Mono or Gecko: nothing here needs .NET or the HTML engine, and installing them would ask.
export WINEDLLOVERRIDES="mscoree,mshtml="
WINE="$(command -v wine || command -v wine64)" || {
    echo "wine-run.sh: wine is not installed" >&2
    exit 125
}
WINESERVER="$(dirname "$WINE")/wineserver"

# One process creates the prefix; parallel callers wait for it.
init_prefix() {
    [ -f "$WINEPREFIX/system.reg" ] && return
    mkdir -p "$(dirname "$WINEPREFIX")"
    (
        flock 9
        if [ ! -f "$WINEPREFIX/system.reg" ]; then
            "$WINE" wineboot -i >"$WINEPREFIX.init.log" 2>&1 </dev/null
            "$WINESERVER" -w 2>/dev/null || true
        fi
    ) 9>"$WINEPREFIX.lock"
}

case "$1" in
    --init) init_prefix ;;
    --stop) [ -d "$WINEPREFIX" ] && "$WINESERVER" -k 2>/dev/null || true ;;
    *)
        init_prefix
        exec "$WINE" "$@"
        ;;
esac
