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

# check_tidy PRESET: clang-tidy over every file that the preset builds.
check_tidy() {
  local database=build/$1
  our_sources | grep '\.cpp$' | while read -r file; do
    if grep -qF "\"file\": \"$PWD/$file\"" "$database/compile_commands.json"; then
      printf '%s\0' "$file"
    fi
  done | xargs -0 -n 4 -P "$(nproc)" clang-tidy-14 --quiet -p "$database" 2> >(grep -v 'warnings generated\|warning generated' >&2)
}
