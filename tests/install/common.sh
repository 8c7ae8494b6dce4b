# shellcheck shell=bash
# Sourced by the tests beside it.
export LC_ALL=C

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failures=0

fail() {
  printf 'FAILED: %s\n' "$*"
  failures=$((failures + 1))
}

# needs TOOL PACKAGE: ends the test as skipped when the tool is not there.
needs() {
  command -v "$1" >/dev/null && return
  echo "skipped: $1 (Debian package $2) is not installed"
  exit 77
}

# same WHAT EXPECTED ACTUAL: two files with the same lines.
same() {
  diff --label expected --label actual -u "$2" "$3" || fail "$1"
}

# A test ends with this.
conclude() {
  [ "$failures" -eq 0 ] && echo passed
  exit $((failures > 0))
}
