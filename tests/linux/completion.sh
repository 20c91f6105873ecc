#!/usr/bin/env bash
# completion.sh FOLDER: completes words as zsh and fish do, each where it is installed; the program is in
# FOLDER. That of bash is in tests/commands/completion.golden.
set -uo pipefail
fendra=$1/fendra failed=0
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" || exit
touch five.txt

# A line, and what its last word becomes.
cases=(
    "fendra convo|convolve"
    "fendra --ver|--version"
    "fendra convolve fi|five.txt"
    "fendra convolve a b --enc|--encoding"
    "fendra convolve a b --encoding pcm1|pcm16"
    "fendra convolve a b --encoding=pcm1|--encoding=pcm16"
    "fendra convolve a b -o fi|five.txt"
    "fendra compare a b --methods spectral,van|spectral,van-cittert"
    "fendra settings x --set scaling=cen|scaling=central"
    "fendra settings x --set conver|convergence="
    "fendra batch dec|deconvolve"
    "fendra batch deconvolve x --cho|--choose"
    "fendra batch deconvolve fi|five.txt"
    "fendra help comple|completion"
    "fendra completion pow|powershell"
)

# compare SHELL: what it made of the lines is in the file said, a line each.
compare() {
    local i
    mapfile -t said < said
    for i in "${!cases[@]}"; do
        [ "${said[i]-}" = "${cases[i]#*|}" ] && continue
        echo "$1: ${cases[i]%|*} becomes ${said[i]-nothing}, not ${cases[i]#*|}"
        failed=1
    done
}

# A terminal on which each line gets its tab and is run; the function fendra notes its last word.
zshLines() {
    cat > lines.zsh <<'SCRIPT'
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell "PS1= fpath=($PWD \$fpath); autoload -U compinit; compinit -D -u"
zpty -w shell 'fendra() { print -r -- $@[-1] >> said }'
for line; do
    zpty -w -n shell "$line"$'\t\n'
done
for (( i = 0; i < 100; i++ )); do
    [[ -e said && $(wc -l < said) -ge $# ]] && break
    while zpty -r -t shell shown; do done
    sleep 0.1
done
zpty -d shell
SCRIPT
    zsh -f lines.zsh "${cases[@]%|*}"
}

fishLines() {
    local line
    for line in "${cases[@]%|*}"; do
        fish --no-config -c "source fendra.fish; complete -C '$line'" | head -n 1 | cut -f 1
    done > said
}

shells=0
if command -v zsh > /dev/null; then
    "$fendra" completion zsh > _fendra
    zshLines
    compare zsh
    shells=1
fi
if command -v fish > /dev/null; then
    "$fendra" completion fish > fendra.fish
    fishLines
    compare fish
    shells=1
fi
[ $shells -eq 1 ] || { echo "there is neither zsh nor fish"; exit 77; }
exit $failed
