#!/bin/sh
# install-packages.sh [LIST...]: installs the packages of packages.txt, and of more such lists, that are
# missing; does nothing when all are there.
set -eu
wanted=$(sed 's/#.*//' "$(dirname "$0")/../packages.txt" "$@" | tr -s ' \t\n' ' ')

missing=""
for package in $wanted; do
    # A virtual or renamed package shows up through its provider's status line.
    if ! dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed; then
        missing="$missing $package"
    fi
done
[ -z "$missing" ] && exit 0

as_root=""
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "packages are missing and neither root nor sudo is at hand; as root, run: apt-get install$missing" >&2
        exit 1
    fi
    as_root="sudo"
fi
echo "installing:$missing" >&2
log=$(mktemp)
trap 'rm -f "$log"' EXIT
install() {
    # shellcheck disable=SC2086 # the list is meant to be split
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >"$log" 2>&1
}
if ! install; then
    # The package index of a new machine may be empty or old.
    $as_root apt-get update -qq >/dev/null
    if ! install; then
        cat "$log" >&2
        echo "the packages above could not be installed" >&2
        exit 1
    fi
fi
