# Completion of vantora's commands, options and their values for fish. The program says what a word may
# become (vantora complete WORD...), so this knows no option.

function __vantora_complete
    set -l words (commandline -opc)
    set -l current (commandline -ct | string unescape)
    set -l program $words[1] complete
    if string match --quiet '*-desktop' -- $words[1]
        set program (string replace --regex -- '-desktop$' '' $words[1]) complete desktop
    end
    for line in ($program $words[2..-1] "$current" 2>/dev/null)
        switch $line
            case :folders
                __fish_complete_directories "$current" ''
            case :files
                __fish_complete_path "$current" ''
            case ':files *'
                set -l ending (string replace ':files ' . -- $line)
                for file in (__fish_complete_path "$current" '')
                    string match --quiet --ignore-case "*$ending" -- (string split --fields 1 \t -- $file)
                    and echo $file
                end
            case '*'
                echo $line
        end
    end
end

complete --command vantora --command vantora-desktop --no-files --arguments '(__vantora_complete)'
