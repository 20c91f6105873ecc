#!/usr/bin/env bash
# stopped.sh FOLDER: the program in FOLDER is stopped within an iteration, and keeps what there is.
set -uo pipefail
PATH=$1:$PATH
export LC_ALL=C
failed=0 work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit

complain() {
    printf '%s\n' "$*"
    failed=1
}

# A step takes some tenths of a second.
awk 'BEGIN { for (i = 0; i < 40000; ++i) {
    x = (i - 12000) / 300; y = (i - 28000) / 500; z = (i - 900) / 150
    print exp(-x * x) + exp(-y * y) > "signal.txt"
    print exp(-z * z) / 265.87 > "kernel.txt"
} }'
iterate=(fendra deconvolve signal.txt kernel.txt --method van-cittert)

# stop SECONDS SIGNAL... -- COMMAND...: the signals, a moment apart, after so many seconds of the command; its
# status, and what it said. A shell without a terminal has its background ignore interrupts.
stop() {
    local seconds=$1 signals=()
    shift
    while [ "$1" != -- ]; do signals+=("$1") && shift; done
    env --default-signal=INT "${@:2}" > said 2> errors &
    sleep "$seconds"
    for signal in "${signals[@]}"; do kill -s "$signal" $! && sleep 0.01; done 2> /dev/null
    wait $!
    status=$?
}

# expectNothing STATUS WHEN: no file, whole or partial, is left.
expectNothing() {
    [ "$status" = "$1" ] || complain "$2: status $status instead of $1"
    [ "$(find . -name '*out*' | wc -l)" = 0 ] || complain "$2: there is $(find . -name '*out*')"
}

# digest FILE: of a result, from its comments.
digest() { sed -n 's/^# SHA-256 of the result.*: //p' "$1"; }

for seconds in 2 8 30; do  # by how busy the machine is
    stop $seconds INT -- "${iterate[@]}" --max-iterations 400 --keep-partial -o out.csv --json
    [ -e out.csv ] && break
done
[ $status = 130 ] || complain "stopped: status $status"
count=$(sed -n 's/^ *"stoppedAfter": \([0-9]*\).*/\1/p' said)
grep -q '"stopped": true' said || complain "the record does not say that it was stopped"
grep -qx "fendra: stopped after $count of at most 400 steps, counted as by --max-iterations: out.csv holds the \
estimate so far" errors || complain "stopped: $(cat errors)"
grep -qx "# stopped after $count of at most 400 steps, counted as by --max-iterations" out.csv ||
    complain "the comments do not say after how many steps"
"${iterate[@]}" --max-iterations "$count" -o bounded.csv -q || complain "no result after $count steps"
[ "$(digest out.csv)" = "$(digest bounded.csv)" ] || complain "$count steps give something else"
cp out.csv kept.csv
eval "$(sed -n 's/^# without a stop: \(.*\)/\1/p' kept.csv) --force -q" || complain "the command line of the comment fails"
[ "$(digest out.csv)" = "$(digest kept.csv)" ] || complain "the command line of the comment gives something else"
rm ./*.csv

for seconds in 0.1 0.2 0.4; do  # it says nothing while it does not yet listen
    stop $seconds INT -- "${iterate[@]}" --keep-partial -o out.csv
    [ -s errors ] && break
done
expectNothing 130 "before the first step"
grep -qx 'fendra: stopped before .*; nothing is written' errors || complain "before the first step: $(cat errors)"
stop 2 INT -- "${iterate[@]}" --max-iterations 400 -o out.csv
expectNothing 130 "without --keep-partial"
stop 2 TERM -- "${iterate[@]}" --max-iterations 400 --keep-partial -o out.csv
expectNothing 143 "ended"
stop 2 INT INT -- "${iterate[@]}" --max-iterations 400 --keep-partial -o out.csv --truth signal.txt
[ $status = 130 ] || complain "interrupted twice: status $status"
exit $failed
