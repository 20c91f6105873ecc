#!/usr/bin/env bash
# page.sh FOLDER [PICTURES]: the pages of the program in FOLDER, in a real browser, which points at
# them, prints them and watches what they ask for. Pictures of them are left in PICTURES, to be
# looked at. Ends with 77 where there is no Chromium, no Python or no window part.
set -euo pipefail
bin=$(readlink -f "$1")
export LC_ALL=C PATH=$bin:$PATH PYTHONDONTWRITEBYTECODE=1
tests=$(dirname "$(readlink -f "$0")")
samples=$tests/../../samples
pictures=${2:+$(mkdir -p "$2" && readlink -f "$2")}
skip() {
    echo "skipped: $1 is not there"
    exit 77
}
command -v chromium > /dev/null || skip "Debian's chromium"
[ -x /usr/bin/python3 ] || skip "Debian's python3"
[ -e "$bin/fendra-window.so" ] || skip "fendra-window.so"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

cp "$samples"/xrf-*.csv "$samples"/speech.wav .
for language in en de fr; do
    LC_ALL=$language fendra deconvolve xrf-spectrum.csv xrf-zero-peak.csv --auto -q -o sharp.csv \
        --page "$language.html" --force
done
fendra compare xrf-spectrum.csv xrf-zero-peak.csv --page compare.html > compare.txt
fendra sweep --frequencies 50:7600 --seconds 4 --rate 16000 -q -o sweep.wav --page sweep.html
fendra convolve sweep.wav speech.wav --pad -q -o recorded.wav
fendra deconvolve recorded.wav sweep.wav --auto --frequencies 60:7400 -q -o room.wav --page room.html

# Steps of 1 s from -2 s on, with values that are all different, gaps and an infinity, under a name
# and columns that would be markup.
name='"><img src=x onerror=document.title=1><script>document.title="owned"<!--<script x>${1+1}&lt;.csv'
{
    echo 't_s,"</script><svg onload=document.title=2>"'
    seq 0 63 | awk '{ print $1 - 2 "," (7 * $1 * $1) % 101 + 0.25 }'
} > "$name"
printf '%s\n' 1 0 0 > impulse.txt
fendra deconvolve "$name" impulse.txt --method spectral -q -o plain.csv --page hostile.html
# What a page must not be: by it the checks are checked.
cat > bad.html << 'END'
<!DOCTYPE html><title>bad</title><p style="width: 2000px"><script>document.title = "owned"</script>
<img src="http://fendra.invalid/x.png">
END
/usr/bin/python3 "$tests/pages.py" "$name" ${pictures:+"$pictures"}
