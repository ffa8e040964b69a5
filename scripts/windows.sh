# The build for Windows: its tests under Wine, and its package. Sourced by ./ktdx.

needs_for_windows='
MinGW-w64 for C++, with POSIX threads|g++-mingw-w64-x86-64-posix|has x86_64-w64-mingw32-g++-posix
MinGW-w64 for C, with POSIX threads|gcc-mingw-w64-x86-64-posix|has x86_64-w64-mingw32-gcc-posix
Wine|wine|has wine
64-bit Wine|wine64|has_wine64
sources of GoogleTest|googletest|test -e /usr/src/googletest/CMakeLists.txt
unzip|unzip|has unzip'

windows_build=build/windows
windows_results=$windows_build/tests/test_results

has_wine64() {
  [ -x /usr/lib/wine/wine64 ] || has wine64
}

# with_wine COMMAND...: one Wine server for all that the command runs, ended behind it.
with_wine() {
  local status=0
  export WINEPREFIX=$PWD/$windows_build/wine
  scripts/under-wine.sh cmd /c ver >/dev/null
  # The server of that first program lingers, and while it does no other can be started.
  wineserver --wait
  WINEDEBUG=-all wineserver --persistent
  # The system's services start with the first program and keep its output open: let that not be a test's.
  scripts/under-wine.sh cmd /c ver </dev/null >/dev/null 2>&1
  "$@" || status=$?
  wineserver --kill || true
  return "$status"
}

# The tests, and then the package: what its programs do under Wine, held against those of this system.
test_under_wine() {
  ctest --preset windows || return
  tests/platforms/run.sh "$PWD/build/release/bin" "$PWD/$(windows_package)" "$PWD/$windows_build/platforms"
}

test_windows() {
  require "$needs_to_build$needs_to_test$needs_for_windows"
  rm -rf "$windows_results"
  build windows
  make_windows_package
  build release kthost KtDxNotify KtDxNotifyRes PartsList BlockWatch ktemplate
  with_wine test_under_wine
  sum_up_tests "$windows_results"
}
