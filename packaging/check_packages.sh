#!/usr/bin/env bash
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
#
# check_packages.sh, in a bare installation: packaging/in_chroot.sh trixie packaging/check_packages.sh
#
# Builds the packages, installs them, starts the panel from its desktop entry as a user who is not
# root, tries the installed udev rule, removes everything, and looks for what was left behind.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export DEBIAN_FRONTEND=noninteractive

packages=(ptz-panel ptz-panel-dbgsym virtual-camera virtual-camera-dbgsym python3-virtual-camera)

apt_get() { apt-get -q -y -o Dpkg::Use-Pty=0 --no-install-recommends "$@" >>build/apt.log 2>&1; }
step() { echo "== $*"; }
# Every file of the system, without what apt and the tests themselves write.
system_files() {
    find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /run -o -path /tmp \
        -o -path /project -o -path /home -o -path /var/log -o -path /var/cache \
        -o -path /var/lib/apt -o -path /var/lib/dpkg -o -name __pycache__ \) -prune -o -print | sort
}

mkdir -p build
step "build"
apt_get update
apt_get install build-essential lintian
mapfile -t needed < <(sed -n '/^Build-Depends:/,/^[A-Z][a-z-]*:/{s/^Build-Depends://;/^[A-Z]/d;p}' \
    packaging/debian/control | sed 's/ *([^)]*)//; s/debhelper-compat/debhelper/; s/[ ,]//g')
apt_get install "${needed[@]}"
packaging/build_packages.sh

step "install"
# What the tests need, so that only our packages come and go.
apt_get install dbus libglib2.0-bin openbox python3 systemd udev umockdev usbutils xauth xdotool xvfb
id somebody >/dev/null 2>&1 || useradd --create-home somebody
apt_get install ./build/packages/*_*.deb
apt_get purge "${packages[@]}"
system_files >build/before
apt_get install ./build/packages/*_*.deb

step "start from the menu, as a user"
su somebody -c "$PWD/packaging/debian/tests/start-from-menu"

step "Python module"
python=$(sed -n 's/^Test-Command: //p' packaging/debian/tests/control)
(cd / && su somebody -c "$python")

step "udev rule"
PTZ_INSTALLED_RULE=yes python3 tests/packaging/udev_rule_test.py

step "remove"
apt_get purge "${packages[@]}"
system_files >build/after
diff build/before build/after
if dpkg-query --status "${packages[@]}" 2>/dev/null | grep '^Package:'; then exit 1; fi
echo "The packages build, install, work and leave nothing behind."
