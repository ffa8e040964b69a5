# The demo of the package against the demo here, line by line. Sourced by run.sh.

# The last line is the script's own: it names a folder, the one with / and the other with \, and cmd ends it with two
# characters.
without_folder() {
  sed '$s/^\(demo: done; what it wrote is in \).*$/\1FOLDER/' "$1"
}

# play_both [DRAWING]: by its absolute path here. Leaves the two outputs in demo.linux.txt and demo.windows.txt.
play_both() {
  local here=$folder/demo
  play_demo "$bin" "$here" "$@" >"$here.linux" || fail "the demo fails here: $*"
  (cd "$package" && under_wine cmd /c demo.cmd "${@/#/Z:}" >"$here.windows") || fail "the demo fails under Wine: $*"
  without_folder "$here.linux" >"$here.linux.txt"
  without_folder "$here.windows" >"$here.windows.txt"
}

# demo_is_the_same FILES [DRAWING]: what it prints, and the files that it writes.
demo_is_the_same() {
  local file files=$1
  shift
  play_both "$@"
  same "the demo's output" "$folder/demo.linux.txt" "$folder/demo.windows.txt"
  for file in $files; do
    same "$file of the demo" "$folder/demo/$file" "$package/demo/$file"
  done
  echo "platforms: the demo prints the same $(wc -l <"$folder/demo.linux") lines${1:+ for ${1##*/}}"
}

demos_are_the_same() {
  local drawing tables='parts.csv occurrences.csv references.csv'
  demo_is_the_same 'parts.csv template.csv'
  lay_out_files "$folder/own"
  demo_is_the_same "$tables" "$folder/own/Plan 𝄞.kicad_sch"
  if [ -z "${KTDX_DRAWINGS:-}" ]; then
    echo "platforms: skipped: the demo on real drawings (KTDX_DRAWINGS does not say where they are)"
    return
  fi
  while read -r drawing; do
    demo_is_the_same "$tables" "$drawing" </dev/null
  done < <(find "$KTDX_DRAWINGS" -name '*.kicad_sch' | sort)
}
