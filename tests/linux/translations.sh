#!/usr/bin/env bash
# translations.sh: every text of the window stands in its translations, none of them empty or left over.
# Ends with 77 where Qt's lupdate is not there.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
export PATH=/usr/lib/qt6/bin:$PATH LC_ALL=C
command -v lupdate > /dev/null || { echo "skipped: lupdate is not there"; exit 77; }
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
for language in de fr; do
    kept=workbench/window/translations/fendra_$language.ts
    cp "$kept" "$scratch"
    lupdate -silent -no-obsolete -locations none workbench/window -target-language "$language" \
        -ts "$scratch/fendra_$language.ts" 2> /dev/null
    diff "$kept" "$scratch/fendra_$language.ts"
    ! grep -n 'type="unfinished"\|<translation></translation>' "$kept"
done
