# The classes' layout as the compiler sees it, against the order that tests/layout/classes.txt lays down. Sourced by
# ./ktdx.

# A class with virtual operations that classes.txt does not name would go unchecked. Exceptions have no tables but the
# library's.
check_every_class_is_laid_down() {
  local missing
  missing=$(git ls-files 'src/*.h' ':!src/host' | xargs awk '
    /^(class|struct) [A-Za-z_]+.*[{]/ { name = $2; sub(/[^A-Za-z_].*$/, "", name); exempt = / : public std::/ }
    /(^| )virtual |[ )]override[ ;{]/ { if (name != "" && !exempt) print name }
    /^};/ { name = "" }' | sort -u |
    while read -r name; do
      grep -qE "^class $name[ <]" tests/layout/classes.txt || printf '  %s\n' "$name"
    done)
  if [ -n "$missing" ]; then
    printf 'these have virtual operations and are not in tests/layout/classes.txt:\n%s\n' "$missing" >&2
    return 1
  fi
}

check_layout() {
  local out=build/layout
  check_every_class_is_laid_down
  mkdir -p "$out"
  awk -f tests/layout/probe.awk tests/layout/classes.txt >"$out/Probes.cpp"
  clang++ -std=c++20 -w -Isrc -Isrc/host -Iinclude -Xclang -fdump-vtable-layouts -Xclang -fdump-record-layouts \
    -S -emit-llvm -o /dev/null "$out/Probes.cpp" >"$out/dump.txt"
  awk -f tests/layout/stated.awk tests/layout/classes.txt | sort -u >"$out/stated.txt"
  awk -f tests/layout/dumped.awk tests/layout/classes.txt "$out/dump.txt" | sort -u >"$out/dumped.txt"
  if ! cmp -s "$out/stated.txt" "$out/dumped.txt"; then
    echo "classes are not laid out as tests/layout/classes.txt has it (<: there, >: in the compiler's dump):" >&2
    diff "$out/stated.txt" "$out/dumped.txt" | grep '^[<>]' >&2
    return 1
  fi
}
