# Completion of psf for bash.

# A word as it is on the command line, as a path: without its quoting, and with the home folder for "~". Nothing in
# it is run.
_psf_path() {
    local path=$1
    case $path in
    '"'*) path=${path#'"'} && path=${path%'"'} ;;
    "'"*) path=${path#"'"} && path=${path%"'"} ;;
    '~/'*) path=$HOME/${path#'~/'} && path=${path//\\/} ;;
    *) path=${path//\\/} ;;
    esac
    printf '%s' "$path"
}

_psf() {
    local word=${COMP_WORDS[COMP_CWORD]} command='' file='' count=0 i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
        --codepage | -o | --output | --c-file | --name | --files-from | --format | -j | --jobs | --timeout | --junit | --channel) ((i++)) ;;
        -*) ;;
        *)
            ((count++))
            case $count in
            1) command=${COMP_WORDS[i]} ;;
            2) file=$(_psf_path "${COMP_WORDS[i]}") ;;
            esac
            ;;
        esac
    done
    if [[ ${COMP_WORDS[COMP_CWORD - 1]} == --codepage ]]; then
        mapfile -t COMPREPLY < <(compgen -W '1250 1251 1252 1253 1254 1255 1256 1257 1258' -- "$word")
        return
    fi
    if [[ $count -eq 0 ]]; then
        mapfile -t COMPREPLY < <(compgen -W 'new show set add delete rename resave export import generate check build test tidy merge text git-setup map recover --codepage --help --version' -- "$word")
        return
    fi
    case ${COMP_WORDS[COMP_CWORD - 1]} in
    --c-file | --files-from | --junit)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$(_psf_path "$word")")
        return
        ;;
    --format)
        mapfile -t COMPREPLY < <(compgen -W 'text gcc json sarif github' -- "$word")
        return
        ;;
    --name | -j | --jobs | --timeout | --channel) return ;;
    esac
    if [[ $word == -* ]]; then
        local options='--codepage --help'
        case $command in
        new | add | delete | rename | resave | import) options+=' --force' ;;
        show) options+=' --json --name' ;;
        set) options+=' --strict --force' ;;
        build) options+=' --jobs --output --files-from' ;;
        test) options+=' --jobs --timeout --junit --coverage --channel --files-from' ;;
        check) options+=' --lint --format --files-from --name' ;;
        generate) options+=' --output --name --force' ;;
        tidy) options+=' --check --files-from --name --force' ;;
        merge) options+=' --name --force' ;;
        git-setup) options+=' --global' ;;
        map) options+=' --c-file' ;;
        recover) options+=' --json --output --delete --force' ;;
        esac
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
        return
    fi
    local names=''
    case $command:$count in
    show:2 | set:2) names=$(psf show "$file" 2>/dev/null) ;;
    delete:2 | rename:2) names=$(psf show "$file" 2>/dev/null | sed -n 's|^functions/||p') ;;
    recover:1)
        if [[ ${COMP_WORDS[COMP_CWORD - 1]} != -o && ${COMP_WORDS[COMP_CWORD - 1]} != --output ]]; then
            mapfile -t COMPREPLY < <(compgen -W "$(psf recover 2>/dev/null | cut -f 1)" -- "$word")
            return
        fi
        ;;&
    add:2 | rename:3 | git-setup:*) return ;;
    export:2 | import:1)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$(_psf_path "$word")")
        return
        ;;
    merge:*)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$(_psf_path "$word")")
        return
        ;;
    *)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -X '!*.[Pp][Ss][Ff]' -- "$(_psf_path "$word")"; compgen -d -- "$(_psf_path "$word")")
        return
        ;;
    esac
    mapfile -t COMPREPLY < <(IFS=$'\n' && compgen -W "$names" -- "$word")
}

complete -F _psf psf
