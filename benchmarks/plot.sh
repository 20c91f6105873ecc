#!/usr/bin/env bash
# benchmarks/plot.sh FOLDER: frame times of plots beside plain QCustomPlot, and what pictures of the command line
# cost in processor time beside fendra info, each the least of five runs.
set -euo pipefail
folder=$(readlink -f "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$folder/plot-frames"

# seconds COMMAND...: user and system time.
seconds() {
    local TIMEFORMAT='%U %S' best=1000 run
    for run in 1 2 3 4 5; do
        best=$({ time "$@" > /dev/null; } 2>&1 | awk -v best="$best" '{ s = $1 + $2; print s < best ? s : best }')
    done
    echo "$best"
}

cd "$work"
awk 'BEGIN { for (i = 0; i < 1000; ++i) print sin(i / 20) }' > small.txt
small=$(seconds "$folder/fendra" plot small.txt -o small.png --force)
printf '\nprocessor seconds of pictures: 1000 samples %.2f (at most 0.5)\n' "$small"
printf '%-12s %8s %8s %10s %10s\n' file info picture beyond "at most"
for samples in 1000000 10000000; do
    seconds=$((samples / 48000 + 1))
    "$folder/fendra" sweep --frequencies 20:20000 --seconds "$seconds" --rate 48000 -o "$samples.wav" > /dev/null
    "$folder/fendra" convert "$samples.wav" "$samples.npy" --lossy > /dev/null
    for file in "$samples.wav" "$samples.npy"; do
        info=$(seconds "$folder/fendra" info "$file")
        picture=$(seconds "$folder/fendra" plot "$file" -o big.png --force)
        awk -v file="$file" -v info="$info" -v picture="$picture" -v small="$small" 'BEGIN {
            printf "%-12s %8.2f %8.2f %10.2f %10.2f\n", file, info, picture, picture - small, 6 * info + 0.1 }'
    done
done
