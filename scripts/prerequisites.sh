# What the project needs to be built and tested, and how to get it. Sourced by ./ktdx.
#
# A need is one line: how people call it | package | shell test that it is there. It is asked for only when the test
# fails, so nothing is installed that is there already, whoever installed it.

needs_to_build='
C++20 compiler (g++ 11 or clang 14 and later)|g++|can_compile concepts
CMake 3.22 or later|cmake|cmake_is_at_least 3 22
Ninja|ninja-build|has ninja
CLI11 2.1 or later|libcli11-dev|can_compile CLI/CLI.hpp
fmt 8 or later|libfmt-dev|can_compile fmt/format.h
nlohmann-json 3.10 or later|nlohmann-json3-dev|can_compile nlohmann/json.hpp'

needs_to_test='
GoogleTest 1.11 or later|libgtest-dev|can_compile gtest/gtest.h
GoogleMock 1.11 or later|libgmock-dev|can_compile gmock/gmock.h'

needs_to_check='
clang 14 or later|clang|has clang++
clang-tidy 14|clang-tidy-14|has clang-tidy-14
clang-format 14|clang-format-14|has clang-format-14
libFuzzer (clang run-time library)|libclang-rt-14-dev|has_fuzzer'

needs_to_bench='
Google Benchmark 1.7 or later|libbenchmark-dev|can_compile benchmark/benchmark.h
Python 3.9 or later|python3|has python3'

has() {
  command -v "$1" >/dev/null 2>&1
}

can_compile() {
  printf '#include <%s>\n' "$1" | "${CXX:-c++}" -std=c++20 -fsyntax-only -x c++ - >/dev/null 2>&1
}

cmake_is_at_least() {
  local version
  version=$(cmake --version 2>/dev/null | sed -n 's/^cmake version \([0-9]*\)\.\([0-9]*\).*/\1 \2/p')
  [ -n "$version" ] || return 1
  # shellcheck disable=SC2086 # two words on purpose
  set -- "$1" "$2" $version
  [ "$3" -gt "$1" ] || { [ "$3" -eq "$1" ] && [ "$4" -ge "$2" ]; }
}

has_fuzzer() {
  printf 'extern "C" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }\n' |
    clang++ -fsanitize=fuzzer -x c++ - -o /dev/null >/dev/null 2>&1
}

# missing_of NEEDS: the lines of those that are not there.
missing_of() {
  local name package check
  printf '%s\n' "$1" | while IFS='|' read -r name package check; do
    [ -n "$name" ] || continue
    # shellcheck disable=SC2086 # the test is a command with its words
    $check </dev/null || printf '%s|%s\n' "$name" "$package"
  done
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif has sudo; then
    sudo "$@"
  else
    echo "ktdx: installing needs root, and there is no sudo here" >&2
    return 1
  fi
}

# require NEEDS: installs what is missing, saying what, or names it where that cannot be done.
require() {
  local missing packages
  missing=$(missing_of "$1")
  [ -n "$missing" ] || return 0
  packages=$(printf '%s\n' "$missing" | cut -d'|' -f2 | sort -u | tr '\n' ' ')
  if ! has apt-get; then
    echo "ktdx: needed and not found here:" >&2
    printf '%s\n' "$missing" | cut -d'|' -f1 | sed 's/^/  /' >&2
    echo "ktdx: install them with this system's package manager and try again" >&2
    return 1
  fi
  echo "ktdx: installing: $packages"
  as_root apt-get update -qq
  # shellcheck disable=SC2086 # one word a package
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $packages >/dev/null
  missing=$(missing_of "$1")
  if [ -n "$missing" ]; then
    echo "ktdx: installed, and still not found:" >&2
    printf '%s\n' "$missing" | cut -d'|' -f1 | sed 's/^/  /' >&2
    return 1
  fi
}
