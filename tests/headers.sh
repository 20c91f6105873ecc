#!/usr/bin/env bash
# headers.sh HEADERS SOURCES COMPILER OPTION...: each of the headers compiles alone. One that a source
# includes before all else has shown it when that source was built; the others are compiled here.
set -uo pipefail
read -ra headers <<< "$1"
read -ra sources <<< "$2"
shift 2

shown=$(grep -hsm 1 '^#include' "${sources[@]}" /dev/null)
printf '#include "%s"\n' "${headers[@]}" | { grep -vxF "$shown" || true; } |
    xargs -d '\n' -P "$(nproc)" -I{} sh -c 'echo "$0" | "$@" -fsyntax-only -x c++ -' {} "$@"
