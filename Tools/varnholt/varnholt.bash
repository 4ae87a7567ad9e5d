# Completion of varnholt for bash. Commands and options are those that the program itself lists.
_varnholt() {
    local program=${COMP_WORDS[0]} word=${COMP_WORDS[COMP_CWORD]} command= words=
    ((COMP_CWORD > 1)) && command=${COMP_WORDS[1]}
    if [[ $word == -* ]]; then
        words=$("$program" ${command:+"$command"} --help 2>/dev/null |
            sed -nE 's/^ +(-[a-z],)?(--[a-z]+).*/\2/p')
    elif [[ -z $command ]]; then
        words=$("$program" --help 2>/dev/null | sed -nE '/^Subcommands:/,$s/^ +([a-z]+) .*/\1/p')
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -o bashdefault -o default -F _varnholt varnholt
