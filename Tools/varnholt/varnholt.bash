# Completion of varnholt for bash. Commands and options are those that the program itself lists.
_varnholt() {
    local program=${COMP_WORDS[0]} word=${COMP_WORDS[COMP_CWORD]} command= words=
    # The command follows the log's name, or an equals sign, which is a word of its own, and the name.
    local -i at=1
    [[ ${COMP_WORDS[1]} == --log ]] && at=3
    [[ ${COMP_WORDS[2]-} == = ]] && at=4
    ((COMP_CWORD > at)) && command=${COMP_WORDS[at]}
    if [[ $word == -* ]]; then
        words=$("$program" ${command:+"$command"} --help 2>/dev/null |
            sed -nE 's/^ +(-[a-z],)?(--[a-z]+).*/\2/p')
    elif ((COMP_CWORD == at)); then
        words=$("$program" --help 2>/dev/null | sed -nE '/^Subcommands:/,$s/^ +([a-z]+) .*/\1/p')
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -o bashdefault -o default -F _varnholt varnholt
