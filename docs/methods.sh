#!/usr/bin/env bash
# docs/methods.sh: the methods on a measured spectrum that was blurred, without and with noise of a
# thousandth of its root mean square. The figures of the README come from here.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

spectrum=samples/xrf-spectrum.csv
kernel=samples/xrf-zero-peak.csv
mkdir -p out
./run convolve $spectrum $kernel --domain time -o out/late.csv --force > /dev/null
./run convolve $spectrum $kernel -o out/blurred.csv --force > /dev/null

# addNoise IN OUT: normal noise (Box and Muller, from a generator of its own), the same on every run.
addNoise() {
    awk -F, '
        function uniform() { state = (state * 16807) % 2147483647; return state / 2147483647 }
        BEGIN { n = 0; state = 1; OFS = ","; CONVFMT = OFMT = "%.17g"; pi = atan2(0, -1) }
        /^#/ { next }
        !header { header = $0; next }
        { axis[n] = $1; value[n] = $2; squares += $2 * $2; ++n }
        END {
            print header
            for (i = 0; i < n; ++i) {
                noise = sqrt(-2 * log(uniform())) * cos(2 * pi * uniform())
                print axis[i], value[i] + noise * 1e-3 * sqrt(squares / n)
            }
        }' "$1" > "$2"
}
addNoise out/blurred.csv out/blurred-noisy.csv
addNoise out/late.csv out/late-noisy.csv

for signal in blurred blurred-noisy late late-noisy; do
    echo "== $signal"
    ./run compare out/$signal.csv $kernel --truth $spectrum --max-iterations 30
done
