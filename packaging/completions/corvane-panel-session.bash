# What bash completes after corvane-panel-session.

_corvane_panel_session() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    if [[ $before == --bundle ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -W "--strict --bundle --help --version" -- "$word")
    fi
}

complete -F _corvane_panel_session corvane-panel-session
