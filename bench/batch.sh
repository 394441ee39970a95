#!/usr/bin/env bash
# Times vael-batch over 1000 spectra of 4096 channels: bench/batch.sh BUILD_FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
program=${1:?the folder of a release build}/bin/vael-batch
files=()
while [ ${#files[@]} -lt 1000 ]; do files+=(data/samples/*.npd); done
files=("${files[@]:0:1000}")
time "$program" --crystal Au --data data --format csv "${files[@]}" >/dev/null 2>&1 || true
