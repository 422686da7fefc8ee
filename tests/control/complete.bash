# complete.bash COMPLETION WORD ...: what Tab offers for the last of the words, a line each. A colon
# is a word of its own, as for bash.
source /usr/share/bash-completion/bash_completion
source "$1"
shift
COMP_WORDS=("$@")
COMP_CWORD=$(($# - 1))
COMP_LINE=$*
COMP_LINE=${COMP_LINE// : /:}
COMP_POINT=${#COMP_LINE}
_tarnwickctl "$1" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
[[ ${#COMPREPLY[@]} == 0 ]] || printf '%s\n' "${COMPREPLY[@]}"
