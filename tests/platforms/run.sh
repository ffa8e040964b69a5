#!/usr/bin/env bash
# run.sh BIN ARCHIVE FOLDER: unpacks the package for Windows in the folder, and holds what its programs do under Wine
# against what those in BIN do on this system. Nothing else is built. All paths are absolute.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
root=$PWD
caller=$PWD
bin=$1
archive=$2
folder=$3/'Prüf 図面 🔌'
package=$folder/$(basename "$archive" .zip)
. scripts/demo.sh
. tests/platforms/compare.sh
. tests/platforms/package.sh
. tests/platforms/demo.sh
. tests/platforms/files.sh
. tests/platforms/client.sh
# The Linux programs take the order of texts from it; Wine is given the same.
export LC_ALL=C.UTF-8

under_wine() {
  "$root/scripts/under-wine.sh" "$@"
}

rm -rf "$3"
mkdir -p "$folder"
unzip -q "$archive" -d "$folder"
package_is_whole
demos_are_the_same
client_is_called
files_are_the_same
