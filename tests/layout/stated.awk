# Puts classes.txt in the form in which dumped.awk puts the dump: one line a base, field or slot, with its number.
function list(kind, words, separator,   parts, n, i) {
    n = split(words, parts, separator)
    for (i = 1; i <= n; ++i) {
        print type " " kind " " ++counts[kind] ": " parts[i]
    }
}
/^[[:space:]]*(#|$)/ { next }
{ sub(/^[[:space:]]+/, "") }
$1 == "class" {
    type = $0
    sub(/^class +/, "", type)
    sub(/ +[^ ]+$/, "", type)
    gsub(/ /, "", type)
    counts["base"] = counts["field"] = table = 0
    next
}
$1 == "bases" { sub(/^bases +/, ""); list("base", $0, ", "); next }
$1 == "fields" { sub(/^fields +/, ""); list("field", $0, " "); next }
$1 == "table" { ++table; slot = 0; next }
{ print type " table " table " slot " ++slot ": " $0 }
