# Completion of quillon, quillon-records, generator-sim, generator-desk, quillon-scenario and quillon-replay for bash.

_quillon() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} switches='--help --version' kind=
    case ${COMP_WORDS[0]##*/} in
        quillon)
            switches="-P1 -P2 -P3 -P4 -P5 -P6 -S9600 -S19200 -FitToScreen -ResetCounters -ORLA -logFile -swsync -d"
            ((COMP_CWORD > 1)) || switches+=' --help --version --tour'
            [[ $before != --tour ]] || kind=-d
            ;;
        generator-sim)
            switches+=' --link --daemon --verbose --machine --print-machine --check-lesson'
            [[ $before != --@(link|machine|check-lesson) ]] || kind=-f
            ;;
        generator-desk)
            switches+=' --link --machine --lessons --lesson --console --home --tour'
            [[ $before != --@(link|machine|lesson|console) ]] || kind=-f
            [[ $before != --@(lessons|home|tour) ]] || kind=-d
            ;;
        quillon-replay)
            switches+=' --scenario --follow --report --text --csv --compare --texts --against-sim --profile --machine'
            switches+=' --list --last --save'
            kind=-f
            ;;
        quillon-records) kind=-d ;;
        quillon-scenario) switches+=' --record --beyond-gaps' kind=-f ;;
    esac
    COMPREPLY=()
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$switches" -- "$word")
    elif [[ -n $kind ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen "$kind" -- "$word")
    fi
}
complete -F _quillon quillon quillon-records generator-sim generator-desk quillon-scenario quillon-replay
