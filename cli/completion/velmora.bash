# Completion of velmora for bash. The command itself says what fits: see cli/help/completion.h.
_velmora() {
    local current=${COMP_WORDS[COMP_CWORD]} at=$COMP_CWORD equals=0 line word ending file i
    local -a answer
    # The shell makes words of their own of "=" and of what is before it.
    [[ $current == '=' ]] && current= && equals=1 && ((at -= 1))
    while [[ $at -gt 1 && ${COMP_WORDS[at-1]} == '=' ]]; do
        ((equals += 1, at -= 2))
    done
    mapfile -t answer < <("${COMP_WORDS[0]}" help --complete -- "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
    COMPREPLY=()
    for line in "${answer[@]}"; do
        case $line in
            :folders)
                compopt -o filenames
                mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -d -- "$current")
                ;;
            :files*)
                compopt -o filenames
                while IFS= read -r file; do
                    [[ -d $file || $line == ':files' ]] && COMPREPLY+=("$file")
                    [[ -d $file ]] && continue
                    for ending in ${line#:files}; do
                        [[ ${file,,} == *"$ending" ]] && COMPREPLY+=("$file")
                    done
                done < <(compgen -f -- "$current")
                ;;
            *)
                word=${line%%$'\t'*}
                for ((i = 0; i < equals; ++i)); do word=${word#*=}; done
                [[ $word == *= ]] && compopt -o nospace
                [[ $word == *[[:space:]\&\(\)\;\|]* ]] && printf -v word %q "$word"
                COMPREPLY+=("$word")
                ;;
        esac
    done
}
complete -F _velmora velmora
