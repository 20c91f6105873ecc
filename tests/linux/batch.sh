#!/usr/bin/env bash
# batch.sh FOLDER: the program in FOLDER folds many files. Killed at ten moments, and stopped by a limit on
# the size of files and by a full disk, it leaves nothing that is half-written; given again, the command
# completes, with what a batch that nothing stopped has given.
set -uo pipefail
PATH=$1:$PATH
export LC_ALL=C
files=400 failed=0 work=$(mktemp -d)
trap 'umount "$work/small" 2> /dev/null; rm -rf "$work"' EXIT
cd "$work" || exit

complain() {
    printf '%s\n' "$*"
    failed=1
}

# batch OPTION...: the batch, in the folder that the shell is in.
batch() {
    fendra batch convolve in --kernel kernel.txt --pad --into out --jobs 2 -q "$@"
}

# prepare FOLDER: signals and kernel in a folder of their own, so that the same command line gives the same
# bytes in each.
prepare() {
    mkdir -p "$1/in"
    cp -r whole/in whole/kernel.txt "$1"
}

# lines FOLDER: of the manifest.
lines() {
    { wc -l < "$1/out/batch.jsonl" || echo 0; } 2> /dev/null
}

# expectWhole FOLDER WHEN: whatever has the name of a result is one.
expectWhole() {
    local file
    for file in "$1"/out/*.csv; do
        [ -e "$file" ] || continue
        cmp -s "$file" "whole/out/${file##*/}" || complain "$2: ${file##*/} is not as it should be"
    done
}

# expectComplete FOLDER WHEN: all results are there, are right, and nothing else is.
expectComplete() {
    (cd "$1" && batch) || complain "$2: the command does not complete"
    expectWhole "$1" "$2"
    [ "$(cd "$1/out" && find . | sort)" = "$(cd whole/out && find . | sort)" ] ||
        complain "$2: other files than there should be:
$(cd "$1/out" && find . | sort | diff - <(cd "$work/whole/out" && find . | sort))"
    (cd "$1" && fendra batch --check out > /dev/null) || complain "$2: the check finds faults"
}

mkdir -p whole/in
awk -v files=$files 'BEGIN {
    for (f = 1; f <= files; ++f) {
        name = sprintf("whole/in/%03d.csv", f)
        for (i = 0; i < 300 + f; ++i) { s = (s * 16807 + f) % 2147483647; print s / 2147483647 > name }
        close(name)
    }
    for (i = 0; i < 50; ++i) print 1 / (1 + i) > "whole/kernel.txt"
}'
(cd whole && batch) || complain "the batch that nothing stops fails"
for name in 001 200 400; do
    (cd whole && fendra convolve in/$name.csv kernel.txt --pad -o single.csv -q &&
        grep -o '[0-9a-f]\{64\}' single.csv | grep -q -f - <(grep "\"$name" out/batch.jsonl)) ||
        complain "$name: the digest is not that of a single run"
    rm whole/single.csv
done

# Killed when so many lines are in the manifest.
prepare killed
kills=0
for ((moment = 1; moment <= 10; ++moment)); do
    (cd killed && exec fendra batch convolve in --kernel kernel.txt --pad --into out --jobs 2 -q) &
    program=$!
    while kill -0 $program 2> /dev/null &&
        [ "$(lines killed)" -lt $((moment * files / 12)) ]; do :; done
    kill -9 $program 2> /dev/null && kills=$((kills + 1))
    wait $program 2> /dev/null
    expectWhole killed "killed at moment $moment"
done
[ $kills -eq 10 ] || complain "killed $kills times only"
expectComplete killed "killed ten times"
[ "$(lines killed)" -lt $((files + 40)) ] || complain "killed: much was done again"

# The manifest reaches the limit first, in the middle of a line; then each result does.
for blocks in 40 4; do
    prepare limited$blocks
    (cd limited$blocks && ulimit -f $blocks && batch 2> errors) && complain "limit of $blocks: no failure"
    grep -q 'File too large' limited$blocks/errors || complain "limit of $blocks: not told of"
    expectWhole limited$blocks "limit of $blocks"
    expectComplete limited$blocks "limit of $blocks"
done

# A disk that is full, where the test may make one.
mkdir small
if mount -t tmpfs -o size=1m tmpfs small 2> /dev/null; then
    prepare full
    mkdir small/out && ln -s ../small/out full/out
    (cd full && batch 2> errors) && complain "full disk: no failure"
    grep -q 'No space left' full/errors || complain "full disk: not told of"
    expectWhole full "full disk"
    mount -o remount,size=64m small
    expectComplete full "full disk"
else
    echo "full disk: not tried, since this user cannot mount one"
fi
exit $failed
