# Prints the command line that a shell at a pseudo-terminal makes of what is typed.
#
#   zsh -f type-at-a-prompt.zsh bash|zsh GENERATED TYPED
#
# In TYPED, ^ stands for the tabulator. At the end the shell is asked for its line, which it prints between marks.
zmodload zsh/zpty
shell=$1 generated=$2 typed=${3//^/$'\t'}

# wait_for PATTERN: reads until the shell has written it.
wait_for() {
  local text
  zpty -r -m prompt text "*$1*" || exit 1
  REPLY=$text
}

export TERM=dumb PS1='ready> '
if [[ $shell == bash ]]; then
  zpty prompt "bash --norc --noprofile -i"
  zpty -w prompt "PS1='ready'\$'> '; for file in '$generated'/bash/*; do source \"\$file\"; done; bind 'set bell-style none'"
  zpty -w prompt "show() { echo \"<<\$READLINE_LINE>>\"; READLINE_LINE=; }; bind -x '\"\\C-xs\": show'; echo set\"\" up"
else
  zpty prompt "zsh -f -i"
  zpty -w prompt "PS1='ready> '; unsetopt zle_bracketed_paste 2>/dev/null; unset zle_bracketed_paste; LISTMAX=1000"
  zpty -w prompt "fpath=('$generated/zsh' \$fpath); autoload -Uz compinit; compinit -u -D; bindkey '^I' complete-word"
  zpty -w prompt "unsetopt beep auto_menu; show() { print -r -- \"<<\$BUFFER>>\"; BUFFER= }; zle -N show; bindkey '^Xs' show; echo set\"\" up"
fi
wait_for 'set up'
wait_for 'ready> '
zpty -n -w prompt "$typed"$'\x18s'
wait_for '<<*>>'
print -r -- "${${REPLY##*<<}%%>>*}"
zpty -d prompt
