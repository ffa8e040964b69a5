# How fast the module is. Sourced by ./ktdx.

# run_bench [--quick]: measures everything and prints the figures; build/bench/figures.json and the curves in
# build/bench/curves/ show them. The long form takes about half an hour.
run_bench() {
  local folder=build/bench
  case "${1:-}" in
  '' | --quick) ;;
  *)
    echo "ktdx: bench takes --quick or nothing" >&2
    return 2
    ;;
  esac
  require "$needs_to_build$needs_to_bench"
  build bench ktdx_bench
  "$folder/bin/ktdx_bench" "$@" --drawings "${KTDX_DRAWINGS:-samples}" --json "$folder/figures.json" 2>"$folder/bench.log" || {
    tail -n 20 "$folder/bench.log" >&2
    return 1
  }
  python3 scripts/curves.py "$folder/figures.json" "$folder/curves"
}
