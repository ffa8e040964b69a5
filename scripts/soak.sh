# A long life in one process. Sourced by ./ktdx.

# run_soak [COMMANDS]: that many commands on the largest drawing below KTDX_DRAWINGS, or on the project's own.
run_soak() {
  local commands=${1:-1000000} bin=$PWD/build/release/bin drawings=()
  require_number "$commands" commands
  require "$needs_to_build$needs_to_test"
  build release soak
  mapfile -d '' drawings < <(find "${KTDX_DRAWINGS:-samples}" -name '*.kicad_sch' -print0)
  "$bin/soak" "$commands" "$bin" tests/histories/drawings "${drawings[@]}"
}
