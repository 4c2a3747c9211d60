# bash completion for kelp-preview                                          -*- shell-script -*-

_kelp_preview() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "show --help --version" -- "$current")
        return
    fi
    case $previous in
        --max-dots) return ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "-o --output --json --as-sent --max-dots --help" -- \
            "$current")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
} && complete -F _kelp_preview kelp-preview
