#!/usr/bin/env bash
# What the completion for bash offers. Usage: completion_test.sh FILE_OF_BASH FILE_OF_ZSH
set -uo pipefail
source "$1"
failures=0

# offers "WORDS ..." WORD ...: to the last of the words, exactly these (in any order); "..." after them: and others.
offers() {
    local -a expected=("${@:2}") missing=()
    read -ra COMP_WORDS <<<"$1"
    [[ $1 == *' ' ]] && COMP_WORDS+=('')
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    COMPREPLY=()
    _pxlcc
    local open=
    [[ ${expected[-1]} == ... ]] && open=yes && unset 'expected[-1]'
    for word in "${expected[@]}"; do
        printf '%s\n' "${COMPREPLY[@]}" | grep -qxF -- "$word" || missing+=("$word")
    done
    if ((${#missing[@]})) || [[ -z $open && ${#COMPREPLY[@]} != "${#expected[@]}" ]]; then
        echo "WRONG: '$1' offers: ${COMPREPLY[*]:0:20}; expected: ${expected[*]}"
        failures=$((failures + 1))
    fi
}

offers 'pxlcc ' info list run convert reduce selftest --help --version ...
offers 'pxlcc self' selftest
offers 'pxlcc convert --matrix ' 601 709 709hdtv
offers 'pxlcc convert --matr' --matrix
offers 'pxlcc convert in.png out.y4m --method a' ahd
offers 'pxlcc reduce --dither st' stucki
offers 'pxlcc run pxliRGBToYCbCr_8u_C3P' pxliRGBToYCbCr_8u_C3P3R
offers 'pxlcc run --si' --size
cd "$(mktemp -d)" || exit 1
touch picture.png
offers 'pxlcc convert pic' picture.png
offers 'pxlcc convert picture.png --size pic' picture.png
rm -r "$PWD"

# zsh itself says what is no zsh.
if command -v zsh >/dev/null; then
    zsh -n "$2" || failures=$((failures + 1))
fi
exit $((failures > 0))
