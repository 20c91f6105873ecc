#!/usr/bin/env bash
# docs/results.sh: draws docs/results.png from the results of ./run. Needs gnuplot and sox.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

scratch=$(mktemp -d)
trap 'rm -r "$scratch"' EXIT
for name in samples/speech out/wet out/dry; do
    sox "$name.wav" -t dat - | grep -v '^;' > "$scratch/$(basename "$name")"
done
gnuplot -e "scratch = '$scratch/'" docs/results.gp
