# What the comparisons of the two systems have in common. Sourced by run.sh.

fail() {
  echo "platforms: $1" >&2
  exit 1
}

# same WHAT HERE THERE: two files, to the byte.
same() {
  [ -s "$2" ] || fail "$1: nothing was written here"
  cmp -s "$2" "$3" && return
  diff --text "$2" "$3" | head -n 20 >&2 || true
  fail "$1: Windows (>) differs from this system (<)"
}
