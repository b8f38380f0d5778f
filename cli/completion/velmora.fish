# Completion of velmora for fish. The command itself says what fits: see cli/help/completion.h.
function __velmora_complete
    set -l words (commandline -opc) (commandline -ct)
    command -q $words[1]; or return
    set -l current (commandline -ct)
    set -l before (string match -r -- '^--[^=]*=' $current)
    for line in ($words[1] help --complete -- $words[2..-1] 2>/dev/null)
        switch $line
            case ':folders'
                for folder in (__fish_complete_directories (string replace -- "$before" '' $current))
                    echo "$before$folder"
                end
            case ':files*'
                set -l endings (string split -n ' ' (string replace ':files' '' $line))
                # The shell's own files, as after a command that it does not know.
                for file in (complete -C "'' "(string replace -- "$before" '' $current))
                    set -l name (string split -f 1 \t -- $file)
                    if test (count $endings) -eq 0; or string match -q -- '*/' $name
                        echo "$before$file"
                    else
                        for ending in $endings
                            string match -qi -- "*$ending" $name; and echo "$before$file"
                        end
                    end
                end
            case '*'
                echo $line
        end
    end
end
complete -c velmora -f -a '(__velmora_complete)'
