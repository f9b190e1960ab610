# Completes rmthost in bash. What can come next is asked of rmthost itself; this script says where the cursor stands and
# quotes the answer.

# Readline puts a completion in the place of $2, which ends at the cursor and may begin inside a word or a quote:
# "before" is the part of the word in front of it, "open" the quote. COMP_WORDS is split at = and :, so it is of no use.
_rmthost() {
  local line=${COMP_LINE:0:COMP_POINT} word='' quote='' before='' open='' started='' files='' char candidate
  local -a words=() found=()
  local -i at
  for ((at = 0; at <= ${#line}; ++at)); do
    ((at == COMP_POINT - ${#2})) && before=$word open=$quote
    char=${line:at:1}
    # Inside double quotes a backslash quotes only these four characters.
    if [[ $char == \\ && ($quote == '' || $quote${line:at+1:1} == \"[\\\"\$\`]) ]]; then
      word+=${line:at+1:1} at+=1
    elif [[ $quote ]]; then
      if [[ $char == "$quote" ]]; then quote=''; else word+=$char; fi
    elif [[ $char == [\'\"] ]]; then
      quote=$char started=yes
    elif [[ $char != [[:space:]] ]]; then
      word+=$char
    elif [[ $word || $started ]]; then
      words+=("$word") word='' started=''
    fi
  done

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

  COMPREPLY=()
  for candidate in "${found[@]}"; do
    [[ $files ]] || candidate=${candidate%%$'\t'*}
    [[ $candidate == "$word"* ]] || continue
    candidate=${candidate#"$before"}
    case $files$open in
      "'") candidate=${candidate//\'/"'\''"} ;;
      '"')
        for char in \\ \$ \` \"; do candidate=${candidate//"$char"/"\\$char"}; done
        # Inside double quotes the shell's history would take it.
        candidate=${candidate//!/'"\!"'}
        ;;
      '') [[ $candidate ]] && printf -v candidate %q "$candidate" ;;
    esac
    # Where a completion begins with the quote that is open, readline takes it for that one; where it ends with one,
    # readline adds none. So it has both, whatever it begins and ends with itself.
    [[ $files ]] || candidate=$open$candidate$open
    COMPREPLY+=("$candidate")
  done
  if [[ ${COMPREPLY[*]} == *: ]]; then compopt -o nospace; fi  # Something follows behind the colon.
}
complete -F _rmthost rmthost
