#!/usr/bin/env bash
# documented.sh PROGRAM COMPLETION PAGE: every subcommand and option that --help names is completed by
# bash and explained in the manual page, and no other is.
set -euo pipefail
export LC_ALL=C
program=$1 page=$3
# shellcheck disable=SC1090
. "$2"
compopt() { :; }  # only within a completion that bash itself runs

fail() {
    echo "FAILED: $*"
    exit 1
}

# completed WORD...: what follows the words, sorted
completed() {
    COMP_WORDS=(kelp-preview "$@")
    COMP_CWORD=$#
    _kelp_preview
    printf '%s\n' "${COMPREPLY[@]}" | sort -u
}

# options SUBCOMMAND: those of its help, sorted; -h is left to people who know it
options() {
    "$program" "$@" --help | sed -n 's/^  \(-[^ ]*\).*/\1/p' | tr ',' '\n' | grep -vx -e -h | sort -u
}

mapfile -t subcommands < <("$program" --help | sed -n '/^Subcommands:/,$s/^  \([a-z]\+\) .*/\1/p')
((${#subcommands[@]} >= 4)) || fail "subcommands: ${subcommands[*]}"
[[ $(completed '') == "$({ options && printf '%s\n' "${subcommands[@]}"; } | sort -u)" ]] ||
    fail "completed: $(completed '')"
for subcommand in "${subcommands[@]}"; do
    [[ $(completed "$subcommand" -) == "$(options "$subcommand")" ]] ||
        fail "$subcommand: completed $(completed "$subcommand" - | tr '\n' ' '), \
options $(options "$subcommand" | tr '\n' ' ')"
    section=$(sed -n "/^\.Ss $subcommand\$/,/^\.S[sh] /p" "$page" | tail -n +2)
    [[ $section ]] || fail "the page does not explain $subcommand"
    while read -r option; do
        [[ $option == --help ]] && continue
        grep -qE -- "^\.It .*Fl ${option#-}( |$)" <<<"$section" ||
            fail "the page does not explain $subcommand $option"
    done < <(options "$subcommand")
done
echo "passed: ${subcommands[*]}"
