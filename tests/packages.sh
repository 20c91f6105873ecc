#!/usr/bin/env bash
# tests/packages.sh ARCHIVE...: unpacks each in a folder of another name, and does what its read-me
# tells to try, with the result that it tells. Programs of ARM run under qemu, those of Windows under
# Wine, but not those of 32 bits, of which the files are compared with those of 64 bits.
set -euo pipefail

scratch=$(mktemp -d) wine64=$PWD/tools/wine64
export WINEDEBUG=-all WINEPREFIX=$PWD/build/windows64/wine
trap 'rm -rf "$scratch"; /usr/lib/wine/wineserver -k -w || true' EXIT  # it would stay for some seconds

fail() { echo "$1" >&2; exit 1; }

# try ARCHIVE: the commands of the read-me, as they stand there.
try() {
    local fendra line words digest
    digest=$(sed -n 's/.*"\(all [0-9a-f]*\)".*/\1/p' README.txt)
    case $1 in
        *linux-arm64*) fendra=(/usr/bin/qemu-aarch64 ./fendra) ;;
        *linux*) fendra=(./fendra) ;;
        *) fendra=("$wine64" ./fendra.exe) ;;
    esac
    while read -r line; do
        read -ra words <<< "${line%$'\r'}"
        "${fendra[@]}" "${words[@]:1}" > said || fail "$1: $line"
        ! grep relativeError said | grep -v ' 5\.9.*e-11' || fail "$1: $line"
    done < <(grep -E '^  (\.[/\\])?fendra (convolve|deconvolve|--help)' README.txt)
    [ -e restored.csv ] || fail "$1: the read-me has nothing to try"
    read -ra words < <("${fendra[@]}" selftest | grep '^all ')
    [ "${words[*]}" = "$digest" ] || fail "$1: selftest: ${words[*]}"
}

for archive; do
    place="$scratch/some where"
    mkdir -p "$place"
    case $archive in
        *.zip) unzip -q "$archive" -d "$place" ;;
        *) tar -xzf "$archive" -C "$place" ;;
    esac
    (
        cd "$place"/fendra-*
        find . -type f | sort > "$scratch/files-${archive##*-}"
        [[ $archive = *windows32* ]] || try "$archive"
        if [ -e fendra-window.so ]; then
            grep -q QCustomPlot licences/window-part.txt && grep -q 'version 3' licences/window-part.txt &&
                [ -s licences/GPL-3 ] || fail "$archive: no notice of the licence of fendra-window.so"
        fi
    )
    rm -rf "$place"
done
cmp "$scratch"/files-windows*
