#!/usr/bin/env bash
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
#
# install_packages.sh PURPOSE...
#
# Installs the Debian packages of debian-packages.txt that these purposes need and that are not
# installed yet. Says nothing and calls no package manager when there is nothing to do.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
list=$here/debian-packages.txt
log=$here/../build/install_packages.log

fail() {
    echo "$*" >&2
    exit 1
}

# Prints the packages listed for the purpose $1.
packages_for() {
    local purpose package
    while read -r purpose package; do
        if [[ $purpose == "$1" ]]; then echo "$package"; fi
    done <"$list"
}

wanted=()
for purpose in "$@"; do
    mapfile -t packages < <(packages_for "$purpose")
    [[ ${#packages[@]} -gt 0 ]] || fail "No packages are listed for '$purpose' in $list"
    wanted+=("${packages[@]}")
done

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    echo "This system has no apt. Install what these Debian packages contain, then build with CMake:" >&2
    for purpose in "$@"; do
        mapfile -t packages < <(packages_for "$purpose")
        echo "  $purpose: ${packages[*]}" >&2
    done
    exit 1
fi

# dpkg-query fails when it knows nothing of a package; what it prints is all that counts.
installed=$(dpkg-query --show --showformat='${db:Status-Status} ${Package}\n' "${wanted[@]}" \
    2>/dev/null || true)
missing=()
for package in "${wanted[@]}"; do
    grep -qx "installed $package" <<<"$installed" || missing+=("$package")
done
[[ ${#missing[@]} -gt 0 ]] || exit 0

as_root=()
if [[ $(id -u) != 0 ]]; then
    command -v sudo >/dev/null || fail "Not root, and there is no sudo. As root: apt-get install ${missing[*]}"
    as_root=(sudo)
    # Where nobody can type a password, being asked for one would be the end of it.
    if [[ ! -t 0 ]]; then as_root+=(--non-interactive); fi
fi

apt_get() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -q -y -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0 "$@" >>"$log" 2>&1 </dev/null
}

mkdir -p "$(dirname "$log")"
log=$(cd "$(dirname "$log")" && pwd)/$(basename "$log")
: >"$log"
echo "Installing (log: $log): ${missing[*]}"
apt_get update || echo "The package lists could not be refreshed; going on with those at hand." >&2
apt_get install --no-install-recommends "${missing[@]}" || {
    tail -n 15 "$log" >&2
    fail "The packages could not be installed; all that apt said is in $log"
}
