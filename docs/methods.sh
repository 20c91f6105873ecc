#!/usr/bin/env bash
# docs/methods.sh: the methods on the shipped recordings, a measured spectrum that was blurred and
# speech that was put into a street, each convolved in the frequency and in the time domain, without
# and with noise of a thousandth of its root mean square. The figures in the README are from this.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
mkdir -p out

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
# compareMethods NAME ORIGINAL KERNEL OPTION...
compareMethods() {
    local name=$1 original=$2 kernel=$3 domain
    shift 3
    for domain in frequency time; do
        ./run convolve "$original" "$kernel" --domain $domain --truth "$original" -o "out/$name-$domain.csv" \
            --force 2> /dev/null | sed -n "s/^relative error against .*: \([^ ]*\).*/== $name, $domain domain: error \1/p"
        addNoise "out/$name-$domain.csv" "out/$name-$domain-noisy.csv"
        ./run compare "out/$name-$domain.csv" "$kernel" --truth "$original" "$@"
        echo "== with noise"
        ./run compare "out/$name-$domain-noisy.csv" "$kernel" --truth "$original" "$@"
    done
}
compareMethods spectrum samples/xrf-spectrum.csv samples/xrf-zero-peak.csv --max-iterations 30
# The filter would need 16 GB and 3e13 multiply-adds.
compareMethods speech samples/speech.wav samples/street.wav --pad --methods spectral,van-cittert \
    --convergence 0.03 --max-iterations 30
