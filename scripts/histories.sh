# Random histories in any number. Sourced by ./ktdx.

# run_histories [STEPS]: that many steps in all, new ones every time, shared among the cores. What each core said stays
# in build/histories/, and so does the script of a history that ended in a crash; it is cut down behind the others' runs.
run_histories() {
  local steps=${1:-1000000} cores out=$PWD/build/histories core pids= failed=
  require_number "$steps" steps
  require "$needs_to_build$needs_to_test"
  build release history_tests
  cores=$(nproc)
  rm -rf "$out"
  mkdir -p "$out"
  for core in $(seq "$cores"); do
    TEST_TMPDIR=$out KTDX_STEPS=$((steps / cores)) build/release/bin/history_tests --gtest_brief=1 \
      --gtest_filter='Share/Histories.*/0' >"$out/$core.log" 2>&1 &
    pids="$pids $!"
  done
  for core in $pids; do
    wait "$core" || failed=yes
  done
  report_histories "$out"
  [ -z "$failed" ]
}

report_histories() {
  local out=$1 script
  grep -hE '^from seed' "$out"/*.log || true
  sed -n '/^seed [0-9]*, line/,/^\[  FAILED/p' "$out"/*.log
  for script in "$out"/*.script; do
    if [ -e "$script" ]; then
      cut_down "$script"
    fi
  done
  awk '/ steps in [0-9]+ histories/ { steps += $1; histories += $4; failures += $6 }
    END { printf "ktdx: %d steps in %d histories, %d failures\n", steps, histories, failures }' "$out"/*.log
}

# cut_down SCRIPT: plays it in processes of its own, with fewer and fewer lines, as long as they crash.
cut_down() {
  echo "a crash; its whole script is $1"
  KTDX_SCRIPT=$1 build/release/bin/history_tests --gtest_brief=1 --gtest_filter='HistoryScript.*' 2>&1 || true
}
