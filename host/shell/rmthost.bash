# Completes rmthost in bash. What can come next is asked of rmthost itself; this script says where the cursor stands and
# quotes the answer.

# Readline puts a completion in the place of $2, which ends at the cursor and may begin inside a word or a quote:
# "before" is the part of the word in front of it, "open" the quote. COMP_WORDS is split at = and :, so it is of no use.
#
# Other people choose the names of endpoints, which can hold what a shell carries out. Outside quotes printf quotes them.
# Inside an open quote, only those are offered that need no quoting there. Nothing is offered for a word with a $ or a ` that
# the shell acts on: $'...' is such a word, and what follows $( would be part of a command.
_rmthost() {
  local line=${COMP_LINE:0:COMP_POINT} word='' quote='' before='' open=unknown started='' replaced='' files=''
  local char candidate
  local -a words=() found=()
  local -i at
  for ((at = 0; at <= ${#line}; ++at)); do
    ((at == COMP_POINT - ${#2})) && before=$word open=$quote
    char=${line:at:1}
    # Inside double quotes a backslash quotes only these four characters.
    if [[ $char == \\ && ($quote == '' || $quote${line:at+1:1} == \"[\\\"\$\`]) ]]; then
      word+=${line:at+1:1} at+=1
    elif [[ $quote && $char == "$quote" ]]; then
      quote=''
    elif [[ ! $quote && $char == [\'\"] ]]; then
      quote=$char started=yes
    elif [[ $quote || $char != [[:space:]] ]]; then
      word+=$char
      [[ $char == [\$\`] && $quote != "'" ]] && replaced=yes
    elif [[ $word || $started ]]; then
      words+=("$word") word='' started='' replaced=''
    fi
  done
  COMPREPLY=()
  [[ $replaced ]] && return

  mapfile -t found < <("${words[0]/#\~\//"$HOME"/}" __complete "${words[@]:1}" "$word" 2>/dev/null)
  if [[ ${found[0]-} == $'\tfile\t'* ]]; then
    local option=${found[0]#$'\tfile\t'}
    local file=${word#"$option"}
    files=yes
    [[ $file == \~/* ]] && file=$HOME${file#\~}
    word=$option$file
    compopt -o filenames  # Bash quotes them, in the quote that is open.
    mapfile -d '' -t found < <(shopt -s nullglob && printf '%s\0' "$file"*)
    found=("${found[@]/#/"$option"}")
  fi

  for candidate in "${found[@]}"; do
    [[ $files ]] || candidate=${candidate%%$'\t'*}
    [[ $candidate == "$word"* ]] || continue
    candidate=${candidate#"$before"}
    case $files$open in
      yes*) ;;
      '') [[ $candidate ]] && printf -v candidate %q "$candidate" ;;
      "'") [[ $candidate == *\'* ]] && continue ;;
      # The ! is for the shell's history.
      '"') [[ $candidate == *[\"\\\$\`!]* ]] && continue ;;
      *) continue ;;
    esac
    COMPREPLY+=("$candidate")
  done
  if [[ ${COMPREPLY[*]} == *: ]]; then compopt -o nospace; fi  # Something follows behind the colon.
}
complete -F _rmthost rmthost
