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

# timed COMMAND...: leaves its seconds in elapsed, and the most memory that it used, in MB, in memory.
timed() {
    local start end
    start=$(date +%s.%N)
    "$@" > /dev/null &
    memory=0
    while kill -0 $! 2> /dev/null; do
        memory=$(awk -v now="$memory" '/VmHWM/ { now = $2 / 1024 } END { print now }' /proc/$!/status 2> /dev/null || echo "$memory")
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

# linked NUMBER FROM FOLDER ENDING: so many names for one file.
linked() {
    mkdir -p "$3"
    local i
    for ((i = 0; i < $1; ++i)); do ln "$2" "$3/$i.$4"; done
}

noise='{ s = (s * 16807) % 2147483647; print s / 2147483647 - 0.5 }'
yes | head -n 480000 | awk "BEGIN { s = 1 } $noise" > long.txt
yes | head -n 96000 | awk "BEGIN { s = 2 } $noise" > room.txt
yes | head -n 64 | awk "BEGIN { s = 3 } $noise" > small.csv
yes | head -n 11 | awk "BEGIN { s = 4 } $noise" > taps.txt
echo 1 > one.txt
fendra convolve long.txt one.txt --rate 48000 --encoding pcm16 -q -o long.wav
fendra convolve room.txt one.txt --rate 48000 -q -o room.wav

cores=$(nproc)
linked "$files" long.wav long wav
single=$(for i in 1 2 3 4 5; do processorTime fendra convolve long.wav room.wav --pad -q -o one.wav --force; done | sort -n | sed -n 3p)
timed fendra batch convolve long --kernel room.wav --pad --into out -q
awk -v n="$files" -v one="$single" -v e="$elapsed" -v c="$cores" -v m="$memory" 'BEGIN {
    printf "%d files of 10 s, %d jobs: %.1f s, %.2f of the sum of single runs (%.1f ms each), %.0f MB\n", n, c, e, e * c / (n * one), 1000 * one, m }'
rm -r out long

for count in 20000 100000; do
    linked $count small.csv small csv
    timed fendra batch convolve small --kernel taps.txt --pad --into out -q --jobs 1
    awk -v n=$count -v e="$elapsed" -v m="$memory" 'BEGIN { printf "%d files of 64 samples, 1 job: %.0f a second, %.1f MB\n", n, n / e, m }'
    rm -r out small
done

linked 10000 small.csv a csv
linked 10000 small.csv b csv
both() {
    fendra batch convolve a --kernel taps.txt --pad --into outA -q --jobs 1 &
    fendra batch convolve b --kernel taps.txt --pad --into outB -q --jobs 1
    wait $!
}
mkdir all && mv a b all
timed fendra batch convolve all --recursive --kernel taps.txt --pad --into out -q --jobs 1
one=$elapsed
rm -r out
timed fendra batch convolve all --recursive --kernel taps.txt --pad --into out -q --jobs 2
two=$elapsed
mv all/a all/b .
timed both
awk -v one="$one" -v two="$two" -v both="$elapsed" 'BEGIN {
    printf "20000 small files: two jobs %.2f times as fast as one, two batches side by side %.2f times\n", one / two, one / both }'
