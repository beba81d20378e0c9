# Completion of vantora's commands and options for bash.

_vantora()
{
    local current="${COMP_WORDS[COMP_CWORD]}" previous="${COMP_WORDS[COMP_CWORD - 1]}"
    local command="" word words=""
    COMPREPLY=()

    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case "$word" in
        run | info | actions)
            command="$word"
            break
            ;;
        esac
    done

    case "$previous" in
    -d | --directory)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        return
        ;;
    -o | --output | --password-file)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
        ;;
    -p | --pages | --set)
        return
        ;;
    --action)
        local IFS=$'\n'
        mapfile -t COMPREPLY < <(compgen -W "$("${COMP_WORDS[0]}" actions 2>/dev/null | sed 's/  (.*//')" -- "$current")
        COMPREPLY=("${COMPREPLY[@]// /\\ }")
        return
        ;;
    esac

    case "$command" in
    run)
        words="--pages --action --set --output --directory --in-place --backup --overwrite
            --password-file --dry-run --json --quiet --help -p -o -d -i -n -q -h"
        ;;
    info)
        words="--password-file --json --help -h"
        ;;
    actions)
        words="--json --help -h"
        ;;
    *)
        words="run info actions --help --version -h"
        ;;
    esac

    if [[ "$current" == -* || -z "$command" ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    elif [[ "$command" != actions ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(
            compgen -d -- "$current"
            compgen -f -X '!*.[pP][dD][fF]' -- "$current"
        )
    fi
}

complete -F _vantora vantora
