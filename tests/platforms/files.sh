# One drawing and one script on both systems, with text outside the basic plane and under paths outside ASCII: what is
# printed and written is the same to the byte. Sourced by run.sh.

lay_out_files() {
  mkdir -p "$1"
  cp tests/platforms/plan.kicad_sch "$1/Plan 𝄞.kicad_sch"
  cp tests/platforms/channel.kicad_sch "$1/Kanal 🔌.kicad_sch"
  cp tests/platforms/plan.script "$1/Ablauf 𝄞.script"
  cp tests/platforms/watch.script "$1/Wache 🔌.script"
  cp tests/platforms/template.json "$1/Vorlage 🔌.json"
}

# write_files BIN SUFFIX RUNNER...: in the working folder, with the programs BIN/NAME.SUFFIX, each begun by RUNNER.
write_files() {
  local bin=$1 suffix=$2
  shift 2
  "$@" "$bin/ktemplate$suffix" make 'Vorlage 🔌.json' 'Vorlage 🔌.blk' >make.txt || return
  "$@" "$bin/ktemplate$suffix" show 'Vorlage 🔌.blk' >show.txt || return
  "$@" "$bin/ktemplate$suffix" show --json 'Vorlage 🔌.blk' >show.json || return
  "$@" "$bin/ktemplate$suffix" lists 'Vorlage 🔌.blk' >lists.json || return
  "$@" "$bin/kthost$suffix" --load "$bin/KtDxNotify.kmx" --load "$bin/PartsList.kmx" \
    --script 'Ablauf 𝄞.script' 'Plan 𝄞.kicad_sch' >plan.txt || return
  "$@" "$bin/kthost$suffix" --load "$bin/KtDxNotify.kmx" --load "$bin/BlockWatch.kmx" \
    --script 'Wache 🔌.script' --trace 'Spur 𝄞.jsonl' 'Plan 𝄞.kicad_sch' >watch.txt || return
}

compare_traces() {
  local side
  for side in "$@"; do
    awk -f tests/platforms/trace.awk "$side/Spur 𝄞.jsonl" >"$side.trace"
    rm "$side/Spur 𝄞.jsonl"
  done
  same "the trace" "$1.trace" "$2.trace"
}

files_are_the_same() {
  local here=$folder/linux there=$folder/windows name
  lay_out_files "$here"
  lay_out_files "$there"
  (cd "$here" && write_files "$bin" '') || fail "the drawing's script fails here"
  (cd "$there" && write_files "$package/bin" .exe under_wine) || fail "the drawing's script fails under Wine"
  grep -q 𝄞 "$here/Auszug 𝄞.csv" || fail "the template selects nothing"
  grep -q 'watch: a reference has changed' "$here/watch.txt" || fail "the client is not called"
  compare_traces "$here" "$there"
  [ "$(ls "$here")" = "$(ls "$there")" ] || fail "the two wrote files of other names: $(ls "$there")"
  for name in "$here"/*; do
    [ "${name##*/}" = make.txt ] || same "${name##*/}" "$name" "$there/${name##*/}"
  done
  echo "platforms: $(ls "$here" | wc -l) files and $(wc -l <"$here.trace") lines of trace are the same"
}
