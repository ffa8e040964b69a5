# Running the tests. Sourced by ./ktdx.

run_tests() {
  local preset=${1:-release} results
  results=build/$preset/tests/test_results
  require "$needs_to_build$needs_to_test"
  rm -rf "$results"
  build "$preset"
  ctest --preset "$preset" -j "$(nproc)"
  if [ -d "$results" ]; then
    sum_up_tests "$results"
  fi
}

# sum_up_tests RESULTS: what the reports of whole suites say: how many tests ran, and which were skipped for what reason.
# ctest itself counts the suites.
sum_up_tests() {
  local results=$1 ran skipped
  ran=$(cat "$results"/*.xml | grep -c '<testcase ' || true)
  grep -h -A1 'result="skipped"' "$results"/*.xml |
    sed -n 's/.*<testcase name="\([^"]*\)".*classname="\([^"]*\)".*/  \2.\1/p; s/.*<skipped message="[^&]*&#x0A;\([^"]*\)".*/      \1/p' || true
  skipped=$(cat "$results"/*.xml | grep -c 'result="skipped"' || true)
  echo "ktdx: $ran tests, $skipped of them skipped"
  if [ "$ran" -eq 0 ] || [ $((skipped * 50)) -gt "$ran" ]; then
    echo "ktdx: no tests, or more than 2 in 100 skipped" >&2
    return 1
  fi
}
