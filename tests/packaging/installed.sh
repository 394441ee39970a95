#!/usr/bin/env bash
# The installed programs in a folder of their own: installed.sh BUILD_FOLDER. Each check names itself when it fails.
set -euo pipefail
build=${1:?the folder of a desktop build}
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }

cmake --install "$build" --prefix "$root/usr" >"$root/log" 2>&1 || { cat "$root/log" >&2; fail "cmake --install"; }
cd "$root"
for file in bin/vael bin/vael-batch share/vael/crystal.dat share/vael/atomic.dat share/vael/History.txt \
    share/vael/samples/Au_2GPa_500K.npd share/applications/vael.desktop share/metainfo/vael.metainfo.xml \
    share/mime/packages/vael.xml share/icons/hicolor/scalable/apps/vael.svg \
    share/icons/hicolor/48x48/apps/vael.png share/man/man1/vael.1 share/man/man1/vael-batch.1 \
    share/doc/vael/copyright; do
    [ -s "usr/$file" ] || fail "$file is not installed"
done
for word in CRYSTAL crystal watch; do
    grep -qi -- "$word" usr/share/man/man1/vael-batch.1 || fail "the man page of vael-batch has no $word"
done
grep -q "Spectra to open" usr/share/man/man1/vael.1 || fail "the man page of vael has not its help"

# From nothing but what is installed, in a home that is empty: cell and pressure of a sample.
mkdir home
run() { env -i HOME="$root/home" PATH=/usr/bin:/bin QT_QPA_PLATFORM=offscreen "$@"; }
run usr/bin/vael-batch --crystal Au --format csv usr/share/vael/samples/Au_2GPa_500K.npd >batch.csv ||
    fail "vael-batch gives no result"
grep -q '"Au, Anderson et al. 1989",' batch.csv || fail "vael-batch gives no pressure"
run usr/bin/vael --version | grep -q '^vael [0-9]' || fail "vael --version"

# The window keeps its files in the user's folder, and nothing of the installation changes.
before=$(find usr -type f -exec md5sum {} + | sort | md5sum)
status=0
run timeout 5 usr/bin/vael usr/share/vael/samples/Au_2GPa_500K.npd || status=$?
[ "$status" = 124 ] || fail "vael ended by itself with $status"
for file in crystal.dat atomic.dat History.txt; do
    cmp -s "usr/share/vael/$file" "home/.local/share/vael/$file" || fail "$file is not in the user's folder"
done
[ "$before" = "$(find usr -type f -exec md5sum {} + | sort | md5sum)" ] || fail "the installation changed"
echo "installed: all checks passed"
