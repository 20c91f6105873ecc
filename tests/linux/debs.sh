#!/usr/bin/env bash
# debs.sh DEB...           unpacks the packages of ./package deb, and tries there what each is for
# debs.sh --system DEB...  as root, in a Debian to throw away: installs them, tries the same, and removes
#                          them: nothing may be left
set -uo pipefail
project=$(cd "$(dirname "$0")/../.." && pwd)
isSystem=no failed=0
if [ "$1" = --system ]; then
    isSystem=yes
    shift
fi
debs=()
for deb; do debs+=("$(readlink -f "$deb")"); done
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

fail() { printf '%s\n' "$*"; failed=1; }

# run WHAT COMMAND...: its output is shown where it fails.
run() {
    local what=$1
    shift
    "$@" > "$scratch/said" 2>&1 && return
    fail "$what: $*"
    cat "$scratch/said"
    return 1
}

# expect WHAT EXPECTED FOUND
expect() {
    [ "$2" = "$3" ] || fail "$1: expected $2, found $3"
}

# The first line of the README that is a command of the program, as it stands, and its record in Python.
tryProgram() {
    local line
    line=$(grep -m 1 '^fendra ' "$project/README.md")
    rm -rf "$scratch/project"
    mkdir "$scratch/project"
    cp -r "$project/samples" "$scratch/project"
    cd "$scratch/project" || exit
    run "README" bash -c "${line%% #*}"
    [ -n "$(find . -newer samples -name '*.csv' -size +1k)" ] || fail "README: $line leaves no result"
    expect selftest "all 826e1367ff88a51e" "$(fendra selftest | grep '^all ' | xargs)"
    run formats bash -c 'fendra info "$1" | grep HDF5' - "$project/tests/commands/fixtures/kinds.h5"
    run picture fendra plot samples/xrf-spectrum.csv -o picture.png
    expect "manual page" ".TH FENDRA 1" "$(zcat "$root"/usr/share/man/man1/fendra.1.gz | head -n 1)"
    ! command -v man > /dev/null ||
        expect "manual page" "" "$(man --warnings -E UTF-8 -l "$root"/usr/share/man/man1/fendra.1.gz 2>&1 > /dev/null)"
    ! command -v desktop-file-validate > /dev/null ||
        run "desktop entry" desktop-file-validate "$root/usr/share/applications/fendra.desktop"
}

# Each shell finds its script where it looks for those of programs.
tryCompletion() {
    local share=$root/usr/share
    expect bash convolve "$(bash -c 'source "$1"; COMP_WORDS=(fendra convo) COMP_CWORD=1; _fendra; echo "${COMPREPLY[@]}"' \
        - "$share/bash-completion/completions/fendra")"
    ! command -v fish > /dev/null ||
        expect fish convolve "$(HOME=$scratch XDG_DATA_DIRS=$share fish -c "complete -C 'fendra convo'" | cut -f 1)"
    ! command -v zsh > /dev/null ||
        expect zsh _fendra "$(zsh -f -c 'fpath+=($1); autoload -U compinit; compinit -D -u; print $_comps[fendra]' \
            - "$share/zsh/vendor-completions")"
}

tryLibrary() {
    local name flags
    flags=$(pkg-config --cflags --libs fendra) || fail "pkg-config finds no library"
    for name in convolve deconvolve; do
        # shellcheck disable=SC2086
        run "$name.c" gcc -std=c99 "$project/examples/$name.c" $flags -lm -o "$scratch/$name" &&
            run "$name.c" "$scratch/$name"
    done
    command -v cmake > /dev/null || return
    run "find_package" cmake -S "$project/examples" -B "$scratch/made" &&
        run "find_package" cmake --build "$scratch/made" &&
        run "find_package" "$scratch/made/convolve"
}

# The samples of a result are those of the program.
tryPython() {
    run python /usr/bin/python3 - "$scratch/project/samples" <<'SCRIPT'
import subprocess, sys, fendra
spectrum, peak = (fendra.read(f"{sys.argv[1]}/xrf-{name}.csv") for name in ("spectrum", "zero-peak"))
result = fendra.deconvolve(spectrum, peak, method="van-cittert", max_iterations=10)
printed = subprocess.run(["fendra", "deconvolve", *(f"{sys.argv[1]}/xrf-{n}.csv" for n in ("spectrum", "zero-peak")),
    "--method", "van-cittert", "--max-iterations", "10"], check=True, capture_output=True, text=True).stdout
digest = [line.split()[-1] for line in printed.splitlines() if line.startswith("# SHA-256 of the result")]
assert digest == [result.record["result"]["sha256"]], (digest, result.record)
SCRIPT
    run measure.py /usr/bin/python3 "$project/examples/measure.py"
}

tryAll() {
    tryProgram
    tryCompletion
    tryLibrary
    tryPython
}

# Without the folders in which the system keeps account of packages.
filesOfSystem() {
    find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /tmp -o -path /run -o -path "$project" -o \
        -path /var/lib/dpkg -o -path /var/lib/apt -o -path /var/cache -o -path /var/log \) -prune -o -print | sort
}

# What other packages leave behind that come along is not ours: those stay for the comparison.
inSystem() {
    export DEBIAN_FRONTEND=noninteractive root=
    local ours=(fendra fendra-window libfendra1 libfendra-dev python3-fendra)
    run apt apt-get install -y gcc libc6-dev pkg-config cmake make g++ || exit
    run apt apt-get install -y "${debs[@]}" || exit
    grep -E '^(Need to get|After this operation)' "$scratch/said"
    run apt apt-get purge -y "${ours[@]}"
    filesOfSystem > "$scratch/before"
    expect "what is left" "" "$(grep fendra "$scratch/before" | xargs)"
    run apt apt-get install -y "${debs[@]}" || exit
    tryAll
    run apt apt-get purge -y "${ours[@]}"
    filesOfSystem > "$scratch/after"
    expect "what is left" "" "$(comm -13 "$scratch/before" "$scratch/after" | head -n 20 | xargs)"
    expect "what is gone" "" "$(comm -23 "$scratch/before" "$scratch/after" | head -n 20 | xargs)"
}

inFolder() {
    root=$scratch/root
    local deb
    run lintian lintian --fail-on error --allow-root "${debs[@]}"
    cat "$scratch/said"
    for deb in "${debs[@]}"; do
        dpkg-deb --fsys-tarfile "$deb" | tar -t | grep -v '/$' >> "$scratch/files"
        run "$deb" dpkg-deb -x "$deb" "$root"
    done
    expect "in two packages" "" "$(sort "$scratch/files" | uniq -d | xargs)"
    libraries=$(dirname "$root"/usr/lib/*/libfendra.so.1)
    export PATH=$root/usr/bin:$PATH LD_LIBRARY_PATH=$libraries PKG_CONFIG_PATH=$libraries/pkgconfig \
        CMAKE_PREFIX_PATH=$root/usr PYTHONPATH=$root/usr/lib/python3/dist-packages
    tryAll
}

if [ $isSystem = yes ]; then inSystem; else inFolder; fi
exit $failed
