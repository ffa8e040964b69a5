# A trace without what is a matter of the compiler and of the allocator: where in a module a function lies, and where
# on the heap an object does. Functions get numbers instead, in the order of their appearance; an object gets none, for
# another may lie later where it lay.
function numbered(place, module) {
  if (!(place in numbers)) {
    module = place
    sub(/\+.*/, "", module)
    numbers[place] = module "#" ++seen[module]
  }
  return numbers[place]
}

match($0, /"(reactor|filter|function)": "[^"+]*\+0x[0-9a-f]+"/) {
  field = substr($0, RSTART, RLENGTH)
  place = field
  sub(/^[^:]*: "/, "", place)
  sub(/"$/, "", place)
  sub(/: ".*/, ": \"", field)
  $0 = substr($0, 1, RSTART - 1) field numbered(place) "\"" substr($0, RSTART + RLENGTH)
}

{
  sub(/"reactor": "0x[0-9a-f]+"/, "\"reactor\": \"OBJECT\"")
  if ($0 ~ /"message": "WM_KTDX_IDLE_CHECK"/) {
    sub(/"wParam": [0-9]+/, "\"wParam\": DOCUMENT")
  }
  print
}
