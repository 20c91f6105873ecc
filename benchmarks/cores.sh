#!/usr/bin/env bash
# benchmarks/cores.sh FOLDER [REPEATS]: what the program in FOLDER gains from two cores, in convolving two channels
# in the time domain, beside what two runs of one core each gain when they run side by side: these share nothing but
# the machine. The three take turns, and ratios are medians of those of each turn. Fails where two cores gain
# neither 1.8 nor 0.9 of what two runs do.
set -euo pipefail
export LC_ALL=C
fendra=$(realpath "$1")/fendra
repeats=${2-5}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

# noise SAMPLES CHANNELS SEED
noise() {
    awk -v n="$1" -v channels="$2" -v s="$3" 'BEGIN {
        for (i = 0; i < n * channels; ++i) {
            s = s * 16807 % 2147483647
            printf "%.6f%s", s / 2147483647 - 0.5, (i + 1) % channels ? "," : "\n"
        }
    }'
}

# convolved NAME JOBS
convolved() { "$fendra" convolve signal.wav room.wav --domain time --pad --jobs "$2" -o "$1.wav" --force -q; }
pair() { convolved "$1" 1 & convolved "$1-too" 1; wait $!; }

# seconds COMMAND...
seconds() {
    local start=$EPOCHREALTIME
    "$@"
    awk -v from="$start" -v to="$EPOCHREALTIME" 'BEGIN { print to - from }'
}

# median FORMULA: over the turns, whose columns are one core, two cores, two runs
median() {
    awk "{ print $1 }" turns | sort -g |
        awk '{ x[NR] = $1 } END { print (x[int((NR + 1) / 2)] + x[int(NR / 2) + 1]) / 2 }'
}

echo 1 > one.txt
noise 480000 2 1 | "$fendra" convolve - one.txt --domain frequency --rate 48000 --origin none -o signal.wav -q
noise 48000 1 2 | "$fendra" convolve - one.txt --domain frequency --rate 48000 --origin none -o room.wav -q
convolved one 1
convolved two 2
cmp one.wav two.wav

for ((turn = 0; turn < repeats; ++turn)); do
    echo "$(seconds convolved one 1) $(seconds convolved two 2) $(seconds pair pair)" >> turns
done
sed -n 's/^model name[[:blank:]]*: //p' /proc/cpuinfo | uniq
awk -v one="$(median '$1')" -v two="$(median '$2')" -v pair="$(median '$3')" -v turns="$repeats" \
    -v gain="$(median '$1 / $2')" -v pairGain="$(median '2 * $1 / $3')" -v share="$(median '$3 / (2 * $2)')" 'BEGIN {
    printf "10 s of stereo by 1 s, 48 kHz, time domain; medians of %d\n", turns
    printf "one core             %6.2f s\n", one
    printf "two cores            %6.2f s   %.2f times as fast\n", two, gain
    printf "two runs of one core %6.2f s   %.2f times as fast as one after the other\n", pair, pairGain
    printf "two cores gain %.2f of what two runs gain\n", share
    exit gain < 1.8 && share < 0.9
}'
