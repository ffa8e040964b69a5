# The checks that CI adds to the tests. Sourced by ./ktdx.

our_sources() {
  git ls-files '*.cpp' '*.h'
}

check_format() {
  our_sources | xargs clang-format-14 --dry-run -Werror
}

# Operating systems are told apart in the seam and behind it, nowhere else in the module or the host.
check_platform_walls() {
  local found
  found=$(git grep -nE '#[[:space:]]*(el)?if.*\b(_WIN32|_WIN64|__linux__|__unix__|__APPLE__|__MINGW32__|_MSC_VER)\b' -- src ':!src/host' kthost ':!kthost/window' || true)
  if [ -n "$found" ]; then
    printf 'an operating system is told apart outside src/host and kthost/window:\n%s\n' "$found" >&2
    return 1
  fi
}

# The sources one by one, for the static analyzer's sake. The tests, which do without it (tests/.clang-tidy), ten at a
# time: most of what clang-tidy does for a test is to read GoogleTest.
check_tidy() {
  cmake --preset debug >/dev/null
  cmake --preset tidy >/dev/null
  cp tests/.clang-tidy build/tidy/tests/
  files_built_by build/debug src kthost clients tools | xargs -0 -n 1 -P "$(nproc)" clang-tidy-14 --quiet -p build/debug 2> >(without_counts)
  find build/tidy/tests -name 'unity_*.cxx' -print0 |
    xargs -0 -n 1 -P "$(nproc)" clang-tidy-14 --quiet -p build/tidy --checks=-bugprone-suspicious-include 2> >(without_counts)
}

# files_built_by BUILD FOLDER...: those of our sources that the compile database there names, each with a zero behind it.
files_built_by() {
  local database=$1/compile_commands.json
  shift
  git ls-files -- "${@/%//*.cpp}" | while read -r file; do
    if grep -qF "\"file\": \"$PWD/$file\"" "$database"; then
      printf '%s\0' "$file"
    fi
  done
}

without_counts() {
  grep -vE 'warnings? generated' >&2 || true
}
