# Completes rmthost in fish. What can come next is asked of rmthost itself; fish quotes it.

function __rmthost_ask
    set -l words (commandline -opc)
    # Before the program there can be variables, or a program that starts it.
    while set -q words[1]; and not string match -qr '(^|/)rmthost$' -- $words[1]
        set -e words[1]
    end
    set -q words[1]; or return
    set -l program (string replace -r '^~/' $HOME/ -- $words[1])
    # A quote that is open is closed, so that the word can be taken out of it.
    set -l typed (commandline -ct)
    set -l word
    for quote in '' "'" '"'
        set word (string unescape -- "$typed$quote"); and break
    end
    $program __complete $words[2..] "$word" 2>/dev/null
end

function __rmthost_candidates
    # Without a quote or a backslash in front, fish would leave the ~ that a word begins with as it is.
    set -l unsafe '^\t'
    string match -qr '^[\'"\\\\]' -- (commandline -ct); or set unsafe '^[\t~]'
    __rmthost_ask | string match -vr $unsafe
end

complete -c rmthost -e
complete -c rmthost -f -k -a '(__rmthost_candidates)'
complete -c rmthost -n '__rmthost_ask | string match -qr "^\tfile"' -F
