# bash completion for kelp-preview                                          -*- shell-script -*-

_kelp_preview_listen() {
    local options="--address --port -o --output --web-address --web-port --max-connections
        --max-job-size --idle-time --max-dots --max-labels --keep --help"
    case $2 in
        -o | --output)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$1")
            ;;
        --address | --web-address)
            mapfile -t COMPREPLY < <(compgen -W "127.0.0.1 0.0.0.0 ::1 ::" -- "$1")
            ;;
        --port | --web-port | --max-* | --idle-time | --keep) ;;
        *) mapfile -t COMPREPLY < <(compgen -W "$options" -- "$1") ;;
    esac
}

_kelp_preview() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "show listen --help --version" -- "$current")
        return
    fi
    case $previous in
        --max-dots) return ;;
    esac
    if [[ ${COMP_WORDS[1]} == listen ]]; then
        _kelp_preview_listen "$current" "$previous"
        return
    fi
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "-o --output --json --as-sent --max-dots --help" -- \
            "$current")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
} && complete -F _kelp_preview kelp-preview
