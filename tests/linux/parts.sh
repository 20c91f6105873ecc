#!/usr/bin/env bash
# parts.sh FOLDER: what fendra, in FOLDER, makes of a part that is missing, lacks its library, breaks
# down, complains, or does not keep to what they agreed on. The parts here are scripts.
set -uo pipefail
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp "$1"/fendra "$1"/*.so "$scratch"
cd "$scratch" || exit
failed=0
{ printf '%-124s' x; printf '\000\001IM'; } > run.mat
printf 'a\n1\n2\n' > two.csv

# part LINE: from now on fendra-mat is that line of a shell.
part() {
    printf '#!/bin/sh\n%s\n' "$1" > fendra-mat
    chmod +x fendra-mat
}

# expect LINE WORD...: fendra with these words fails, says that line, and leaves nothing new.
expect() {
    local line=$1 said status=0 before after
    shift
    before=$(ls -A)
    said=$(./fendra "$@" 2>&1) || status=$?
    after=$(ls -A)
    [ "$said" = "fendra: $line" ] && [ $status -eq 1 ] && [ "$before" = "$after" ] && return
    printf '%s: status %s\n  expected %s\n  found    %s\n' "$*" "$status" "$line" "$said"
    failed=1
}

expect "run.mat: fendra was built without libmatio, by which such files are read; install libmatio-dev and build it again, or save it in another format, as .npy" \
    info run.mat
expect "out.mat: fendra was built without libmatio, by which such files are read; install libmatio-dev and build it again, or save it in another format, as .npy" \
    convert two.csv out.mat
part 'echo "libmatio.so.11: cannot open shared object file" >&2; exit 127'
expect "run.mat: libmatio is not installed, by which such files are read; install libmatio11" info run.mat
expect "out.mat: libmatio is not installed, by which such files are read; install libmatio11" convert two.csv out.mat
part 'echo assertion >&2; kill -SEGV $$'
expect "run.mat: libmatio broke down on it (signal 11): it is damaged, or too large for the memory that is free; copy it again, or save it in another format, as .npy" \
    info run.mat
part 'echo "the library mutters" >&2; echo "$2: it is odd" >&2; exit 1'
expect "run.mat: it is odd" info run.mat
part 'if [ $1 = list ]; then printf "x\0float64, 3 x 1\0\0"; fi'
expect "run.mat: the signal arrived incomplete; try again" info run.mat
part 'if [ $1 = list ]; then printf "x\0float64, 3 x 1\0\0"; else printf "12345678{}\002\000\000\000\000\000\000\000"; fi'
expect "run.mat: the signal arrived incomplete; try again" info run.mat
part 'if [ $1 = list ]; then printf "x\0float64, 3 x 1\0\0y\0text\0\0"; fi'
expect "run.mat: several signals, x (float64, 3 x 1), y (text); name one of them, as in run.mat:y" convert run.mat out.csv
part '[ $1 = version ] || { printf partly; echo "$2: the disk is full" >&2; exit 1; }'
expect "out.mat: the disk is full" convert two.csv out.mat

# It has the open file as its standard input, and the words; fendra lists what it says of itself.
part 'case $1 in
    version) echo libmatio 0 ;;
    list) printf "x\0float64, 1 x 1\0\0" ;;
    *) echo "$*: $(wc -c)" >&2; exit 1 ;;
esac'
expect "read run.mat x --allow-nonfinite --lossy --axis none: 128" info run.mat --allow-nonfinite --lossy --no-axis
./fendra info | grep -q '^libraries  .*MAT: libmatio 0$' || { ./fendra info; failed=1; }
exit $failed
