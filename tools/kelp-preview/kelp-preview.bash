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
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} options
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "show sheet print diff listen --help --version" -- "$current")
        return
    fi
    case $previous in
        --brightness | --copies | --max-dots | --page-number | --type) return ;;
        --halftone)
            mapfile -t COMPREPLY < <(compgen -W "None FloydSteinberg Ordered Burkes Stucki
                JarvisJudiceNinke Sierra StevensonArce Tattoo Tattoo_X8" -- "$current")
            return
            ;;
        --page)
            mapfile -t COMPREPLY < <(compgen -W "4x6in 100x150mm A4 A5 A6 Letter" -- "$current")
            return
            ;;
    esac
    if [[ ${COMP_WORDS[1]} == listen ]]; then
        _kelp_preview_listen "$current" "$previous"
        return
    fi
    if [[ $current == -* ]]; then
        case ${COMP_WORDS[1]} in
            show) options="-o --output --json --as-sent --max-dots" ;;
            sheet)
                options="-o --output --page --pixels-are-dots --page-number --halftone --brightness
                    --mirror --negative --max-dots"
                ;;
            print)
                options="--ppd -o --copies --output --stream --log --type --cups-files --json
                    --as-sent --max-dots"
                ;;
            diff) options="-o --output --dots-only --max-dots" ;;
        esac
        mapfile -t COMPREPLY < <(compgen -W "$options --help" -- "$current")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
} && complete -F _kelp_preview kelp-preview
