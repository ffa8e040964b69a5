# The package holds what it says, and nothing in it needs a library that Windows does not bring. Sourced by run.sh.

needed_by() {
  x86_64-w64-mingw32-objdump -p "$1" | sed -n 's/^[[:space:]]*DLL Name: //p'
}

no_foreign_library_is_needed() {
  local file library needed
  for file in "$package"/bin/*; do
    needed=$(needed_by "$file")
    for library in $needed; do
      case "$library" in
      KERNEL32.dll | USER32.dll | ADVAPI32.dll | SHELL32.dll | msvcrt.dll) ;;
      *) [ -f "$package/bin/$library" ] || fail "$(basename "$file") needs $library" ;;
      esac
    done
  done
}

package_is_whole() {
  local file
  for file in README.md demo.cmd bin/{KtDxNotify.kmx,KtDxNotifyRes.dll,PartsList.kmx,kthost.exe,kthostcore.dll,ktemplate.exe} \
    include/ktdx/KtDxNotify.h lib/lib{KtDxNotify,kthostcore}.dll.a samples/{demo.script,sensor-node.kicad_sch,client/BlockWatch.cpp}; do
    [ -s "$package/$file" ] || fail "the package has no $file"
  done
  ! find "$package" -iname '*test*' | grep . || fail "the package has tests in it"
  no_foreign_library_is_needed
  echo "platforms: the package is whole"
}
