#!/usr/bin/env bash
# benchmarks/text.sh FOLDER [REPEATS]: see text.py, which Debian's Python runs, since it is the one that has NumPy.
exec /usr/bin/python3 "$(dirname "$(readlink -f "$0")")/text.py" "$@"
