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

check_tidy() {
  cmake --preset tidy >/dev/null
  cp tests/.clang-tidy build/tidy/tests/ # a bundle goes by the settings beside it
  python3 scripts/tidy.py build/tidy
}
