# How fast the module is. Sourced by ./ktdx.

# run_bench [--quick | --document]: measures everything and prints the figures; build/bench/figures.json and the curves
# in build/bench/curves/ show them. The long form takes about a quarter of an hour. --document measures nothing: it puts the
# figures of the last run into docs/performance.md and its pictures.
run_bench() {
  local folder=build/bench
  case "${1:-}" in
  '' | --quick) ;;
  --document)
    python3 scripts/performance.py "$folder/figures.json" docs/performance.md
    return
    ;;
  *)
    echo "ktdx: bench takes --quick, --document or nothing" >&2
    return 2
    ;;
  esac
  require "$needs_to_build$needs_to_bench"
  build release ktdx_bench
  mkdir -p "$folder"
  build/release/bin/ktdx_bench "$@" --drawings "${KTDX_DRAWINGS:-samples}" --json "$folder/figures.json" 2>"$folder/bench.log" || {
    tail -n 20 "$folder/bench.log" >&2
    return 1
  }
  python3 scripts/curves.py "$folder/figures.json" "$folder/curves"
  echo "ktdx: the figures are in $folder/figures.json, the curves in $folder/curves/"
}
