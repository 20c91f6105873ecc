#!/bin/bash
# libraries.sh OBJDUMP WINDRES FOLDER: the module in FOLDER exports its eight names and holds its
# resources, the program has an icon and a version, and the libraries there import from the system and from each other alone.
set -uo pipefail
objdump=$1 windres=$2 folder=$3 failed=0

# expect WHAT EXPECTED FOUND
expect() {
    [ "$2" = "$3" ] && return
    printf '%s:\nexpected\n%s\nfound\n%s\n' "$1" "$2" "$3"
    failed=1
}

expect exports \
    "DeleteModuleInstance GetBitmapID GetBitmapStringResource GetCID GetModuleInstance InitDLL IsDebug theApp" \
    "$("$objdump" -p "$folder/fendra.dll" |
        awk '/Ordinal\/Name Pointer/ {on = 1; next} on && NF == 0 {exit} on {print $NF}' | xargs)"

imports() {
    "$objdump" -p "$folder/$1.dll" | awk '/DLL Name:/ {print tolower($3)}' | sort | xargs
}
expect "imports of fendra" "fendra-kernels.dll fendra-runtime.dll kernel32.dll msvcrt.dll platform.dll tavrelin.dll" "$(imports fendra)"
expect "imports of tavrelin" "fendra-runtime.dll kernel32.dll msvcrt.dll platform.dll" "$(imports tavrelin)"
expect "imports of platform" "fendra-runtime.dll kernel32.dll msvcrt.dll" "$(imports platform)"
expect "imports of fendra-kernels" "fendra-runtime.dll kernel32.dll msvcrt.dll" "$(imports fendra-kernels)"
expect "imports of fendra-runtime" "kernel32.dll msvcrt.dll" "$(imports fendra-runtime)"
expect "imports of sndfile" "kernel32.dll msvcrt.dll" "$(imports sndfile)"
# The library of audio can be replaced by another of its kind: it is asked for by the names of its header.
expect "other exports of sndfile" "" \
    "$("$objdump" -p "$folder/sndfile.dll" |
        awk '/Ordinal\/Name Pointer/ {on = 1; next} on && NF == 0 {exit} on {print $NF}' | grep -v '^sf_' | xargs)"

# Each library of 32 bits tells the one unwinder of its frames.
if "$objdump" -f "$folder/fendra.dll" | grep -q pei-i386; then
    for library in fendra fendra-kernels tavrelin platform; do
        expect "unwinder of $library" 1 \
            "$("$objdump" -p "$folder/$library.dll" | grep -cw __register_frame_info)"
    done
fi

# Type, id and language of each resource, strings by their own ids. Languages: 7 German, 9 English,
# 12 French.
resources=$("$windres" -J coff -i "$folder/fendra.dll" -O rc | awk '
    /^LANGUAGE/ {language = $2 + 0}
    /^[0-9]+ (DIALOG|[0-9]+ )/ {print $2 "/" $1 "/" language}
    /^  [0-9]+, L?"/ {print "string/" ($1 + 0) "/" language}' | sort)
expected=$(
    printf '%s\n' 2/129/7 3/1/7 14/130/7
    printf '%s\n' {DIALOG,240}/144/{7,9,12}
    printf '%s\n' string/{53278,53622,53638,53640,53641,53642,53643,53644,53645,53646,53647,53648}/{7,9}
)
expect resources "$(sort <<<"$expected")" "$resources"

# The program shows its icon, a group of one, and its version.
program=$("$windres" -J coff -i "$folder/fendra.exe" -O rc)
expect "icons of the program" "3/1 14/1" \
    "$(awk '/^[0-9]+ (3|14) / {print $2 "/" $1}' <<<"$program" | sort -n | xargs)"
grep -qE 'VALUE "ProductName", *L?"Fendra' <<<"$program" || expect "version of the program" "ProductName Fendra" "not there"

# Texts stand in UTF-16, those of lists in Windows-1252.
bytes=$(od -An -v -tx1 "$folder/fendra.dll" | tr -d ' \n')
for text in gegenwärtig "für Entfaltung" Exécution; do
    wide=$(printf %s "$text" | iconv -f UTF-8 -t UTF-16LE | od -An -v -tx1 | tr -d ' \n')
    grep -q "$wide" <<<"$bytes" || expect "$text" "in UTF-16" "not there"
done
narrow=$(printf %s "Pseudo-Identitätsfilters auf 1" | iconv -f UTF-8 -t CP1252 | od -An -v -tx1 | tr -d ' \n')
grep -q "$narrow" <<<"$bytes" || expect "list entry" "in Windows-1252" "not there"
exit $failed
