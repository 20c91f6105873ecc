#!/usr/bin/env bash
# docs/methods.sh: what --auto makes of measurements whose truth is known, beside the best that each
# method can give: the count of steps and the strength of these are searched with the truth in hand
# (about ten minutes in all). The tables in README.md and docs/choosing.md are from this.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
source docs/data.sh

seeds=3
# column FILE: the median, as a column of the table.
column() {
    sort -g "$1" | awk -v middle=$(((seeds + 1) / 2)) '
        NR == middle { printf $1 == "-" ? " | -" : $1 < 10 ? " | %.2g" : " | %.0f", $1 }'
}

# best MEASURED KERNEL TRUTH OPTION GRID ARG...: the smallest error over the values of an option, which
# are tried until it has risen three times.
best() {
    local measured=$1 kernel=$2 truth=$3 option=$4 grid=$5 value error least=inf risen=0
    shift 5
    for value in $grid; do
        error=$(errorOf deconvolve "$measured" "$kernel" "$option" "$value" --truth "$truth" "$@" || true)
        if isBelow "${error:-inf}" "$least"; then
            least=$error risen=0
        elif isBelow "$least" inf; then
            ((++risen < 3)) || break
        fi
    done
    echo "$least"
}
isBelow() { [ "$1" != inf ] && { [ "$2" = inf ] || awk "BEGIN { exit !($1 < $2) }"; }; }
counts=$(awk 'BEGIN { for (k = 1; k < 20000; k = k * 1.3 + 1) print int(k) + 1 }')
strengths=$(awk 'BEGIN { for (s = 1e4; s > 1e-11; s /= 1.8) print s }')

# compareMethods NAME CLEAN KERNEL TRUTH BLURRED ENDS ITERATES
compareMethods() {
    local name=$1 clean=$2 kernel=$3 truth=$4 blurred=$5 ends=$6 iterates=$7 level seed noisy what
    for level in 1e-3 1e-2 5e-2; do
        rm -f out/error-*
        for ((seed = 1; seed <= seeds; ++seed)); do
            noisy=out/noisy.csv
            addNoise $level $seed "$clean" $noisy
            errorOf deconvolve $noisy "$kernel" --truth "$truth" >> out/error-division
            if [ "$iterates" = yes ]; then
                best $noisy "$kernel" "$truth" --max-iterations "$counts" --method van-cittert \
                    --convergence auto --oversample auto --ends "$ends"
            else
                echo -
            fi >> out/error-iteration
            best $noisy "$kernel" "$truth" --strength "$strengths" --method regularized --ends "$ends" \
                >> out/error-regularized
            build/release/bin/fendra deconvolve $noisy "$kernel" --auto --truth "$truth" --json \
                -o out/scratch.csv --force > out/record.json
            sed -n 's/ *"relativeError": \([^,]*\).*/\1/p' out/record.json >> out/error-auto
            sed -n '/"choice"/,$s/ *"method": "\(.*\)",/\1/p' out/record.json >> out/error-chosen
        done
        printf '| %s | %s | %s' "$name" $level "$blurred"
        for what in division iteration regularized auto; do
            column out/error-$what
        done
        printf ' | %s |\n' "$(sort -u out/error-chosen | paste -sd' ')"
    done
}

slowRecorder out/slow.csv
fendra convolve samples/xrf-spectrum.csv samples/xrf-zero-peak.csv -o out/lines.csv
fendra convolve samples/ecg.csv out/slow.csv -o out/slowly.csv
fendra convolve samples/ecg.csv out/slow.csv --pad -o out/whole.csv
rows 200 1224 out/whole.csv out/part.csv
rows 200 1224 samples/ecg.csv out/part-truth.csv
fendra convolve samples/speech.wav samples/street.wav -o out/street.csv
fendra deconvolve samples/ear-far.csv samples/ear-near.csv -o out/ears.csv

echo "| measurement | noise | as it is | division | iteration, best | regularised, best | --auto | it chose |"
echo "| --- | --- | --- | --- | --- | --- | --- | --- |"
blurred() { printf '%.2g' "$(errorOf convolve "$1" "$2" --truth "$1")"; }
compareMethods "X-ray lines by their peak" out/lines.csv samples/xrf-zero-peak.csv samples/xrf-spectrum.csv \
    "$(blurred samples/xrf-spectrum.csv samples/xrf-zero-peak.csv)" periodic yes
compareMethods "electrocardiogram, slow recorder" out/slowly.csv out/slow.csv samples/ecg.csv \
    "$(blurred samples/ecg.csv out/slow.csv)" periodic yes
compareMethods "a part of it" out/part.csv out/slow.csv out/part-truth.csv - odd yes
compareMethods "far ear by near ear" samples/ear-far.csv samples/ear-near.csv out/ears.csv - periodic no
compareMethods "speech in a street" out/street.csv samples/street.wav samples/speech.wav \
    "$(blurred samples/speech.wav samples/street.wav)" periodic no
