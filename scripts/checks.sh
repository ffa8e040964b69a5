# The checks that CI adds to the tests. Sourced by ./ktdx.

our_sources() {
  git ls-files '*.cpp' '*.h'
}

check_format() {
  our_sources | xargs clang-format-14 --dry-run -Werror
}

# Operating systems and compilers are told apart, and their own headers used, in the seam and behind it, and nowhere
# else in the module, the host, its clients and the tools. Names that the compilers reserve for that are looked for
# wherever they stand, so also in a condition's second line; words that could mean something else, in conditions only.
check_platform_walls() {
  local reserved plain headers found
  reserved='\b(_+WIN(32|64|NT)_*|_+(linux|unix|gnu_linux|APPLE|MACH|FreeBSD|ANDROID|CYGWIN|MSYS)_*|_MSC_[A-Z_]+|__MINGW[0-9A-Z_]*|__GNUC__|__clang__|__GLIBC__|_POSIX_[A-Z_]+)\b'
  plain='^[[:space:]]*#[[:space:]]*(el)?if.*\b(WIN32|WIN64|WINNT|linux|unix)\b'
  headers='<(windows|win[a-z]+|psapi|shell[a-z]+|io|direct|process|tchar|unistd|fcntl|dlfcn|link|pthread|poll|signal|termios|langinfo|cxxabi|sys/[a-z]+)\.h>'
  found=$(git grep --untracked -nE -e "$reserved" -e "$plain" -e "$headers" -- \
    '*.h' '*.cpp' ':!include' ':!tests' ':!fuzz' ':!src/host' ':!kthost/window' || true)
  if [ -n "$found" ]; then
    printf 'a system or a compiler is told apart outside src/host and kthost/window:\n%s\n' "$found" >&2
    return 1
  fi
}

# The static analyzer goes by single sources: of several at a time it follows fewer paths. The tests do without it
# (tests/.clang-tidy). All else is checked ten sources at a time, since most of its work is to read the library.
check_tidy() {
  cmake --preset bench >/dev/null
  cmake --preset tidy >/dev/null
  cp tests/.clang-tidy build/tidy/tests/
  files_built_by build/bench src kthost clients samples tools bench | run_tidy build/bench "$one_by_one"
  units_of build/tidy | run_tidy build/tidy '-clang-analyzer-*,-bugprone-suspicious-include'
}

# Of what .clang-tidy asks for, the analyzer and what looks at the main file only.
one_by_one='-bugprone-*,-cppcoreguidelines-*,-misc-*,-modernize-*,-performance-*,-portability-*,-readability-*,-clang-diagnostic-*,misc-unused-*-decls'

# run_tidy BUILD CHECKS: over what comes with a zero behind each.
run_tidy() {
  xargs -0 -n 1 -P "$(nproc)" clang-tidy-14 --quiet -p "$1" "--checks=$2" 2> >(without_counts)
}

# units_of BUILD: what the compile database there has compiled, each with a zero behind it.
units_of() {
  sed -n 's/^ *"file": "\(.*\)"$/\1/p' "$1/compile_commands.json" | tr '\n' '\0'
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
