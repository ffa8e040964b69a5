# The main job, on the project's own drawing or on anybody's. Sourced by ./ktdx.

# from_caller PATH: the path as the caller of ./ktdx means it.
from_caller() {
  case "$1" in
  /*) printf '%s' "$1" ;;
  *) printf '%s/%s' "$caller" "$1" ;;
  esac
}

# play_demo BIN OUT [DRAWING [SCRIPT]]: the demo with the programs in a folder, in a folder of its own. Both are absolute
# paths. The scripts compare the client's table with a fresh extraction after every edit, and a difference ends them.
play_demo() {
  local bin=$1 out=$2 drawing=sensor-node.kicad_sch script=demo.script
  if [ $# -ge 3 ]; then
    drawing=$(from_caller "$3")
    script=any-drawing.script
  fi
  if [ $# -ge 4 ]; then
    script=$(from_caller "$4")
  fi
  mkdir -p "$out"
  cp samples/*.* "$out"
  (cd "$out" && "$bin/kthost" --load "$bin/KtDxNotify.kmx" --load "$bin/PartsList.kmx" --script "$script" "$drawing") || return
  echo "demo: done; what it wrote is in ${out#"$PWD"/}/"
}

run_demo() {
  require "$needs_to_build"
  build release kthost KtDxNotify KtDxNotifyRes PartsList ktemplate
  play_demo "$PWD/build/release/bin" "$PWD/build/demo" "$@"
}
