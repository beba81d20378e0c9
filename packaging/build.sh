#!/bin/sh
# build.sh PRESET TARGET...: installs missing packages, configures once, builds the targets.
# Prints nothing when there was nothing to do; the whole log when something failed.
set -eu
here="$(cd "$(dirname "$0")/.." && pwd)"
preset="$1"
shift
build="$here/build/$preset"
stamp="$build/.packages-checked"
mkdir -p "$build"
if [ ! -e "$stamp" ] || [ "$here/packages.txt" -nt "$stamp" ]; then
    "$here/packaging/install-packages.sh"
    touch "$stamp"
fi
cd "$here"
log="$build/build.log"
if [ ! -e "$build/build.ninja" ]; then
    echo "configuring ($preset) ..."
    if ! cmake --preset "$preset" >"$log" 2>&1; then
        cat "$log" >&2
        exit 1
    fi
fi
if ! ninja -C "$build" -n "$@" 2>/dev/null | grep -q 'no work to do'; then
    echo "building ($preset), the log is in build/$preset/build.log ..."
    if ! ninja -C "$build" "$@" >"$log" 2>&1; then
        cat "$log" >&2
        exit 1
    fi
fi
