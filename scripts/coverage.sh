# Which lines and branches of src/ the tests reach. Sourced by ./ktdx.

needs_to_cover='
Python 3.9 or later|python3|python_is_at_least 3 9
gcov, of the compiler that builds|g++|has gcov'

python_is_at_least() {
  python3 -c "import sys; sys.exit(sys.version_info < ($1, $2))" >/dev/null 2>&1
}

# The suites that the module's objects are linked into reach everything. Each runs in one process: counts of a process
# apiece would have to be added up a thousand times.
run_coverage() {
  local suite out=build/coverage failed=
  require "$needs_to_build$needs_to_test$needs_to_cover"
  build coverage module_tests legacy_tests
  find "$out" -name '*.gcda' -delete
  mkdir -p "$out/tmp"
  for suite in module_tests legacy_tests; do
    TEST_TMPDIR=$PWD/$out/tmp "$out/bin/$suite" --gtest_brief=1 >"$out/$suite.log" 2>&1 || failed="$failed $suite"
  done
  if [ -n "$failed" ]; then
    echo "ktdx: tests fail:$failed (their output: $out/*_tests.log)" >&2
    return 1
  fi
  scripts/coverage.py "$out" tests/coverage-exceptions.txt
}
