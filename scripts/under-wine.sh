#!/usr/bin/env bash
# under-wine.sh PROGRAM [ARGUMENT...]: runs a Windows program under Wine, without a display, in a prefix that lies in
# the build folder that the program was built in (or in WINEPREFIX, where that is set).
set -euo pipefail

prefix_of() {
  local folder
  folder=$(cd "$(dirname "$1")" && pwd)
  while [ "$folder" != / ] && [ ! -f "$folder/CMakeCache.txt" ]; do
    folder=$(dirname "$folder")
  done
  [ "$folder" != / ] || folder=${TMPDIR:-/tmp}
  echo "$folder/wine"
}

export WINEPREFIX=${WINEPREFIX:-$(prefix_of "$1")}
export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
# Neither the .NET nor the HTML engine is wanted, and asking for them would open a window.
export WINEDLLOVERRIDES='mscoree=;mshtml=;winemenubuilder.exe='
unset DISPLAY WAYLAND_DISPLAY
# In a locale without UTF-8 Wine takes names outside ASCII for something else. One and the same for everybody.
export LC_ALL=C.UTF-8

if [ ! -f "$WINEPREFIX/ready" ]; then
  # Several programs may start at once, and only one may make the prefix.
  mkdir -p "$WINEPREFIX"
  exec 9>"$WINEPREFIX/making"
  flock 9
  if [ ! -f "$WINEPREFIX/ready" ]; then
    wineboot --init >"$WINEPREFIX/wineboot.log" 2>&1 9>&-
    wineserver --wait 9>&-
    touch "$WINEPREFIX/ready"
  fi
  exec 9>&-
fi
exec wine "$@"
