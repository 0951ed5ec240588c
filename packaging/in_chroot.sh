#!/usr/bin/env bash
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
#
# in_chroot.sh RELEASE COMMAND [ARGUMENT]...
#
# Runs the command in a bare installation of a release of Debian, such as bookworm or trixie,
# in a copy of this working tree: tracked and new files, nothing that was built. What the command
# changes outside build/ is gone afterwards; its build/ is build/chroots/RELEASE.build here. The exit
# code is the command's. Needs root, debootstrap, and a mirror: PTZ_MIRROR, else the one that apt uses.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

fail() {
    echo "in_chroot.sh: $*" >&2
    exit 2
}

[[ $# -ge 2 ]] || fail "expected a release and a command, such as: trixie ./test.sh"
release=$1
chroots=$root/build/chroots
base=$chroots/$release
built=$chroots/$release.build
cache=$chroots/$release.packages
[[ $(id -u) == 0 ]] || fail "a chroot needs root"
command -v debootstrap >/dev/null || fail "debootstrap is missing"

# How apt reaches the mirror here, it has to there: proxies, and mirrors that stand still.
apt_settings() { apt-config dump | grep -E '^Acquire::(Check-|https?::|ForceIPv)' || true; }

make_base() {
    local mirror=${PTZ_MIRROR:-} script=() check=() log=$chroots/$release.log
    if [[ -z $mirror ]]; then
        # shellcheck disable=SC2016 # apt replaces it
        mirror=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' | sed -n 1p)
    fi
    [[ -n $mirror ]] || fail "apt names no mirror; set PTZ_MIRROR"
    # Releases that debootstrap does not know yet are made like those before them.
    if [[ ! -e /usr/share/debootstrap/scripts/$release ]]; then
        if [[ $mirror == *ubuntu* ]]; then script=(gutsy); else script=(sid); fi
    fi
    if [[ -n ${PTZ_KEYRING:-} ]]; then check=(--keyring "$PTZ_KEYRING"); fi
    local components=main
    if [[ $mirror == *ubuntu* ]]; then components=main,universe; fi
    mkdir -p "$chroots"
    echo "Making a bare $release (log: $log)"
    rm -rf "$base.new"
    debootstrap --variant=minbase --components="$components" "${check[@]}" \
        "$release" "$base.new" "$mirror" "${script[@]}" >"$log" 2>&1 || {
        tail -n 5 "$log" >&2
        fail "debootstrap failed"
    }
    apt_settings >"$base.new/etc/apt/apt.conf.d/99-as-outside"
    echo force-unsafe-io >"$base.new/etc/dpkg/dpkg.cfg.d/quick"
    mv "$base.new" "$base"
}
[[ -d $base ]] || make_base

# From here on in a namespace of its own: when the command ends, so do its processes and mounts.
if [[ ${PTZ_IN_NAMESPACE:-} != yes ]]; then
    PTZ_IN_NAMESPACE=yes exec unshare --mount --pid --uts --fork --kill-child \
        "${BASH_SOURCE[0]}" "$@"
fi

work=$(mktemp -d "$chroots/$release.XXXXXX")
trap 'umount -R -l "$work/root" 2>/dev/null; rm -rf "$work"' EXIT
mkdir -p "$work"/{upper,work,root} "$built" "$cache"
mount -t overlay overlay -o "lowerdir=$base,upperdir=$work/upper,workdir=$work/work" "$work/root"
there=$work/root
mount -t proc proc "$there/proc"
mount -t sysfs -o ro sysfs "$there/sys"
mount -t tmpfs -o mode=755 dev "$there/dev"
for node in null zero full random urandom tty; do
    touch "$there/dev/$node" && mount --bind "/dev/$node" "$there/dev/$node"
done
mkdir "$there"/dev/{pts,shm,bus}
mount -t devpts -o newinstance,ptmxmode=0666 devpts "$there/dev/pts"
mount -t tmpfs -o mode=1777 shm "$there/dev/shm"
ln -s pts/ptmx "$there/dev/ptmx"
ln -s /proc/self/fd "$there/dev/fd"
for number in 0 1 2; do
    ln -s "/proc/self/fd/$number" "$there/dev/$(sed -n "$((number + 1))p" <<<$'stdin\nstdout\nstderr')"
done
mount --bind "$cache" "$there/var/cache/apt/archives"
mkdir -p "$there/run/lock" "$there/project/build"
mount --bind "$built" "$there/project/build"
cp -L /etc/resolv.conf /etc/hosts "$there/etc/" 2>/dev/null || true
hostname chroot
git -C "$root" ls-files -z --cached --others --exclude-standard |
    tar -C "$root" --null --files-from - --ignore-failed-read -c 2>/dev/null | tar -x -C "$there/project"

environment=(HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 TERM="${TERM:-dumb}")
for name in CI http_proxy https_proxy no_proxy; do
    if [[ -n ${!name:-} ]]; then environment+=("$name=${!name}"); fi
done
status=0
chroot "$there" env -i "${environment[@]}" bash -c 'cd /project && "$@"' bash "${@:2}" || status=$?
exit "$status"
