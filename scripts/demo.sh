# The main job, on the project's own drawing or on anybody's. Sourced by ./ktdx.

# from_caller PATH: the path as the caller of ./ktdx means it.
from_caller() {
  case "$1" in
  /*) printf '%s' "$1" ;;
  *) printf '%s/%s' "$caller" "$1" ;;
  esac
}

# run_demo [DRAWING [SCRIPT]]. The scripts compare the client's table with a fresh extraction after every edit, and a
# difference ends them.
run_demo() {
  local bin=$PWD/build/release/bin out=$PWD/build/demo drawing script
  require "$needs_to_build"
  build release kthost KtDxNotify KtDxNotifyRes PartsList ktemplate
  mkdir -p "$out"
  cp samples/* "$out"
  drawing=$out/sensor-node.kicad_sch
  script=$out/demo.script
  if [ $# -ge 1 ]; then
    drawing=$(from_caller "$1")
    script=$out/any-drawing.script
  fi
  if [ $# -ge 2 ]; then
    script=$(from_caller "$2")
  fi
  (cd "$out" && "$bin/kthost" --load "$bin/KtDxNotify.kmx" --load "$bin/PartsList.kmx" --script "$script" "$drawing")
  echo "demo: done; what it wrote is in ${out#"$PWD"/}/"
}
