# Completion of quillon, generator-sim, quillon-scenario and quillon-replay for bash.

_quillon() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} switches='--help --version' kind=
    case ${COMP_WORDS[0]##*/} in
        quillon)
            switches="-P1 -P2 -P3 -P4 -P5 -P6 -S9600 -S19200 -FitToScreen -ResetCounters -ORLA -logFile -swsync -d"
            ((COMP_CWORD > 1)) || switches+=' --help --version --tour'
            [[ $before != --tour ]] || kind=-d
            ;;
        generator-sim)
            switches+=' --link --daemon --verbose'
            [[ $before != --link ]] || kind=-f
            ;;
        quillon-replay) switches+=' --scenario --list --last --save' kind=-f ;;
        quillon-scenario) switches+=' --beyond-gaps' kind=-f ;;
    esac
    COMPREPLY=()
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$switches" -- "$word")
    elif [[ -n $kind ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen "$kind" -- "$word")
    fi
}
complete -F _quillon quillon generator-sim quillon-scenario quillon-replay
