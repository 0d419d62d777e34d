# What bash completes after corvane-print.

_corvane_print() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    case $before in
        -d) mapfile -t COMPREPLY < <(compgen -W "$(lpstat -e 2> /dev/null)" -- "$word") ;;
        -U) mapfile -t COMPREPLY < <(compgen -u -- "$word") ;;
        -H) mapfile -t COMPREPLY < <(compgen -W "hold resume immediate restart" -- "$word") ;;
        -h) mapfile -t COMPREPLY < <(compgen -A hostname -- "$word") ;;
        --preset | --delete-preset | --rename-preset)
            mapfile -t COMPREPLY < <(compgen -W "$(corvane-print --presets 2> /dev/null | cut -d/ -f2)" -- "$word") ;;
        --save-preset | -o | -n | -P | -t | -q | -i) ;;
        --ppd)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -f -X '!*.ppd' -- "$word"; compgen -d -- "$word")
            ;;
        --to | --bundle)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$word")
            ;;
        *)
            if [[ $word == -* ]]; then
                mapfile -t COMPREPLY < <(compgen -W "-d -o -n -P -t -q -H -i -h -U -E -s -c -m
                    --dialog --no-dialog --no-alerts --stop-on-alert --ppd --to --bundle
                    --preset --presets --save-preset --rename-preset --delete-preset --system
                    --dry-run --json --check --explain --summary --help --version" -- "$word")
            else
                compopt -o filenames
                mapfile -t COMPREPLY < <(compgen -f -- "$word")
            fi
            ;;
    esac
}

complete -F _corvane_print corvane-print
