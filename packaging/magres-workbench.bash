# SPDX-License-Identifier: GPL-3.0-or-later
# Completion for bash. The program itself knows its commands and options, and the nuclei of the files that are named.

_magres_workbench() {
  # "=" and ":" end a word for readline, not for the program.
  local -a words=()
  local word previous='' i
  for ((i = 1; i <= COMP_CWORD; ++i)); do
    word=${COMP_WORDS[i]}
    if ((i > 1)) && [[ $word == [=:]* || $previous == *[=:] ]]; then
      words[-1]+=$word
    else
      words+=("$word")
    fi
    previous=$word
  done
  # Words stand here as they were typed.
  for i in "${!words[@]}"; do
    word=${words[i]//[\\\"\']/}
    words[i]=${word/#\~\//$HOME/}
  done

  local program=${COMP_WORDS[0]/#\~\//$HOME/} typed=${words[-1]}
  local before=''
  [[ $typed == *[=:]* ]] && before=${typed%"${typed##*[=:]}"}
  COMPREPLY=()
  while IFS= read -r word; do
    COMPREPLY+=("${word#"$before"}")
  done < <("$program" complete-words -- "${words[@]}" 2>/dev/null)
}
complete -o bashdefault -o default -F _magres_workbench magres-workbench
