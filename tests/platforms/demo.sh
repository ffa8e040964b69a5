# The demo of the package against the demo here, line by line. Sourced by run.sh.

# The last line is the script's own: it names a folder, the one with / and the other with \, and cmd ends it with two
# characters.
without_folder() {
  sed '$s/^\(demo: done; what it wrote is in \).*$/\1FOLDER/' "$1"
}

demo_is_the_same() {
  local here=$folder/demo
  play_demo "$bin" "$here" >"$here.linux" || fail "the demo fails here"
  (cd "$package" && under_wine cmd /c demo.cmd >"$here.windows") || fail "the demo fails under Wine"
  without_folder "$here.linux" >"$here.linux.txt"
  without_folder "$here.windows" >"$here.windows.txt"
  same "the demo's output" "$here.linux.txt" "$here.windows.txt"
  for file in parts.csv template.csv; do
    same "$file of the demo" "$here/$file" "$package/demo/$file"
  done
  echo "platforms: the demo prints the same $(wc -l <"$here.linux") lines"
}
