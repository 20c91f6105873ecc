# Sourced by ./run, ./test and ./bench, from the project's root: what they need before they can build.

buildPackages=(g++ cmake ninja-build pkg-config libcli11-dev libfmt-dev nlohmann-json3-dev libsndfile1-dev libmd-dev
    qt6-base-dev)
testPackages=(libgtest-dev clang-14 clang-format-14 clang-tidy-14 libclang-rt-14-dev)
benchPackages=(libbenchmark-dev libeigen3-dev libfftw3-dev libgsl-dev libkissfft-dev libopenblas-dev liblapacke-dev)

say() { printf '%s\n' "$*" >&2; }

# quietly LOG COMMAND...: runs a command with its output in a file, shown only if it fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    "$@" > "$log" 2>&1 || { tail -n 60 "$log" >&2; say "failed: $*"; return 1; }
}

# installMissing WHY PACKAGE...: as root or through sudo, and only what is not there yet.
installMissing() {
    local why=$1 package missing=() asRoot=()
    shift
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2> /dev/null)" = installed ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo > /dev/null || {
            say "Missing packages. As root: apt-get install --no-install-recommends ${missing[*]}"
            return 1
        }
        asRoot=(sudo)
    fi
    say "Installing Debian packages $why: ${missing[*]}"
    quietly build/log/packages "${asRoot[@]}" apt-get update
    quietly build/log/packages "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}"
}

# build PRESET TARGET...
build() {
    local preset=$1
    shift
    [ -e "build/$preset/build.ninja" ] || say "Building ($preset); the first time takes a few minutes"
    quietly "build/log/$preset" cmake --preset "$preset"
    quietly "build/log/$preset" cmake --build --preset "$preset" --target "$@"
}
