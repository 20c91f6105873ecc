#!/usr/bin/env bash
# slurm.sh FOLDER: the program in FOLDER does a batch on a cluster, a real Slurm of two nodes on this machine.
# One of them is lost in the middle: every result is there all the same, with the digest of a single run.
# Everything stands in a temporary folder, listens on this machine alone, and is ended by its process id. As
# root, since slurmd starts the processes of others.
set -Eeuo pipefail

fendra=$(readlink -f "$1")/fendra
scratch=$(mktemp -d)
chmod 755 "$scratch"  # munged refuses folders that others may write to
export SLURM_CONF=$scratch/slurm.conf

fail() {
    echo "$1" >&2
    tail -n 5 "$scratch"/log/* >&2 || true
    exit 1
}

# processesWith NAME=VALUE: the ids of those that were started with this variable, except its own.
processesWith() (
    unset SLURM_CONF
    { grep -lszxF "$1" /proc/[0-9]*/environ || true; } | tr -dc '0-9\n'
)

# finish PID...: ends processes, and waits until they are gone or nobody's.
finish() {
    local pid
    kill -9 "$@" 2> /dev/null || true
    for pid; do
        while grep -qs '^State:.[^Z]' "/proc/$pid/status"; do sleep 0.02; done
    done
}

# All that were started here have this configuration; one that ends may just have started another.
cleanUp() {
    local status=$? left
    while left=$(processesWith "SLURM_CONF=$SLURM_CONF") && [ -n "$left" ]; do
        finish $left
    done
    rm -rf "$scratch"
    exit $status
}
trap cleanUp EXIT
trap 'echo "line $LINENO failed" >&2' ERR

# begin NAME COMMAND...: a daemon with its output in a file; its process id is in the variable NAME.
begin() {
    local name=$1
    shift
    "$@" > "$scratch/log/$name" 2>&1 &
    printf -v "$name" '%s' $!
    disown
}

# waitFor WHAT COMMAND...: asks until it is so, for a minute at most.
waitFor() {
    local what=$1 until=$((SECONDS + 60))
    shift
    until "$@" > /dev/null 2>&1; do
        [ $SECONDS -lt $until ] || fail "$what"
        sleep 0.1
    done
}

# Three ports in a row that nobody listens on.
freePorts() {
    local port one
    for port in $(shuf -i 20000-59000 -n 100); do
        for one in "$port" $((port + 1)) $((port + 2)); do
            ! (: < "/dev/tcp/127.0.0.1/$one") 2> /dev/null || continue 2
        done
        echo "$port"
        return
    done
}

startNode() {
    begin "$1" slurmd -N "$1" -D
    waitFor "the nodes do not become idle" bothIdle
}

bothIdle() { [ "$(sinfo -h -N -o %T)" = $'idle\nidle' ]; }

startSlurm() {
    local port
    mkdir -p "$scratch"/{log,state,munge,spool-n0,spool-n1}
    head -c 1024 /dev/urandom > "$scratch/munge/key"
    chmod 400 "$scratch/munge/key"
    begin munged munged --foreground --force --socket="$scratch/munge/socket" --key-file="$scratch/munge/key" \
        --pid-file="$scratch/munge/pid" --log-file="$scratch/munge/log" --seed-file="$scratch/munge/seed"
    waitFor "munged does not start" test -S "$scratch/munge/socket"
    port=$(freePorts)
    cat > "$SLURM_CONF" <<END
ClusterName=fendra
SlurmctldHost=localhost
SlurmctldPort=$port
SlurmUser=root
AuthType=auth/munge
AuthInfo=socket=$scratch/munge/socket
CredType=cred/munge
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SwitchType=switch/none
MpiDefault=none
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
SchedulerParameters=batch_sched_delay=1,sched_interval=1
SchedulerType=sched/builtin
ReturnToService=2
SlurmdTimeout=5
StateSaveLocation=$scratch/state
SlurmdSpoolDir=$scratch/spool-%n
SlurmctldPidFile=$scratch/state/slurmctld.pid
SlurmdPidFile=$scratch/spool-%n/slurmd.pid
SlurmctldLogFile=$scratch/log/slurmctld.log
SlurmdLogFile=$scratch/log/slurmd-%n.log
NodeName=n0 NodeHostname=localhost NodeAddr=127.0.0.1 Port=$((port + 1)) CPUs=1
NodeName=n1 NodeHostname=localhost NodeAddr=127.0.0.1 Port=$((port + 2)) CPUs=1
PartitionName=all Nodes=n0,n1 Default=YES State=UP MaxTime=INFINITE
END
    # No task is kept by control groups, which a container may not have: this plugin does not ask for them.
    echo "CgroupPlugin=cgroup/v1" > "$scratch/cgroup.conf"
    begin slurmctld slurmctld -D
    begin n0 slurmd -N n0 -D
    startNode n1
}

