# Whether the tests notice small changes of src/. Sourced by ./ktdx.

# run_mutation [--files PATTERN] [--limit N] [--seed S] [--jobs N] [--rest | --survivors] [--list]: all changes, or N.
run_mutation() {
  require "$needs_to_build$needs_to_test$needs_to_cover"
  nice scripts/mutate.py build/mutate tests/equivalent-changes.txt "$@"
}
