#!/bin/sh
# copyright.sh PACKAGE: the licence of the package. For the window that of what it links comes first; behind
# our own follow those of the samples and of the headers that are compiled in, as Debian gives them.
set -e
if [ "$1" = fendra-window ]; then
    sed '/^Program/,$d; s|the file GPL-3 beside this one|/usr/share/common-licenses/GPL-3|; s| (LICENSE.txt)||' \
        "$FENDRA_ROOT/docs/package/window-part.txt"
fi
cat "$FENDRA_ROOT/LICENSE"
if [ "$1" = fendra ]; then
    printf '\n\nThe spectra among the examples:\n\n'
    cat "$FENDRA_ROOT/samples/licences/pymca-mit.txt"
fi
for licence in debian/tmp/usr/share/doc/"$1"/licences/*.txt; do
    [ -e "$licence" ] || continue
    printf '\n\nCompiled in are headers of the package %s:\n\n' "$(basename "$licence" .txt)"
    cat "$licence"
done
