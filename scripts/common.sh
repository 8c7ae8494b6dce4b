# shellcheck shell=bash disable=SC2034
# Sourced by the scripts beside it: messages, and the installation of Debian packages.
#
# install_missing asks dpkg what is there and calls apt-get only when something is not, as root or through sudo.

export LC_ALL=C

# Each with the reason why it is needed.
packages_to_build=(
  g++          # the compiler
  cmake        # the build
  ninja-build  # the build
  libtclap-dev # the command-line parser
  libhwy-dev   # vector code
  zlib1g-dev   # compressed input
  libhts-dev   # compressed output of the companions
  libtbb-dev   # the threads of quarvo-scan
  nlohmann-json3-dev # the JSON of quarvo-convert
)
packages_to_test=(
  "${packages_to_build[@]}"
  libgtest-dev    # the unit tests
  clang-format-14 # the check of the layout
  mandoc          # the check of the man page
  zsh             # the test of its completion
  genometools     # reads GFF3 of quarvo-convert; with its libraries 20 megabytes
  bedtools        # reads BED of quarvo-convert
  tabix           # the same, sorted and compressed
  jq              # reads JSON in an example of the documents
  primer3         # reads records of quarvo-convert
  samtools        # reads FASTA in such examples
  seqkit          # the same; one file of 16 megabytes
  trf             # an example in the documents
  tantan          # the same
  spaln-data      # the genome of the tutorial; 20 megabytes
  python3-pandas     # the plot of the tutorial
  python3-matplotlib # the same
)
packages_to_test_clang=(
  clang-14 # the second compiler, and what clang-tidy reads its settings from
)
packages_to_test_release=(
  valgrind # the check of memory in the program as users have it
)
packages_to_test_browser=(
  nodejs   # bundles the page of quarvo-report and runs its tests
  npm      # fetches what they are made of
  chromium # the browser
)
packages_to_test_workflow=(
  python3-pytest # its tests
  snakemake      # its engine; with its own dependencies a gigabyte
  slurm-wlm      # the cluster on which it is tested
  munge          # the same
)
packages_to_test_python=(
  pybind11-dev       # what the Python package is built with
  python3-pybind11   # the same, as pip asks for it
  python3-dev        # the same
  python3-pip        # builds it
  python3-build      # makes its source distribution
  python3-setuptools # the same
  python3-wheel      # the same
  python3-pytest     # its tests
  python3-pandas     # takes repeats in one of them
  mypy               # the check of its types
)
packages_to_package=(
  debhelper       # builds the package
  dh-python       # the same, for Python
  pybind11-dev    # the same
  python3-dev     # the same
  build-essential # what a build of any package may use
)
packages_to_test_package=(
  "${packages_to_package[@]}"
  lintian  # the check of the Debian package
  binutils # tells the libraries of its programs
)
packages_to_build_static=(
  dpkg-dev # unpacks the sources of Highway
  libhtscodecs-dev # what the archive of libhts-dev stands on
  libbz2-dev       # the same
)

say() { printf '\n==> %s\n' "$*"; }

die() {
  printf '\n%s: %s\n' "$0" "$*" >&2
  exit 1
}

# Programs that users often have from elsewhere; Debian's package would not go beside them.
declare -A program_of_package=([nodejs]=node [npm]=npm)

is_installed() {
  local program=${program_of_package[$1]-}
  [ -n "$program" ] && command -v "$program" >/dev/null && return
  [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    env DEBIAN_FRONTEND=noninteractive "$@"
  else
    sudo env DEBIAN_FRONTEND=noninteractive "$@"
  fi
}

install_missing() {
  local package missing=()
  say "Looking for the packages that are needed: $*"
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    die "This is no Debian system: please install the counterparts of the packages above and build with cmake (README.md)."
  fi
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  if [ ${#missing[@]} -eq 0 ]; then
    echo "All are installed."
    return
  fi
  if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
    die "Missing packages: ${missing[*]}. Installing them needs root or sudo, and neither is there. Ask the administrator for: apt-get install ${missing[*]}"
  fi
  say "Installing what is missing: ${missing[*]}"
  as_root apt-get update || die "apt-get update failed; missing packages: ${missing[*]}"
  as_root apt-get install -y --no-install-recommends "${missing[@]}" ||
    die "apt-get could not install: ${missing[*]}"
}

# The files of the source tree, each followed by a zero byte: those that git knows, with what is new and not ignored, or
# all of an unpacked release. What a build left behind is none of them.
source_files() {
  if [ -e .git ] && git rev-parse >/dev/null 2>&1; then
    { git ls-files -z --cached --others --exclude-standard; find bundled -type f -print0 2>/dev/null || true; } |
      while IFS= read -r -d '' file; do [ ! -f "$file" ] || printf '%s\0' "$file"; done
  else
    find . \( -path ./build -o -path ./.git \) -prune -o -type f -print0
  fi
}
