#!/usr/bin/env bash
# docs/choosing.sh: draws the figures of docs/choosing.md, in docs/choosing/, from what the program
# writes on the samples. Needs gnuplot.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
source docs/data.sh
work=out/choosing
mkdir -p $work docs/choosing

spectrum=samples/xrf-spectrum.csv
peak=samples/xrf-zero-peak.csv
heart=samples/ecg.csv
slow=$work/slow.csv
slowRecorder $slow

# Place: the same deconvolution, as the module gives it and where it belongs.
for origin in none auto; do
    fendra deconvolve $spectrum $peak --method van-cittert --max-iterations auto --convergence auto \
        --origin $origin -o $work/place-$origin.csv
done

# Strength: the curve of the search beside the error at each count, which only a known truth can tell.
fendra convolve $spectrum $peak -o $work/blurred.csv
addNoise 1e-2 1 $work/blurred.csv $work/noisy.csv
iterate() { fendra deconvolve $work/noisy.csv $peak --method van-cittert --convergence auto "$@"; }
iterate --max-iterations auto --curve $work/curve.csv -o $work/right.csv
iterate --max-iterations 2 -o $work/weak.csv
iterate --max-iterations 5001 -o $work/strong.csv
for count in 1 2 3 4 6 8 11 16 22 31 44 62 88 125 177 250 354 500 707 1000 1414 2000 2828 4000 5657 8000 11314 16000; do
    echo "$count,$(errorOf deconvolve $work/noisy.csv $peak --method van-cittert --convergence auto \
        --max-iterations $((count + 1)) --truth $spectrum)"
done > $work/errors.csv

# Division, as it is and regularised.
fendra convolve $heart $slow -o $work/slowly.csv
addNoise 1e-2 1 $work/slowly.csv $work/slowly-noisy.csv
fendra deconvolve $work/slowly-noisy.csv $slow -o $work/divided.csv
fendra deconvolve $work/slowly-noisy.csv $slow --auto -o $work/regularized.csv

# The lag: errors of the iteration, plain and oversampled.
fendra convolve $heart $slow --pad -o $work/whole.csv
addNoise 1e-3 1 $work/whole.csv $work/quiet.csv
for factor in 1 4; do
    for count in 1 2 3 5 7 10 14 20 28 40 57 80 113 160 226 320 453 640; do
        echo "$count,$(errorOf deconvolve $work/quiet.csv $slow --pad --method van-cittert --convergence auto \
            --max-iterations $((count + 1)) --stop-at-minimum off --oversample $factor --truth $heart)"
    done > $work/oversampled-$factor.csv
done

# Ends: a part of that recording.
rows 200 1224 $work/whole.csv $work/part-clean.csv
rows 200 1224 $heart $work/part-truth.csv
addNoise 1e-3 1 $work/part-clean.csv $work/part.csv
for ends in periodic odd; do
    fendra deconvolve $work/part.csv $slow --method regularized --ends $ends -o $work/ends-$ends.csv
done

# Band: with more noise, so that it can be seen.
addNoise 5e-2 1 $work/blurred.csv $work/noisier.csv
build/release/bin/fendra deconvolve $work/noisier.csv $peak --auto --json -o $work/band.csv --force > $work/band.json
resolution=$(sed -n 's/ *"resolution": //p' $work/band.json)

# Sweep: a measurement of the street.
build/release/bin/fendra sweep --frequencies 50:7600 --seconds 4 --rate 16000 -o $work/sweep.wav --force --quiet
fendra convolve $work/sweep.wav samples/street.wav --pad -o $work/played.csv
addNoise 3.16e-3 1 $work/played.csv $work/recorded.csv
fendra deconvolve $work/recorded.csv $work/sweep.wav --keep 0:1 -o $work/sweep-divided.csv
fendra deconvolve $work/recorded.csv $work/sweep.wav --auto --frequencies 60:7400 --keep 0:1 -o $work/sweep-band.csv
# levels IN: the root mean square of each 10 ms, in dB below the largest sample.
levels() {
    awk -F, '
        /^#/ { next }
        !header { header = 1; next }
        { size = $2 < 0 ? -$2 : $2; largest = size > largest ? size : largest; squares[int(n / 160)] += $2 * $2; ++n }
        END {
            for (i = 0; i < int(n / 160); ++i)
                print (i + 0.5) / 100 "," 10 * log(squares[i] / 160 / largest ^ 2) / log(10)
        }' "$1" > "$1.levels"
}
levels $work/sweep-divided.csv
levels $work/sweep-band.csv

gnuplot -e "work = '$work/'; resolution = $resolution" docs/choosing.gp
