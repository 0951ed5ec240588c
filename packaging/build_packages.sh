#!/usr/bin/env bash
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
#
# build_packages.sh
#
# Builds the release that CMakeLists.txt and CHANGELOG.md name, into build/packages: the source, the
# Debian packages, the notes and the checksums. lintian has to be content with them.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
target=$root/build/packages

fail() {
    echo "build_packages.sh: $*" >&2
    exit 1
}

version=$(sed -n 's/^project(.* VERSION \([0-9.]*\) .*/\1/p' "$root/CMakeLists.txt")
# Prints the part of the changelog about this version, without its heading.
notes() { awk -v heading="## [$version]" '/^## / { on = index($0, heading) == 1; next } on' "$root/CHANGELOG.md"; }
date=$(sed -n "s/^## \[$version\] - \(.*\)/\1/p" "$root/CHANGELOG.md")
[[ -n $date ]] || fail "CHANGELOG.md has no dated section for version $version"

# The same tree gives the same packages.
SOURCE_DATE_EPOCH=$(date -u -d "$date 12:00" +%s)
export SOURCE_DATE_EPOCH
tree=$target/ptz-panel-$version
rm -rf "$target"
mkdir -p "$tree"
if git -C "$root" rev-parse --git-dir >/dev/null 2>&1; then
    git -C "$root" archive HEAD | tar -x -C "$tree"
else
    tar -C "$root" --exclude ./build -c . | tar -x -C "$tree"
fi
tar -C "$target" --sort=name --owner=0 --group=0 --mtime="@$SOURCE_DATE_EPOCH" \
    -cJf "$tree.tar.xz" "ptz-panel-$version"

# dpkg wants debian/ on top, with a changelog of its own form.
cp -r "$tree/packaging/debian" "$tree/debian"
maintainer=$(sed -n 's/^Maintainer: //p' "$tree/debian/control")
{
    printf 'ptz-panel (%s) stable; urgency=medium\n\n' "$version"
    notes | awk '/^- / { print entry; entry = "  * " substr($0, 3) }
        /^  / { entry = entry " " $0 }
        END { print entry }' | tr -s ' ' | sed '/^$/d; s/^ /  /' | fold -s -w 72 |
        sed '/^  \*/!s/^/    /; s/ *$//'
    printf '\n -- %s  %s\n' "$maintainer" "$(date -u -R -d "@$SOURCE_DATE_EPOCH")"
} >"$tree/debian/changelog"
(cd "$tree" && dpkg-buildpackage --no-sign --build=full) >"$target/build.log" 2>&1 || {
    tail -n 30 "$target/build.log" >&2
    fail "dpkg-buildpackage failed; all that it said is in $target/build.log"
}
rm -rf "$tree"
notes >"$target/ptz-panel-$version.notes.md"
(cd "$target" && sha256sum -- *.deb *.dsc *.tar.xz >SHA256SUMS)
lintian --fail-on error,warning --suppress-tags bad-distribution-in-changes-file \
    "$target"/*.changes || fail "lintian complains"
echo "Release $version is in $target:"
(cd "$target" && ls -- *.deb *.dsc *.tar.xz *.notes.md SHA256SUMS)
