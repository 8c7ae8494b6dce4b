# shellcheck shell=bash
# Sourced. What the usage text, the man page and the completions tell about the options of a command, each in lines
#
#   NAME value       an option that takes a value, or
#   NAME switch      one that takes none
#
# sorted by name, with dashes. "--" itself is left out: the completions know it as the end of the options.

# in_help PROGRAM. A term stands after three blanks, its continuation after six, the explanation after five.
in_help() {
  "$1" --help | awk '
    function tell(term,    parts, n, i, kind) {
      if (term == "") return
      kind = term ~ /</ ? "value" : "switch"
      n = split(term, parts, /,  /)
      for (i = 1; i <= n; ++i) { sub(/ .*/, "", parts[i]); if (parts[i] != "--") print parts[i], kind }
    }
    /^Where:/ { inside = 1 }
    !inside { next }
    /^   -/ { tell(term); term = substr($0, 4); next }
    /^      [^ ]/ { term = term substr($0, 7); next }
    { tell(term); term = "" }
    END { tell(term) }' | sort
}

# in_man_page FILE. A term stands after seven blanks.
in_man_page() {
  mandoc -T ascii -O width=120 "$1" | sed 's/.\x08//g' | awk '
    /^[A-Z]/ { inside = ($0 == "OPTIONS") }
    inside && /^       -/ {
      n = split(substr($0, 8), words, " ")
      kind = words[n] ~ /^-/ ? "switch" : "value"
      for (i = 1; i <= n; ++i) if (words[i] ~ /^-/) { sub(/,$/, "", words[i]); print words[i], kind }
    }' | sort
}

# bash_completions FILE WORD ...: what bash offers for the last word, one a line; "(files)" when it is a file name.
bash_completions() {
  bash --norc -c '
    compopt() { echo "(files)"; }
    source "$1"
    shift
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
    read -r _ _ function _ < <(complete -p "$1")
    "$function" "$1" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
    [ ${#COMPREPLY[@]} -eq 0 ] || printf "%s\n" "${COMPREPLY[@]}"' bash "$@"
}

# in_bash FILE COMMAND: after a switch it offers options again, after an option with a value it does not.
in_bash() {
  local name
  while read -r name; do
    if bash_completions "$1" "$2" "$name" - | grep -qx -- --help; then
      echo "$name switch"
    else
      echo "$name value"
    fi
  done < <(bash_completions "$1" "$2" - | sort -u) | awk '$1 == "--ignore_rest" { $2 = "switch" } 1' | sort
}

# zsh_arguments FILE: the arguments of zsh's _arguments, one a line.
zsh_arguments() {
  zsh -f -c '_arguments() { print -rl -- "$@" }; source "$1"' zsh "$1"
}

# in_zsh FILE
in_zsh() {
  zsh_arguments "$1" | sed -nE 's/^\([^)]*\)(-[^[]*)\[/\1 [/p' | while read -r name rest; do
    # After the closing bracket, which is the first one without a backslash, a value has its message.
    if sed -E 's/\\.//g' <<<"$rest" | grep -q '^[^]]*]:'; then
      echo "$name value"
    else
      echo "$name switch"
    fi
  done | sort
}