# Sounds of some seconds, whose convolution in the time domain takes long enough to be killed in.
makeSignals() {
    mkdir -p "$scratch/batch/takes"
    awk 'BEGIN { s = 1; for (i = 0; i < 30000; ++i) { s = s * 16807 % 2147483647; print s / 2147483647 - 0.5 } }' \
        > "$scratch/batch/noise.txt"
    head -n 10000 "$scratch/batch/noise.txt" > "$scratch/batch/kernel.txt"
    local i
    for i in $(seq 200); do
        tail -n +$((20 * i)) "$scratch/batch/noise.txt" > "$scratch/batch/takes/$i.txt"
    done
}

# digests MANIFEST: name and digest of each result, by name.
digests() {
    sed -E 's/^\{"name":"([^"]*)".*"result":\{[^}]*"sha256":"([0-9a-f]*)".*/\1 \2/' "$1" | sort
}

# variable PID NAME: of the environment that a process was started with; nothing of one that has ended.
variable() { sed -nz "s/^$2=//p" "/proc/$1/environ" 2> /dev/null | tr -d '\0' || true; }

# holdTask: stops the task on the node n1, with its processes in the variable tasks, where some of its files
# are done and more are not.
holdTask() {
    local until=$((SECONDS + 60)) shard lines
    while [ $SECONDS -lt $until ]; do
        tasks=$(processesWith SLURMD_NODENAME=n1)
        [ -n "$tasks" ] || continue
        kill -STOP $tasks 2> /dev/null || true
        shard=$(variable "${tasks%%[!0-9]*}" SLURM_ARRAY_TASK_ID)
        lines=$(cat "wet/batch-$shard-of-8.jsonl" 2> /dev/null | wc -l) || true
        [ "$lines" -lt 1 ] || [ "$lines" -gt 15 ] || return 0
        kill -CONT $tasks 2> /dev/null || true
    done
    fail "the node has no task to lose"
}

# Loses a node as a power cut does: first the daemon, or it would report the end of the others, then the
# program that keeps the task, then the task.
loseNode() {
    local tasks pid keepers=()
    holdTask
    for pid in $tasks; do
        pid=$(sed -n 's/^PPid:.//p' "/proc/$pid/status" 2> /dev/null) || continue
        ! grep -qs '^slurmstepd' "/proc/$pid/comm" || keepers+=("$pid")
    done
    [ ${#keepers[@]} -gt 0 ] || fail "nobody keeps the task of the node"
    finish "$n1"
    finish "${keepers[@]}"
    finish $tasks
}

# Slurm starts a lost task again after two minutes; here at once.
startAgain() {
    local task
    task=$(squeue -h -r -t PENDING -o '%i %r' | awk '$2 == "BeginTime" { print $1 }')
    [ -n "$task" ] && scontrol update JobId="$task" StartTime=now
}

# batchWithLoss OPTIONS...: all 200 results, each as a single run gives it, although a node is lost.
batchWithLoss() {
    local run lost file began=$SECONDS
    rm -rf wet
    "${batch[@]}" --into wet --slurm 8 "$@" > wet.log 2>&1 &
    run=$!
    loseNode
    lost=$(cat wet/batch-*.jsonl | wc -l)
    [ $# -gt 0 ] || waitFor "Slurm does not start the lost task again" startAgain
    wait $run || { cat wet.log >&2; fail "the batch failed"; }
    [ "$(wc -l < wet/batch.jsonl)" = 200 ] || fail "not every file has one line"
    cmp <(digests alone/batch.jsonl) <(digests wet/batch.jsonl)
    for file in takes/*; do
        cmp <(grep -v '^#' "alone/${file#*/}") <(grep -v '^#' "wet/${file#*/}")
    done
    "$fendra" batch --check wet
    ! ls -A wet | grep -vE '^([0-9]+\.txt|batch\.jsonl)$' || fail "something is left in the folder"
    echo "${*:-as it is}: a node was lost after $lost of 200 files; all were there after $((SECONDS - began)) s"
}

startSlurm
makeSignals
cd "$scratch/batch"
batch=("$fendra" batch convolve takes --kernel kernel.txt --domain time)
"${batch[@]}" --into alone

# Its task is submitted again, or started again by Slurm.
batchWithLoss --slurm-options=--no-requeue
grep -c '^array ' wet.log | grep -qx 2 || fail "nothing was submitted again"
startNode n1
batchWithLoss
grep -c '^array ' wet.log | grep -qx 1 || fail "Slurm did not start the task again"
