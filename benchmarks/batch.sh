#!/usr/bin/env bash
# batch.sh FOLDER [FILES]: how fast the program in FOLDER folds many files. FILES of 10 s, 1000 unless given,
# by two seconds of kernel against the processor time of runs of their own; small files in a second, and
# memory; two jobs beside one, and beside two batches side by side.
set -euo pipefail
PATH=$(realpath "$1"):$PATH files=${2-1000}
export LC_ALL=C
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# timed COMMAND...: leaves its seconds in elapsed, those of processors in processor, and the most memory that
# it used, in MB, in memory; the latter two as they were a fiftieth of a second before its end.
timed() {
    local start end state
    start=$(date +%s.%N)
    "$@" > /dev/null &
    while state=$(awk '/VmHWM/ { print $2 / 1024 } FILENAME ~ /stat$/ { print ($14 + $15) / 100 }' \
        /proc/$!/status /proc/$!/stat 2> /dev/null) && [[ $state = *$'\n'* ]]; do
        memory=${state%%$'\n'*} processor=${state##*$'\n'}
        sleep 0.02
    done
    wait $!
    end=$(date +%s.%N)
    elapsed=$(awk "BEGIN { print $end - $start }")
}

# processorTime COMMAND...: user and system seconds.
processorTime() {
    local TIMEFORMAT='%U %S'
    { time "$@" > /dev/null; } 2>&1 | awk '{ print $1 + $2 }'
}

# copied NUMBER TEXT FOLDER: so many files with that text.
copied() {
    mkdir -p "$3"
    awk -v n="$1" -v folder="$3" '{ text = text $0 "\n" } END {
        for (i = 0; i < n; ++i) { file = folder "/" i ".csv"; printf "%s", text > file; close(file) }
    }' "$2"
}

noise='{ s = (s * 16807) % 2147483647; print s / 2147483647 - 0.5 }'
seq 480000 | awk "BEGIN { s = 1 } $noise" > long.txt
seq 96000 | awk "BEGIN { s = 2 } $noise" > room.txt
seq 64 | awk "BEGIN { s = 3 } $noise" > small.csv
seq 11 | awk "BEGIN { s = 4 } $noise" > taps.txt
echo 1 > one.txt
fendra convolve long.txt one.txt --rate 48000 --encoding pcm16 -q -o long.wav
fendra convolve room.txt one.txt --rate 48000 -q -o room.wav

cores=$(nproc)
mkdir long
for ((i = 0; i < files; ++i)); do ln long.wav long/$i.wav; done
single=$(for i in 1 2 3 4 5; do processorTime fendra convolve long.wav room.wav --pad -q -o one.wav --force; done | sort -n | sed -n 3p)
timed fendra batch convolve long --kernel room.wav --pad --into out -q
awk -v n="$files" -v one="$single" -v e="$elapsed" -v c="$cores" -v p="$processor" -v m="$memory" 'BEGIN {
    printf "%d files of 10 s, %d jobs: %.1f s; processors %.1f s, single runs %.1f s (%.1f ms each): %.2f by the clock, %.2f by processors; %.0f MB\n",
        n, c, e, p, n * one, 1000 * one, e * c / (n * one), p / (n * one), m }'
rm -r out long
# Where files have just been removed, some file systems are slow to make new ones: folders stay from here on.
sleep 6

for count in 20000 100000; do
    copied $count small.csv small$count
    timed fendra batch convolve small$count --kernel taps.txt --pad --into out$count -q --jobs 1
    awk -v n=$count -v e="$elapsed" -v p="$processor" -v m="$memory" 'BEGIN {
        printf "%d files of 64 samples, 1 job: %.0f a second, %.0f a second of a processor, %.1f MB\n", n, n / e, n / p, m }'
done

copied 10000 small.csv both/a
copied 10000 small.csv both/b
# small INPUT OUTPUT JOBS
small() {
    fendra batch convolve "$1" --recursive --kernel taps.txt --pad --into "$2" -q --jobs "$3"
}
sideBySide() {
    small both/a "$1/a" 1 &
    small both/b "$1/b" 1
    wait $!
}
for round in 1 2 3; do
    timed small both one$round 1
    one=$elapsed
    timed small both two$round 2
    two=$elapsed
    timed sideBySide beside$round
    awk -v one="$one" -v two="$two" -v beside="$elapsed" 'BEGIN {
        printf "20000 small files: two jobs %.2f times as fast as one, two batches side by side %.2f times\n", one / two, one / beside }'
done
