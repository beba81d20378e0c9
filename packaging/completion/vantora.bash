# Completion of vantora's commands and options for bash.

# The names that a command lists, as far as they begin so.
_vantora_names()
{
    local IFS=$'\n'
    mapfile -t COMPREPLY < <(compgen -W "$("${COMP_WORDS[0]}" "$1" 2>/dev/null | sed 's/  (.*//')" -- "$2")
    COMPREPLY=("${COMPREPLY[@]// /\\ }")
}

_vantora()
{
    local current="${COMP_WORDS[COMP_CWORD]}" previous="${COMP_WORDS[COMP_CWORD - 1]}"
    local command="" verb="" word words=""
    COMPREPLY=()

    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case "$command:$word" in
        :run | :pages | :desktop | :configure | :info | :verify | :undo | :config | :actions | :lists | :favourites | :settings)
            command="$word"
            ;;
        lists:show | lists:add | lists:change | lists:remove | \
            favourites:show | favourites:add | favourites:change | favourites:remove | \
            settings:show | settings:add | settings:change | settings:remove)
            verb="$word"
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
    -o | --output | --password-file | --settings | --files-from | --ranges | --report | --resume | --metrics | --certificate | --checksums | --sheet)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
        ;;
    -p | --pages | --set | --category | --step | -j | --jobs | --timeout | --memory-limit | --name | --shard | --accept-failures)
        return
        ;;
    --choose | --keep | --except)
        compopt -o nospace
        mapfile -t COMPREPLY < <(compgen -W "range: first last odd even every: label: bookmark: size: portrait landscape text: no-text blank blank:strict colour grey duplicate" -- "$current")
        return
        ;;
    --action)
        _vantora_names actions "$current"
        return
        ;;
    --list)
        compopt -o filenames
        _vantora_names lists "$current"
        mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -X '!*.xqq' -- "$current")
        return
        ;;
    --favourite | --favorite)
        _vantora_names favourites "$current"
        return
        ;;
    --profile)
        local IFS=$'\n'
        mapfile -t COMPREPLY < <(compgen -W "$("${COMP_WORDS[0]}" config 2>/dev/null | sed -n 's/^profiles: \(-$\)\{0,1\}//p' | sed 's/, /\n/g')" -- "$current")
        COMPREPLY=("${COMPREPLY[@]// /\\ }")
        return
        ;;
    --if-empty)
        mapfile -t COMPREPLY < <(compgen -W "blank skip fail" -- "$current")
        return
        ;;
    --inside)
        mapfile -t COMPREPLY < <(compgen -W "main-window preview" -- "$current")
        return
        ;;
    esac

    case "$command $verb" in
    "run ")
        words="--pages --choose --keep --except --ranges --action --list --favourite --favorite --settings --set --output --directory --in-place --backup --overwrite --rename --name
            --recursive --report --report-hashes --resume --shard --files-from --null --password-file --keep-signed --strict --verify --salvage --if-empty --accept-failures --skip-existing --metrics --certificate --checksums --jobs --timeout --memory-limit --dry-run --json --quiet --verbose
            --no-recursive --no-backup --no-rename --no-skip-existing --no-keep-signed --no-strict --no-verify --no-report-hashes --no-json --no-quiet --no-verbose --profile --no-config --help
            -p -o -d -i -j -n -q -v -r -h -0"
        ;;
    "pages ")
        words="--choose --keep --except --sheet --report --overwrite --recursive --files-from --null --password-file --jobs --timeout --memory-limit --json --help -r -0 -j -h"
        ;;
    "desktop ")
        words="--help -h"
        ;;
    "configure ")
        words="--set --hide-add-to-action-list --inside --help -h"
        ;;
    "info ")
        words="--recursive --files-from --null --password-file --jobs --timeout --memory-limit --verbose --json --help -r -0 -j -v -h"
        ;;
    "verify ")
        words="--pages --ranges --report --password-file --jobs --timeout --memory-limit --json --help -p -j -h"
        ;;
    "undo ")
        words="--remove-outputs --dry-run --json --quiet --help -n -q -h"
        ;;
    "config ")
        words="--profile --json --example --help -h"
        ;;
    "actions ")
        words="--json --help -h"
        ;;
    "lists " | "favourites ")
        words="--json --help -h"
        [[ "$current" == -* ]] || words="show add change remove"
        ;;
    "settings ")
        words="--help -h"
        [[ "$current" == -* ]] || words="show add change remove"
        ;;
    *" show")
        words="--json --help -h"
        ;;
    *" add")
        words="--pages --choose --keep --except --action --list --favourite --favorite --settings --set --overwrite --help -p -h"
        [[ "$command" != lists ]] || words+=" --category"
        ;;
    "lists change")
        words="--set --step --category --help -h"
        ;;
    *" change")
        words="--set --help -h"
        ;;
    "lists remove")
        words="--step --help -h"
        ;;
    *" remove")
        words="--help -h"
        ;;
    *)
        words="run pages desktop configure info verify undo config actions lists favourites settings --help --version -h"
        ;;
    esac

    if [[ "$current" == -* || -z "$command" || ("$command" =~ ^(lists|favourites|settings)$ && -z "$verb") ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    elif [[ "$command" == configure ]]; then
        _vantora_names actions "$current"
    elif [[ -n "$verb" && "$command" != settings ]]; then
        _vantora_names "$command" "$current"
    elif [[ "$command" == settings ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -X '!*.tsf' -- "$current")
    elif [[ "$command" == undo ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    elif [[ "$command" == run || "$command" == pages || "$command" == desktop || "$command" == info || "$command" == verify ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(
            compgen -d -- "$current"
            compgen -f -X '!*.[pP][dD][fF]' -- "$current"
        )
    fi
}

complete -F _vantora vantora
