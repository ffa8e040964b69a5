# Fuzzing with coverage and sanitizers. Sourced by ./ktdx.

# Each target, with the longest input that it is given: lines of a script cost more than bytes of a file.
fuzz_targets='template 65536
schematic 16384
console 4096
history 2048'

# run_fuzz [SECONDS]: each target that long, as many at a time as there are cores, from the project's seeds and from what
# earlier runs have kept. What it finds stays in build/fuzz/findings/, what each target said in build/fuzz/TARGET.log.
run_fuzz() {
  local seconds=${1:-60} failed=
  require_number "$seconds" seconds
  require "$needs_to_build$needs_to_test$needs_to_check"
  build fuzz template_fuzz schematic_fuzz console_fuzz history_fuzz
  mkdir -p build/fuzz/findings
  export -f run_fuzz_target
  printf '%s\n' "$fuzz_targets" | xargs -P "$(nproc)" -L 1 bash -c 'run_fuzz_target "$@"' fuzz "$seconds" || failed=yes
  report_fuzz
  [ -z "$failed" ]
}

# run_fuzz_target SECONDS TARGET LENGTH. An input that takes more memory or time than its size explains is a finding of
# the target's own; the limits here are for what it has no time left to say. Targets work in folders of their own, so
# paths are absolute.
run_fuzz_target() {
  local seconds=$1 target=$2 length=$3 kept=$PWD/build/fuzz/corpus/$2
  mkdir -p "$kept"
  ASAN_OPTIONS=${ASAN_OPTIONS:-quarantine_size_mb=32} "build/fuzz/bin/${target}_fuzz" -max_total_time="$seconds" \
    -max_len="$length" -timeout=60 -report_slow_units=60 -malloc_limit_mb=512 -rss_limit_mb=2048 -print_final_stats=1 -verbosity=1 \
    -artifact_prefix="$PWD/build/fuzz/findings/$target-" "$kept" "$PWD/fuzz/corpus/$target" \
    >"build/fuzz/$target.log" 2>&1
}

report_fuzz() {
  local target length log
  while read -r target length; do
    log=build/fuzz/$target.log
    if grep -q 'Test unit written to' "$log"; then
      tail -n 60 "$log"
    fi
    awk -v target="$target" '/^#[0-9]+.* cov: / { for (i = 1; i < NF; ++i) if ($i == "cov:") reached = $(i + 1) }
      /^stat::number_of_executed_units:/ { runs = $2 }
      /^stat::peak_rss_mb:/ { memory = $2 }
      /Test unit written to/ { found = $NF }
      END { printf "%s: %d runs, %d edges reached, %d MB at most%s\n", target, runs, reached, memory,
        found == "" ? "" : ", FOUND " found }' "$log"
  done <<<"$fuzz_targets"
}
