#!/usr/bin/env bash
# library.sh BUILD: what cmake --install makes of the build for programs in C and C++. The library exports
# what its header declares; and from a tree that was moved, the examples build by pkg-config and by
# find_package, and give what they should.
set -uo pipefail
build=$1 failed=0
root=$(cd "$(dirname "$0")/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" || exit

# expect WHAT EXPECTED FOUND
expect() {
    [ "$2" = "$3" ] && return
    printf '%s: expected %s, found %s\n' "$1" "$2" "$3"
    failed=1
}

# run COMMAND...: quiet, except where it fails.
run() {
    "$@" > said 2>&1 && return
    printf '%s\n' "$*"
    cat said
    failed=1
    return 1
}

for component in library development; do
    run cmake --install "$build" --prefix "$scratch/first" --component $component
done
mv first tree
header=$(find tree -name fendra.h)
library=$(find "$PWD/tree" -name libfendra.so.1)
expect exports "$(grep -oE '\bfendra_[a-z_]+\(' "$header" | tr -d '(' | sort -u | xargs)" \
    "$(nm -D --defined-only --format=just-symbols "$library" | sed -n 's/@@FENDRA_1$//p' | sort | xargs)"
expect soname libfendra.so.1 "$(readelf -d "$library" | sed -n 's/.*soname: \[\(.*\)\]$/\1/p')"
expect runpath '$ORIGIN/fendra' "$(readelf -d "$library" | sed -n 's/.*runpath: \[\(.*\)\]$/\1/p')"
expect paths "" "$(grep -rlF -e "$PWD" -e "$root" tree --include=*.pc --include=*.cmake --include=*.h | xargs)"

PKG_CONFIG_PATH=$(dirname "$(find "$PWD/tree" -name fendra.pc)")
export PKG_CONFIG_PATH
read -ra flags <<< "$(pkg-config --cflags --libs fendra)"
warnings=(-Wall -Wextra -pedantic -Werror)
run g++ -std=c++98 "${warnings[@]}" -fsyntax-only -x c++-header "$header"
for source in "$root"/examples/*.c; do
    name=$(basename "$source" .c)
    run gcc -std=c99 "${warnings[@]}" "$source" "${flags[@]}" -lm -o "$name" &&
        run env LD_LIBRARY_PATH="$(dirname "$library")" "./$name"
done
for source in "$root"/examples/*.cpp; do
    name=$(basename "$source" .cpp)
    run g++ -std=c++11 "${warnings[@]}" "$source" "${flags[@]}" -pthread -o "$name" &&
        run env LD_LIBRARY_PATH="$(dirname "$library")" "./$name"
done

run cmake -G Ninja -S "$root/examples" -B made -DCMAKE_PREFIX_PATH="$PWD/tree" -DCMAKE_BUILD_TYPE=Release
run cmake --build made
for source in "$root"/examples/*.c "$root"/examples/*.cpp; do
    name=$(basename "${source%.*}")
    run "made/$name"
done

# The page for C shows an example as it stands.
expect "the example in docs/c.md" "$(cat "$root/examples/deconvolve.c")" \
    "$(sed -n '/^```c$/,/^```$/p' "$root/docs/c.md" | sed '1d;$d')"
exit $failed
