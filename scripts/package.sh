# The archive that somebody can unpack on a Windows machine. Sourced by ./ktdx.

# windows_package: where the archive lies, from the version that the build was configured with.
windows_package() {
  sed -n "s|^set(CPACK_PACKAGE_FILE_NAME \"\(.*\)\")$|$windows_build/\1.zip|p" "$windows_build/CPackConfig.cmake"
}

make_windows_package() {
  build windows package_contents
  (cd "$windows_build" && cpack -G ZIP >cpack.log) || {
    cat "$windows_build/cpack.log" >&2
    return 1
  }
  echo "ktdx: the package is $(windows_package)"
}

make_package() {
  case "${1:-}" in
  windows)
    require "$needs_to_build$needs_for_windows"
    make_windows_package
    ;;
  *)
    echo "ktdx: there are packages for: windows" >&2
    return 2
    ;;
  esac
}
