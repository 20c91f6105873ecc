#!/usr/bin/env bash
# libraries.sh NM FOLDER [EMULATOR]: the module in FOLDER exports its eight names, and the library for
# programs its calls; of module, program and libraries one alone holds the kernels; and the program runs
# without the libraries of its parts and of windows.
set -uo pipefail
nm=$1 failed=0
loaded=(ldd)
[ $# -eq 2 ] || loaded=("$3" -E LD_TRACE_LOADED_OBJECTS=1)
cd "$2" || exit

# expect WHAT EXPECTED FOUND
expect() {
    [ "$2" = "$3" ] && return
    printf '%s: expected %s, found %s\n' "$1" "$2" "$3"
    failed=1
}

expect exports \
    "DeleteModuleInstance GetBitmapID GetBitmapStringResource GetCID GetModuleInstance InitDLL IsDebug theApp" \
    "$("$nm" -D --defined-only --format=just-symbols fendra.so | sort | xargs)"
# Some tools print the version itself with its version.
expect "other exports" "" \
    "$("$nm" -D --defined-only --format=just-symbols libfendra.so.1 | grep -vE '^(fendra_[a-z_]+@@FENDRA_1|FENDRA_1(@@FENDRA_1)?)$' | xargs)"
expect kernels libfendra-kernels.so \
    "$("$nm" -AC --defined-only fendra fendra.so libfendra.so.1 libfendra-kernels.so libplatform.so libtavrelin.so | sed -n 's/:.* kernels::instructionSet()$//p' | xargs)"
expect needed "" "$("${loaded[@]}" ./fendra | grep -oE 'lib(Qt6|edf|hdf5|matio|mseed|netcdf)[^ ]*' | xargs)"
exit $failed
