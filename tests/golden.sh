# shellcheck shell=bash disable=SC2154
# Sourced by the runners of golden cases, tests/cli/run and tests/convert/run, whose cases.tst has a case in each line:
# exit status, name, command. What a case leaves behind is compared byte for byte with expected/NAME.PART, for the
# parts out, err and the names of files. An absent file stands for an empty stream, or for a file that the case must
# not leave behind.
#
# Expected files do not repeat each other. The runner names a few that stand whole; in all others a line such as
#
#   === lines 6-34 of format-1.results
#
# stands for these lines of one of them. So the head of the results and the table of settings stand where they are the
# subject, every other file shows in what its case differs from them, and still each byte of each case is compared.
# --update writes the files so; a failing case is shown with all its lines.
#
# The runner sets, before it calls run_golden_cases "$@" with names of cases, or none for all:
#   here          the directory of cases.tst and expected/
#   update        yes or no
#   whole_files   the files of expected/ that stand whole
#   run_case      a function: runs the command $1 and leaves `status`, `out`, `err` and files in $scratch/actual
export LC_ALL=C

scratch=$(mktemp -d) || exit 2
trap 'rm -rf "$scratch"' EXIT

# expanded FILE: the file of expected/, whole.
expanded() {
  grep -qa '^=== lines ' "$1" || { cat "$1"; return; }
  awk -v directory="$here/expected/" '
    /^=== lines [0-9]+-[0-9]+ of [^ ]+$/ {
      split($3, range, "-")
      whole = directory $5
      if (range[1] + 0 < 1 || range[1] + 0 > range[2] + 0) print "(no lines: " $0 ")"
      for (n = 1; n <= range[2] && (getline line < whole) > 0; ++n) if (n >= range[1]) print line
      if (n <= range[2]) print "(not there: " $0 ")"
      close(whole)
      next
    }
    { print }' "$1"
}

# shortened FILE NAME: the file with references to the whole files, by the one that makes it shortest. Fewer than three
# equal lines in a row are written as they are.
shortened() {
  local whole best=$1
  case " ${whole_files[*]} " in *" $2 "*) cat "$1"; return ;; esac
  for whole in "${whole_files[@]}"; do
    diff --text --minimal \
      --unchanged-group-format="%(n=1?%=:%(n=2?%=:=== lines %df-%dl of $whole
))" --changed-group-format='%>' "$here/expected/$whole" "$1" >"$scratch/short.$whole"
    expanded "$scratch/short.$whole" | cmp -s - "$1" || continue
    [ "$(wc -l <"$scratch/short.$whole")" -ge "$(wc -l <"$best")" ] || best=$scratch/short.$whole
  done
  cat "$best"
}

# expect STATUS NAME: lays what is expected of a case into $scratch/expected under the names of run_case.
expect() {
  local file
  rm -rf "$scratch/expected"
  mkdir "$scratch/expected"
  echo "$1" >"$scratch/expected/status"
  : >"$scratch/expected/out"
  : >"$scratch/expected/err"
  for file in "$here/expected/$2".*; do
    [ ! -f "$file" ] || expanded "$file" >"$scratch/expected/${file#"$here/expected/$2."}"
  done
}

# keep NAME: notes the files of run_case as what is expected. The status stays what cases.tst says.
keep() {
  local file
  rm -f "$scratch/kept/$1".*
  for file in "$scratch/actual"/*; do
    case ${file##*/} in
      status) ;;
      out | err) [ ! -s "$file" ] || cp "$file" "$scratch/kept/$1.${file##*/}" ;;
      *) cp "$file" "$scratch/kept/$1.${file##*/}" ;;
    esac
  done
}

# All files as they are, whole.
begin_update() {
  local file
  mkdir "$scratch/kept"
  for file in "$here/expected"/*; do
    expanded "$file" >"$scratch/kept/${file##*/}"
  done
  cp -r "$scratch/kept" "$scratch/before"
}

# Writes what changed; everything again where one of the files that stand whole did.
end_update() {
  local file name all=no
  for name in "${whole_files[@]}"; do
    cmp -s "$scratch/before/$name" "$scratch/kept/$name" || all=yes
    cp "$scratch/kept/$name" "$here/expected/$name"
  done
  for file in "$here/expected"/*; do
    [ -f "$scratch/kept/${file##*/}" ] || rm "$file"
  done
  for file in "$scratch/kept"/*; do
    name=${file##*/}
    [ "$all" = yes ] || ! cmp -s "$scratch/before/$name" "$file" || continue
    shortened "$file" "$name" >"$scratch/short"
    cp "$scratch/short" "$here/expected/$name"
  done
}

passed=0
failed=0
fail() {
  failed=$((failed + 1))
  echo "FAILED: $1"
}

# wanted_cases NAME ...: cases.tst without comments, as far as it is asked for.
wanted_cases() {
  awk -v names=" $* " '/^#/ || NF == 0 { next } names == "  " || index(names, " " $2 " ")' "$here/cases.tst"
}

# What is wrong with the files themselves.
check_names() {
  local name file all
  all=" $(awk '!/^#/ && NF { printf "%s ", $2 }' "$here/cases.tst")"
  for name in $(tr ' ' '\n' <<<"$all" | sort | uniq -d); do
    fail "$name stands twice in cases.tst"
  done
  for name in "$@"; do
    case $all in *" $name "*) ;; *) fail "no case is named $name" ;; esac
  done
  [ $# -eq 0 ] || return
  for file in "$here/expected"/*; do
    name=${file##*/}
    case $all in *" ${name%%.*} "*) ;; *) fail "expected/$name belongs to no case" ;; esac
  done
}

run_golden_cases() {
  local status name command
  check_names "$@"
  wanted_cases "$@" >"$scratch/cases"
  if [ "$update" = yes ]; then
    begin_update
    while read -r status name command; do
      run_case "$command"
      keep "$name"
    done <"$scratch/cases"
    end_update
  fi
  while read -r status name command; do
    run_case "$command"
    expect "$status" "$name"
    if diff -r -a -u "$scratch/expected" "$scratch/actual" >"$scratch/diff"; then
      passed=$((passed + 1))
    else
      fail "$name: $command"
      sed "s|$scratch/||; 200q" "$scratch/diff"
    fi
  done <"$scratch/cases"
  echo "$passed passed, $failed failed"
  [ "$failed" -eq 0 ]
}
