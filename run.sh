#!/usr/bin/env bash
# Installs what is missing, builds, and does the main job: with a display it opens the workbench on the
# samples, without one it reduces them with the batch program and says where the results are.
set -euo pipefail
cd "$(dirname "$0")"
source support/install.sh

has_display() { [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; }

configure() {
    cmake -S . -B build/run -G Ninja -DCMAKE_BUILD_TYPE=Release -DVAEL_TESTS=OFF \
        ${CMAKE_DISABLE_FIND_PACKAGE_Qt6:+-DCMAKE_DISABLE_FIND_PACKAGE_Qt6=$CMAKE_DISABLE_FIND_PACKAGE_Qt6} >/dev/null
}

needs_packages "${PACKAGES_BUILD[@]}"
if has_display; then
    needs_packages "${PACKAGES_WINDOW[@]}"
    configure
    cmake --build build/run --target vael vael-batch
    cd data/samples
    exec ../../build/run/bin/vael
fi

CMAKE_DISABLE_FIND_PACKAGE_Qt6=ON configure
cmake --build build/run --target vael-batch
out=out/samples
mkdir -p "$out"
status=0
for marker in NACL Pt Au MgO hBN; do
    case $marker in NACL) files=(data/samples/NaCl_*.npd) ;; *) files=(data/samples/"$marker"_*.npd) ;; esac
    echo
    echo "$marker:"
    build/run/bin/vael-batch --crystal "$marker" --data data --out "$out" "${files[@]}" || status=$?
done
echo
echo "Peak lists (CSV) and pages (SVG) are in $out; the truth of the simulated samples is told in data/samples/README.md."
exit $status
