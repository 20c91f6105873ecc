# Sourced by ./run, ./test, ./bench and ./package, from the project's root: what they need before they can build.

buildPackages=(g++ cmake ninja-build pkg-config libcli11-dev libfmt-dev nlohmann-json3-dev libsndfile1-dev libmd-dev
    qt6-base-dev)
testPackages=(libgtest-dev clang-14 clang-format-14 clang-tidy-14 libclang-rt-14-dev)
# What the other targets take beside these. wine64 runs the programs of 64-bit Windows.
linux32Packages=(g++-multilib googletest libfmt-dev:i386 libsndfile1-dev:i386 libmd-dev:i386)
windowsPackages=(g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix googletest wine64)
packagePackages=(git zip)
benchPackages=(libbenchmark-dev libeigen3-dev libfftw3-dev libgsl-dev libkissfft-dev libopenblas-dev liblapacke-dev)

say() { printf '%s\n' "$*" >&2; }

# quietly LOG COMMAND...: runs a command with its output in a file, shown only if it fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    "$@" > "$log" 2>&1 || { tail -n 60 "$log" >&2; say "failed: $*"; return 1; }
}

# asRoot COMMAND...: as root or through sudo, with its output in the log of packages.
asRoot() {
    local sudo=()
    [ "$(id -u)" -eq 0 ] || sudo=(sudo)
    quietly build/log/packages "${sudo[@]}" "$@"
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
    [ "$(id -u)" -eq 0 ] || command -v sudo > /dev/null || {
        say "Missing packages. As root: apt-get install --no-install-recommends ${missing[*]}"
        return 1
    }
    say "Installing Debian packages $why: ${missing[*]}"
    asRoot apt-get update || say "Going on with the lists of packages that are there"
    asRoot env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends --no-remove "${missing[@]}"
}

# addI386 WHY: lets packages of i386 be installed, which only a Debian of amd64 can have beside its own.
addI386() {
    [ "$(dpkg --print-architecture)" = amd64 ] || {
        say "That takes Debian on amd64, and this is $(dpkg --print-architecture): packages $1"
        return 1
    }
    dpkg --print-foreign-architectures | grep -qx i386 || {
        say "Adding the Debian architecture i386 $1"
        asRoot dpkg --add-architecture i386
    }
}

# build PRESET TARGET...
build() {
    local preset=$1
    shift
    [ -e "build/$preset/build.ninja" ] || say "Building ($preset); the first time takes a few minutes"
    quietly "build/log/$preset" cmake --preset "$preset"
    quietly "build/log/$preset" cmake --build --preset "$preset" --target "$@"
}
