#!/usr/bin/env bash
# Runs the desktop host's window tests under Wine in a virtual desktop inside Xvfb, and turns
# the screenshots the tests ask for into PNG files.
#
#   run_gui_tests.sh WINEPREFIX SHOT_DIR TESTS.exe [ARG...]
#
# The tests write SHOT_DIR/NAME.req holding a window's rectangle; this script answers with
# SHOT_DIR/NAME.png, cut from a screenshot of the whole screen, and removes the request.
set -euo pipefail
[ $# -ge 3 ] || { echo "usage: run_gui_tests.sh WINEPREFIX SHOT_DIR TESTS.exe [ARG...]" >&2; exit 125; }
if [ -z "${QUILLER_IN_XVFB:-}" ]; then
    command -v xvfb-run >/dev/null || { echo "run_gui_tests.sh: xvfb-run is not installed" >&2; exit 125; }
    export QUILLER_IN_XVFB=1
    exec xvfb-run -a -s '-screen 0 1024x768x24' "$0" "$@"
fi
export WINEPREFIX="$1" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
SHOTS="$2"
shift 2
mkdir -p "$SHOTS"
rm -f "$SHOTS"/*.req
WINE="$(command -v wine || command -v wine64)"

if [ ! -f "$WINEPREFIX/system.reg" ]; then
    "$WINE" wineboot -i >"$WINEPREFIX.init.log" 2>&1 </dev/null
fi
# Every window in one virtual desktop, so Wine draws the frames and captions.
"$WINE" reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f >/dev/null 2>&1
"$WINE" reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d 1024x768 /f >/dev/null 2>&1

shooter() {
    local req x y w h
    while :; do
        for req in "$SHOTS"/*.req; do
            [ -e "$req" ] || continue
            read -r x y w h <"$req"
            xwd -root -silent | convert xwd:- -crop "${w}x${h}+${x}+${y}" +repage "${req%.req}.png"
            rm -f "$req"
        done
        sleep 0.1
    done
}
shooter &
SHOOTER=$!
set +e
QUILLER_SHOT_DIR="Z:$SHOTS" "$WINE" "$@"
rc=$?
set -e
kill "$SHOOTER" 2>/dev/null || true
"$(dirname "$WINE")/wineserver" -k 2>/dev/null || true
exit $rc
