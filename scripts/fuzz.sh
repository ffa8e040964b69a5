# Fuzzing with coverage and sanitizers. Sourced by ./ktdx.

# run_fuzz [SECONDS]: each target that long, from the project's seeds. What it finds stays in build/fuzz/findings/.
run_fuzz() {
  local seconds=${1:-60} findings=build/fuzz/findings
  require "$needs_to_build$needs_to_check"
  build fuzz template_fuzz
  mkdir -p build/fuzz/corpus/template "$findings"
  build/fuzz/bin/template_fuzz -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
    -artifact_prefix="$findings/" build/fuzz/corpus/template fuzz/corpus/template 2>&1 | tail -n 25
}
