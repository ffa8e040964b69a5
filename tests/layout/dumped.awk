# Puts clang's dump of what probe.awk makes in the form in which stated.awk puts classes.txt. Read classes.txt first,
# for the names of the classes, then the dump.
function withoutTemplateArguments(text) {
    while (gsub(/<[^<>]*>/, "", text)) {
    }
    return text
}
function probeIn(text,   number) {
    number = text
    sub(/^[^0-9]*/, "", number)
    sub(/[^0-9].*$/, "", number)
    return number + 0
}
# Fields keep no type, slots no result: it is the order that counts.
function member(text,   kind) {
    if (text ~ /^\(/) {
        return # the pointer to the table
    }
    kind = text ~ / \((primary )?base\)/ ? "base" : "field"
    if (kind == "base") {
        sub(/ \((primary )?base\).*$/, "", text)
        text = withoutTemplateArguments(text)
    } else {
        sub(/ \(empty\)$/, "", text)
    }
    sub(/^.*[ *&]/, "", text)
    print types[probe] " " kind " " ++counts[kind] ": " text
}
function slot(text,   name, arguments) {
    sub(/ \[T = .*$/, "", text)
    sub(/ \[(pure|complete)\]$/, "", text)
    if (text ~ /\[deleting\]$/ || text ~ /::probed\(\)$/ || text ~ / RTTI$/) {
        return
    }
    if (text ~ /^offset_to_top/) {
        ++table
        slots = 0
        return
    }
    text = withoutTemplateArguments(text)
    name = text
    sub(/\(.*$/, "", name)
    sub(/^.*[ *&]/, "", name)
    arguments = text
    sub(/^[^(]*/, "", arguments)
    sub(/ const$/, "", arguments)
    print types[probe] " table " table " slot " ++slots ": " (name ~ /::~/ ? "destructor" : name arguments)
}
FNR == NR {
    if ($1 == "class") {
        sub(/^class +/, "")
        sub(/ +[^ ]+$/, "")
        gsub(/ /, "")
        types[++known] = $0
    }
    next
}
/ 0 \| struct Probe[0-9]+$/ { where = "record"; probe = probeIn($NF); counts["base"] = counts["field"] = 0; next }
/^Vtable for 'Probe[0-9]+'/ { where = "table"; probe = probeIn($3); table = 0; next }
/^ *\| \[sizeof/ || /^$/ { where = "" }
# What lies straight in the class, which lies in the probe, is indented twice.
where == "record" && /^ +[0-9]+ \|     [^ ]/ { sub(/^ +[0-9]+ \| +/, ""); member($0) }
where == "table" && /^ +[0-9]+ \| / { sub(/^ +[0-9]+ \| /, ""); slot($0) }
