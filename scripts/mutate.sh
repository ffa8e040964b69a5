# Whether the tests notice small changes of src/. Sourced by ./ktdx.

# run_mutation [--files PATTERN] [--limit N] [--seed S] [--jobs N] [--list]: all changes that there are, or N of them.
run_mutation() {
  require "$needs_to_build$needs_to_test$needs_to_cover"
  build mutate
  nice scripts/mutate.py build/mutate build/mutate/work tests/equivalent-changes.txt "$@"
}
