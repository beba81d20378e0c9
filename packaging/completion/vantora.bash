# Completion of vantora's commands, options and their values for bash. The program says what a word may
# become (vantora complete WORD...), so this knows no option.

_vantora()
{
    local line value current="${COMP_WORDS[COMP_CWORD]}" program="${COMP_WORDS[0]/#\~/$HOME}"
    local -a words=("${COMP_WORDS[@]:1:COMP_CWORD}")
    words=("${words[@]//\\/}") # as they are without the quotes of a shell
    words=("${words[@]#[\"\']}")
    if [[ "$program" == *-desktop ]]; then # is vantora desktop
        program="${program%-desktop}"
        words=(desktop "${words[@]}")
    fi
    COMPREPLY=()
    while IFS= read -r line; do
        case "$line" in
        :folders)
            compopt -o filenames
            mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -d -- "$current")
            ;;
        :files)
            compopt -o filenames
            mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$current")
            ;;
        ":files "*)
            compopt -o filenames
            mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(
                shopt -s nocasematch # for small letters and capitals
                compgen -f -- "$current" | while IFS= read -r value; do
                    [[ "$value" != *".${line#:files }" ]] || printf '%s\n' "$value"
                done
            )
            ;;
        *)
            value="${line%%$'\t'*}"
            [[ "$value" != *: ]] || compopt -o nospace
            COMPREPLY+=("$(printf %q "$value")")
            ;;
        esac
    done < <("$program" complete "${words[@]}" 2>/dev/null)
    # Of --list=A a shell that takes = for the end of a word wants what follows it.
    [[ "$COMP_WORDBREAKS" != *=* ]] || COMPREPLY=("${COMPREPLY[@]/#--*=/}")
}

complete -F _vantora vantora vantora-desktop
