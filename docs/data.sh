# What the scripts of this folder share: ways to make measurements of known truth from the samples.

# addNoise LEVEL SEED IN OUT: normal noise (Box and Muller, from a generator of its own, so the same on
# every machine) on the last column, of LEVEL times the root mean square of that column.
addNoise() {
    awk -v level="$1" -v seed="$2" '
        function uniform() { state = (state * 16807) % 2147483647; return state / 2147483647 }
        BEGIN {
            FS = OFS = ","; CONVFMT = OFMT = "%.17g"; pi = atan2(0, -1); n = 0
            for (state = 1000 * seed + 1; warm < 20; ++warm) uniform()
        }
        /^#/ { next }
        !header { header = $0; next }
        { axis[n] = NF > 1 ? $1 "," : ""; value[n] = $NF; squares += $NF * $NF; ++n }
        END {
            print header
            for (i = 0; i < n; ++i) {
                normal = sqrt(-2 * log(uniform())) * cos(2 * pi * uniform())
                print axis[i] (value[i] + normal * level * sqrt(squares / n))
            }
        }' "$3" > "$4"
}

# slowRecorder OUT: the response of a recorder that takes 20 ms to follow, at the 360 Hz of the
# electrocardiogram: (1 - e^(-1/7.2)) e^(-n/7.2), whose sum is 1.
slowRecorder() {
    awk 'BEGIN {
        print "t [s],response"
        for (n = 0; n < 180; ++n) printf "%.17g,%.17g\n", n / 360, (1 - exp(-1 / 7.2)) * exp(-n / 7.2)
    }' > "$1"
}

# rows FIRST LAST IN OUT: the samples FIRST to LAST, LAST excluded.
rows() {
    awk -v first="$1" -v last="$2" '
        /^#/ { next }
        !header { header = 1; print; next }
        n >= first && n < last { print }
        { ++n }' "$3" > "$4"
}

# fendra COMMAND SIGNAL KERNEL ARG... : quiet, and over what is there.
fendra() {
    build/release/bin/fendra "$@" --force --quiet
}

# errorOf COMMAND SIGNAL KERNEL ARG... : the relative error of the result against --truth.
errorOf() {
    build/release/bin/fendra "$@" --force --json -o out/scratch.csv 2> out/scratch.messages |
        sed -n 's/ *"relativeError": \([^,]*\).*/\1/p'
}

./run --version > /dev/null
mkdir -p out
