# shellcheck shell=bash disable=SC2034,SC2154
# Sourced by the scripts beside it: building, inputs, measuring, tables.
#
# A script sets `build` (the build directory), `runs` (how often each command is measured), `raw` (a file for the single
# figures, or empty) and `scale` (what the sizes of inputs are divided by), and calls start_work.
# Measured is the user plus system time of whole processes. Commands to be compared are run by turns and the ratio is
# taken within each pair, so that what slows the machine for a while slows both.

export LC_ALL=C
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

die() {
  printf '%s: %s\n' "$0" "$*" >&2
  exit 1
}

say() { printf '%s\n' "$*" >&2; }

# Makes the directory for inputs and results, which goes when the script ends.
start_work() {
  build=$(realpath -m -- "$build")
  work=$(mktemp -d)
  trap 'rm -rf "$work"' EXIT
  [ -z "$raw" ] || printf 'row\trun\tseconds\tkilobytes\tcommand\n' >"$raw"
}

# --- Building ---

build_program() {
  say "Building quarvo in $build"
  {
    cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DQUARVO_BUILD_BENCH=ON &&
      cmake --build "$build" --parallel 2 --target quarvo quarvo-scan quarvo-measure
  } >"$work/build.log" 2>&1 || die "the program could not be built: $(tail -n 20 "$work/build.log")"
  PATH=$(cd "$build" && pwd):$PATH
}

# The reference has its own optimisation, -O2, in every configuration.
build_reference() {
  say "Building the reference in $build/reference"
  {
    cmake -S "$root/tests/reference" -B "$build/reference" && cmake --build "$build/reference" --parallel 2
  } >"$work/build.log" 2>&1 || die "the reference could not be built: $(tail -n 20 "$work/build.log")"
  PATH=$(cd "$build/reference" && pwd):$PATH
}

# --- Inputs ---
# They get short names in the work directory, which is made the current one, so that tables can show whole commands.

# The files of the genomes by the names that rows use.
genome_file() {
  case $1 in
    human) echo human_chr20_5_15Mb.fa ;;
    subtelomere) echo human_chr20_subtelomere_500kb.fa ;;
    pericentromere) echo human_pericentromere_700kb.fa ;;
    at-rich) echo dictyostelium_2mb.fa ;;
    hairpins*) echo mirbase_hairpin_rna.fa ;;
    cdna*) echo dictyostelium_cdna.fa ;;
    *) die "no genome is called $1" ;;
  esac
}

# cut_record FILE SYMBOLS: the first record of the file, that many symbols of it at most.
cut_record() {
  awk -v left="$2" '
    /^>/ { if (NR > 1) exit; print; next }
    { print substr($0, 1, left); left -= length($0); if (left <= 0) exit }' "$1"
}

# first_records FILE RECORDS
first_records() { awk -v count="$2" '/^>/ && ++n > count { exit } { print }' "$1"; }

# random_lines SYMBOLS: random sequence. The generator (Park and Miller) is exact in every awk.
random_lines() {
  awk -v left="$1" '
    BEGIN {
      seed = 20240607
      split("A C G T", base)
      for (; left > 0; left -= 60) {
        line = ""
        for (i = 0; i < 60 && i < left; ++i) {
          seed = seed * 16807 % 2147483647
          line = line base[1 + int(seed / 536870912)]
        }
        print line
      }
    }'
}

random_record() {
  echo ">random"
  random_lines "$1"
}

# input NAME SYMBOLS: the name of the file, made when it is asked for first. 0 symbols are the whole file.
input() {
  local symbols=$(($2 / scale)) file
  file=$1-$symbols.fa
  [ "$symbols" -ne 0 ] || file=$1.fa
  if [ ! -e "$work/$file" ]; then
    case $1 in
      random) random_record "$symbols" >"$work/$file" ;;
      *) genome "$1" "$symbols" >"$work/$file" ;;
    esac
  fi
  echo "$file"
}

# genome NAME SYMBOLS: the file, the cut, or, if the name ends in a dash and a number, so many records of the file.
genome() {
  local file
  file=$data/$(genome_file "$1")
  [ -r "$file" ] || die "$file cannot be read; name the directory of the genomes as argument or in QUARVO_DATA"
  case $1 in
    *-[0-9]*) first_records "$file" "${1##*-}" ;;
    *) if [ "$2" -eq 0 ]; then cat "$file"; else cut_record "$file" "$2"; fi ;;
  esac
}

symbols_of() { awk '!/^>/ { n += length($0) } END { print n }' "$work/$1"; }

# --- Measuring ---

# measure ROW RUN COMMAND...: prints seconds and kilobytes. Fails if the command does; trf ends with any status.
measure() {
  local row=$1 run=$2 line seconds kilobytes status
  shift 2
  line=$(cd "$work" && "$build/bench/quarvo-measure" "$@") || die "no figure for: $*"
  read -r seconds kilobytes status <<<"$line"
  [ "$status" -eq 0 ] || [ "$1" = trf ] || die "status $status of: $*"
  [ -z "$raw" ] || printf '%s\t%s\t%s\t%s\t%s\n' "$row" "$run" "$seconds" "$kilobytes" "$*" >>"$raw"
  echo "$seconds $kilobytes"
}

# pairs ROW: runs the commands in the arrays `first` and `second` by turns; the seconds of both go to the file `pairs`.
pairs() {
  local run a b
  : >"$work/pairs"
  for ((run = 1; run <= runs; ++run)); do
    a=$(measure "$1" "$run" "${first[@]}") || exit 1
    b=$(measure "$1" "$run" "${second[@]}") || exit 1
    echo "${a% *} ${b% *}" >>"$work/pairs"
  done
}

# middle VALUE...: the median.
middle() { printf '%s\n' "$@" | sort -g | awk '{ v[NR] = $1 } END { print (v[int((NR + 1) / 2)] + v[int(NR / 2) + 1]) / 2 }'; }

# summary EXPRESSION: of the pairs a, b measured last the medians of a and of b, and of the expression of them the median,
# the least and the greatest.
summary() {
  local lines
  lines=$(awk "{ a = \$1; b = \$2; if (a <= 0) a = 1e-6; print a, b, $1 }" "$work/pairs")
  # shellcheck disable=SC2046
  echo "$(middle $(cut -d' ' -f1 <<<"$lines"))" "$(middle $(cut -d' ' -f2 <<<"$lines"))" \
    "$(middle $(cut -d' ' -f3 <<<"$lines"))" $(cut -d' ' -f3 <<<"$lines" | sort -g | sed -n '1p;$p')
}

# --- Tables ---

print_machine() {
  echo "Machine: $(lscpu | sed -n 's/^Model name: *//p'), $(nproc) cores, $(uname -s) $(uname -r);" \
    "load average $(cut -d' ' -f1 /proc/loadavg) at the start"
  echo "Compiler: $("$(sed -n 's/^CMAKE_CXX_COMPILER:[A-Z]*=//p' "$build/CMakeCache.txt")" --version | head -n 1), options" \
    "$(sed -n 's/^CMAKE_CXX_FLAGS_RELEASE:[A-Z]*=//p' "$build/CMakeCache.txt")"
}

# print_figures FIGURES: what the medians are of.
print_figures() { echo "Time: user plus system, whole processes, in seconds; medians of $runs $1"; }

# table_row CELL...
table_row() {
  printf '|'
  printf ' %s |' "$@"
  printf '\n'
}

rounded() { awk -v x="$1" 'BEGIN { printf(x >= 100 ? "%.0f" : x >= 10 ? "%.1f" : x >= 1 ? "%.2f" : "%.3f", x) }'; }
