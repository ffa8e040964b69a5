# Makes of classes.txt a source whose compilation has the compiler dump every class named there: a class derived from
# each makes it complete, and an operation of its own has its tables emitted, wherever the class itself keeps them.
$1 == "class" {
    header = $NF
    type = $0
    sub(/^class +/, "", type)
    sub(/ +[^ ]+$/, "", type)
    ++count
    printf "#include \"%s\"\n", header
    printf "struct Probe%d : %s { virtual void probed(); };\n", count, type
    printf "void Probe%d::probed() {}\n", count
}
