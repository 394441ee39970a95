#!/usr/bin/env bash
# Makes the Debian package and installs it on a bare Debian 12 in a chroot: try-deb.sh [BUILD_FOLDER]. A folder that
# is configured is used as it is. As root; takes the base system from the package source that this machine uses.
set -euo pipefail
cd "$(dirname "$0")/../.."
folder=$(realpath -m "${1:-build/deb}")
mirror=${DEBIAN_MIRROR:-$(apt-cache policy | grep -oE 'https?://[^ ]+ bookworm/main' | cut -d' ' -f1 | head -1)}
[ -n "$mirror" ] || { echo "No source of Debian 12 packages is known here: name one in DEBIAN_MIRROR." >&2; exit 1; }
source support/install.sh
needs_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_WINDOW[@]}" debootstrap dpkg-dev file

[ -f "$folder/CMakeCache.txt" ] ||
    cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVAEL_TESTS=OFF -DCMAKE_INSTALL_PREFIX=/usr >/dev/null
cmake --build "$folder"
(cd "$folder" && cpack >/dev/null)
deb=$(ls -t "$folder"/vael_*.deb | head -1)
dpkg-deb --info "$deb"

root=$folder/debian12
rm -rf "$root"
debootstrap --variant=minbase bookworm "$root" "$mirror" >"$folder/debootstrap.log" 2>&1 ||
    { tail -n 20 "$folder/debootstrap.log"; exit 1; }
cp "$deb" "$root/tmp/vael.deb"
cp /etc/resolv.conf "$root/etc/resolv.conf"
cp /etc/apt/apt.conf.d/9* "$root/etc/apt/apt.conf.d/" 2>/dev/null || true  # proxies and the like
mount -t proc proc "$root/proc"
trap 'umount "$root/proc"' EXIT
chroot "$root" /bin/sh -ec '
    export DEBIAN_FRONTEND=noninteractive
    apt-get update >/dev/null
    apt-get install -y --no-install-recommends /tmp/vael.deb >/tmp/apt.log 2>&1 || { tail -20 /tmp/apt.log; exit 1; }
    vael-batch --crystal Au /usr/share/vael/samples/Au_2GPa_500K.npd
    export QT_QPA_PLATFORM=offscreen HOME=/tmp/home
    mkdir -p $HOME
    vael --version
    timeout 5 vael /usr/share/vael/samples/Au_2GPa_500K.npd || [ $? = 124 ]
    cmp /usr/share/vael/crystal.dat $HOME/.local/share/vael/crystal.dat
    apt-get remove -y vael >/dev/null 2>&1
    [ ! -e /usr/bin/vael ]
'
echo "$(basename "$deb"): installed, run and removed on a bare Debian 12"
