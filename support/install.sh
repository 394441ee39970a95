# Installs the packages of a build on Debian or Ubuntu, those that are missing only. Sourced by run.sh
# and test.sh: needs_packages NAME... .
needs_packages() {
    local missing=()
    for name in "$@"; do
        dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q 'install ok installed' || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "These packages are missing, and there is no sudo to install them: ${missing[*]}" >&2
            return 1
        }
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update &&
           "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
               "${missing[@]}"; } </dev/null >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        rm -f "$log"
        echo "Installing the packages failed." >&2
        return 1
    fi
    rm -f "$log"
}

# Names differ between releases: one older release names two of them otherwise.
svg_package=qt6-svg-dev
fuzz_runtime=libclang-rt-dev
if [ -r /etc/os-release ] && grep -q '^VERSION_ID="22.04"' /etc/os-release; then
    svg_package=libqt6svg6-dev
    fuzz_runtime=libclang-common-14-dev
fi
PACKAGES_BUILD=(g++ cmake ninja-build ccache libcli11-dev nlohmann-json3-dev)
PACKAGES_WINDOW=(qt6-base-dev "$svg_package" libgl1-mesa-dev fonts-ipafont-gothic fonts-dejavu-core)
PACKAGES_TEST=(libgtest-dev clang "$fuzz_runtime" git python3 poppler-utils)
PACKAGES_BENCH=(libbenchmark-dev)
