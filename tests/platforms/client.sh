# The sample client, here as it was built with everything else, there built with nothing but what the package holds: it
# is called as it should be. Sourced by run.sh.

build_client() {
  (cd "$package/samples/client" &&
    x86_64-w64-mingw32-g++-posix -std=c++20 -O2 -Wall -Wextra -Werror -shared -static -o ../../bin/BlockWatch.kmx \
      BlockWatch.cpp BlockWatch.def -I../../include -I../../include/host \
      ../../lib/libKtDxNotify.dll.a ../../lib/libkthostcore.dll.a)
}

# The names that the client takes from the module.
imported_names() {
  x86_64-w64-mingw32-objdump -p "$1" |
    awk '/DLL Name: / { module = $3 } module == "KtDxNotify.kmx" && NF == 3 && $3 ~ /^[A-Za-z_?]/ && $2 ~ /^[0-9]+$/ { print $3 }'
}

client_script='new plan
define R
insert R 1,1 Reference=R1 Value=1k
watch R
set R1 Value 2k
define C
insert C 2,2 Reference=C1
move R1 3,3
close
unload BlockWatch.kmx'

client_output='loaded KtDxNotify.kmx
loaded BlockWatch.kmx
opened plan, empty
defined R
inserted 0x5 R1, R
set 0x5 R1 Value = 2k (was 1k)
watch: a reference has changed
defined C
inserted 0x9 C1, C
moved 0x5 R1
watch: a reference has changed
closed plan
unloaded BlockWatch.kmx, nothing left behind
audit: clean'

# run_client WHERE HOST RUNNER...: in the folder of the modules.
run_client() {
  local where=$1 host=$2 said
  shift 2
  said=$("$@" "$host" --load KtDxNotify.kmx --load BlockWatch.kmx <<<"$client_script") ||
    fail "the host with the client fails $where: $said"
  [ "$said" = "$client_output" ] || fail "the client is not called as it should be $where: $said"
}

client_is_called() {
  local names
  build_client || fail "the client cannot be built from the package alone"
  names=$(imported_names "$package/bin/BlockWatch.kmx" | sort | xargs)
  [ "$names" = 'ktdxBlockReferenceMonitorAttach ktdxBlockReferenceMonitorDetach' ] || fail "the client imports: $names"
  (cd "$bin" && run_client here ./kthost)
  (cd "$package/bin" && run_client 'under Wine' ./kthost.exe under_wine)
  echo "platforms: a client built from the package is called"
}
