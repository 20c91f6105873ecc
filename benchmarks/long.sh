#!/usr/bin/env bash
# benchmarks/long.sh FOLDER [REPEATS]: see long.py, which Debian's Python runs, since it is the one that has SciPy.
exec /usr/bin/python3 "$(dirname "$(readlink -f "$0")")/long.py" "$@"
