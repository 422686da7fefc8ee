# Completion of tarnwickctl for bash.

# The categories that the mixer has, by the options typed so far, and that begin with the word under
# the cursor.
_tarnwickctl_categories() {
    local typed=${cur//\\/} category
    typed=${typed#[\"\']}
    while IFS=$'\t' read -r category _; do
        [[ $category == "$typed"* ]] && COMPREPLY+=("$(printf '%q' "$category")")
    done < <("$1" "${choices[@]}" --timeout 0.3 list 2>/dev/null)
    __ltrim_colon_completions "$cur"
}

_tarnwickctl() {
    local cur prev words cword i command= operands=0
    local -a choices=()
    _init_completion -n := || return
    for ((i = 1; i < cword; ++i)); do
        case ${words[i]} in
        --timeout | --wait) ((++i)) ;;
        --server | --preferences | --model) choices+=("${words[i]}" "${words[++i]}") ;;
        --*) ;;
        *) [[ $command ]] && ((++operands)) || command=${words[i]} ;;
        esac
    done
    case $prev in
    --preferences)
        _filedir -d
        return
        ;;
    --server | --timeout | --wait | --model) return ;;
    esac

    if [[ $cur == --* ]]; then
        COMPREPLY=($(compgen -W '--json --server --timeout --wait --changes-only --permanent --preferences
            --model --help --version' -- "$cur"))
    elif [[ ! $command ]]; then
        COMPREPLY=($(compgen -W 'list get set mute unmute toggle watch check outputs' -- "$cur"))
    elif [[ $command =~ ^([gs]et|(un)?mute|toggle)$ && $operands == 0 ]]; then
        _tarnwickctl_categories "$1"
    elif [[ $command == outputs && $operands == 0 ]]; then
        COMPREPLY=($(compgen -W 'on off status adopt' -- "$cur"))
    elif [[ $command == set && $operands == 1 ]]; then
        COMPREPLY=($(compgen -W '+5% -5% 0% 25% 50% 75% 100%' -- "$cur"))
    fi
}

complete -F _tarnwickctl tarnwickctl
