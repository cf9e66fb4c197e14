# Sourced by the bench scripts: builds quillerc in Release in build-bench/ when needed and sets
# QUILLERC. Needs ROOT (the repository) and WORK (a scratch folder for the build log).
BUILD="$ROOT/build-bench"
echo "Building quillerc (Release, $BUILD)..." >&2
cmake -S "$ROOT" -B "$BUILD" -DCMAKE_BUILD_TYPE=Release -DQUILLER_TESTS=OFF >"$WORK/build.log" 2>&1 \
    && cmake --build "$BUILD" -j 2 --target quillerc >>"$WORK/build.log" 2>&1 \
    || { tail -n 30 "$WORK/build.log"; echo "bench: building quillerc failed" >&2; exit 1; }
QUILLERC="$BUILD/src/quillerc"
[ -x "$QUILLERC" ] || { echo "bench: quillerc not found in $BUILD" >&2; exit 1; }
