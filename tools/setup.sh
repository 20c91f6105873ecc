# Sourced by ./run, ./test, ./bench and ./package, from the project's root: what they need before they can build.

buildPackages=(g++ cmake ninja-build pkg-config libcli11-dev libfmt-dev nlohmann-json3-dev libsndfile1-dev nettle-dev
    qt6-base-dev qt6-svg-dev qt6-l10n-tools libqcustomplot-dev zlib1g-dev libedf-dev libhdf5-dev libmatio-dev
    libmseed-dev libnetcdf-dev)
testPackages=(libgtest-dev)
# The Python package, and what its tests compare with and draw with.
pythonPackages=(python3-dev pybind11-dev python3-numpy python3-scipy python3-pandas python3-matplotlib mypy)
formatPackages=(clang-format-14)
clangPackages=(clang-14 libclang-rt-14-dev)
lintPackages=(clang-14 clang-tidy-14)
# What the other targets take beside these. qemu runs the programs of ARM, wine64 those of 64-bit Windows.
linux32Packages=(g++-12-multilib googletest libfmt-dev:i386 libsndfile1-dev:i386 nettle-dev:i386 zlib1g:i386)
arm64Packages=(g++-aarch64-linux-gnu googletest libfmt-dev:arm64 libsndfile1-dev:arm64 nettle-dev:arm64
    zlib1g:arm64 qemu-user)
windowsPackages=(g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix googletest libz-mingw-w64-dev dpkg-dev wine64)
windowsSources=(libsndfile flac)
packagePackages=(git zip)
debPackages=(git debhelper dh-python python3-dev pybind11-dev)
debTestPackages=(lintian man-db desktop-file-utils zsh fish python3-numpy)
benchPackages=(libeigen3-dev libfftw3-dev libgsl-dev libkissfft-dev libopenblas-dev liblapacke-dev
    python3-scipy miller)
windowPackages=(xvfb xauth chromium)
slurmPackages=(slurm-wlm munge)

say() { printf '%s\n' "$*" >&2; }

# heartbeat WHAT LOG: says every 25 seconds how far a command is, as long as the script lives that waits
# for it. Short sleeps, since the last one outlives it.
heartbeat() {
    local step seconds=0
    while sleep 1 && kill -0 $$ 2> /dev/null; do
        (((seconds += 1) % 25 == 0)) || continue
        step=$(tail -c 10000 "$2" | grep -oE '^ *\[?[0-9]+/[0-9]+' | tail -n 1 | tr -d '[ ') || true
        say "$1: ${step:+${step/\// of }, }$(duration $seconds)"
    done
}

# duration SECONDS
duration() { (($1 < 60)) && echo "$1 s" || echo "$(($1 / 60)) min $(($1 % 60)) s"; }

# watched WHAT LOG COMMAND...: runs a command with its output in a file, and is never silent for long.
watched() {
    local what=$1 log=$2 status=0 watcher
    shift 2
    mkdir -p "$(dirname "$log")"
    : > "$log"
    heartbeat "$what" "$log" > /dev/null &
    watcher=$!
    "$@" > "$log" 2>&1 || status=$?
    kill "$watcher" && wait "$watcher" 2> /dev/null || true
    return $status
}

# quietly WHAT LOG COMMAND...: the same, and shows the output if the command fails.
quietly() {
    watched "$@" || { tail -n 60 "$2" >&2; say "failed: ${*:3}"; return 1; }
}

# asRoot COMMAND...: as root or through sudo, with its output in the log of packages.
asRoot() {
    local sudo=()
    [ "$(id -u)" -eq 0 ] || sudo=(sudo)
    watched packages build/log/packages "${sudo[@]}" "$@"
}

# isInstalled PACKAGE[:ARCHITECTURE]: a package may be there for more than one architecture; without
# a name the machine's own is meant.
isInstalled() {
    local architectures="all|$(dpkg --print-architecture)"
    [[ $1 != *:* ]] || architectures=${1#*:}
    dpkg-query -W -f='${Architecture} ${db:Status-Status}\n' "$1" 2> /dev/null | grep -qxE "($architectures) installed"
}

# installMissing WHY PACKAGE...: as root or through sudo, and only what is not there yet.
installMissing() {
    local why=$1 package missing=()
    shift
    for package in "$@"; do
        isInstalled "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    command -v apt-get > /dev/null || {
        say "There is no apt-get here. These packages of Debian 12 are needed $why: ${missing[*]}"
        return 1
    }
    [ "$(id -u)" -eq 0 ] || command -v sudo > /dev/null || {
        say "Missing packages. As root: apt-get install --no-install-recommends ${missing[*]}"
        return 1
    }
    say "Installing Debian packages $why: ${missing[*]}"
    # Where new lists cannot be had, those that are there may do.
    asRoot apt-get update || true
    mv build/log/packages build/log/packages-update
    asRoot env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends --no-remove "${missing[@]}" || {
        grep -hE -A 1 '^(E|W|Err)|will be REMOVED' build/log/packages-update build/log/packages | tail -n 20 >&2
        say "These packages of Debian 12 could not be installed; what was said is in build/log/packages*"
        return 1
    }
}

# addArchitectures PACKAGE[:ARCHITECTURE]...: lets packages of i386 and arm64 be installed where some are
# among these. Debian has what they are used with here for amd64 alone.
addArchitectures() {
    local architecture
    for architecture in i386 arm64; do
        [[ " $* " = *:$architecture\ * ]] || continue
        [ "$(dpkg --print-architecture)" = amd64 ] || {
            say "That takes Debian on amd64, and this is $(dpkg --print-architecture): packages of $architecture"
            return 1
        }
        dpkg --print-foreign-architectures | grep -qx $architecture || {
            say "Adding the Debian architecture $architecture"
            asRoot dpkg --add-architecture $architecture || { cat build/log/packages >&2; return 1; }
        }
    done
}

# configure PRESET: a build that was moved or copied here with its project is made anew.
configure() {
    local cache=build/$1/CMakeCache.txt
    if [ -e "$cache" ] && ! [ "$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$cache")" -ef . ]; then
        say "build/$1 was made for another folder, and is made anew"
        rm -rf "build/$1"
    fi
    if [[ $1 = windows* ]]; then
        quietly "sources of ${windowsSources[*]}" build/log/sources tools/sources "${windowsSources[@]}"
    fi
    quietly "$1" "build/log/$1" cmake --preset "$1"
}

# build PRESET TARGET...
build() {
    local preset=$1
    shift
    [ -e "build/$preset/build.ninja" ] || say "Building ($preset); the first time takes a few minutes"
    configure "$preset"
    quietly "$preset: building" "build/log/$preset" cmake --build --preset "$preset" --target "$@"
}
