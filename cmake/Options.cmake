# Warnings are errors with the compiler generation that the project is checked with; a newer compiler's new warnings
# must not keep anybody from building.
set(ktdx_werror_default OFF)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  set(ktdx_werror_default ON)
endif()
option(KTDX_WERROR "Treat warnings as errors" ${ktdx_werror_default})
option(KTDX_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(KTDX_FUZZ "Build the fuzz targets, and everything so that they can follow it; needs clang" OFF)

# Every target of the project links this: the same warnings everywhere, tests included.
add_library(ktdx_warnings INTERFACE)
target_compile_options(ktdx_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Woverloaded-virtual
  -Wnon-virtual-dtor -Wcast-align -Wcast-qual -Wformat=2 -Wextra-semi -Wundef -Wunused -Wimplicit-fallthrough
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op>
  # GCC 12 sees overlapping copies in every optimised "text" + string.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  # What the sanitizers add makes GCC take the library's own code, such as regular expressions, for uninitialised.
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<BOOL:${KTDX_SANITIZE}>>:-Wno-maybe-uninitialized>
  $<$<BOOL:${KTDX_WERROR}>:-Werror>)

if(KTDX_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

# The fuzzer has to follow every branch of what it drives, so all is built for it.
if(KTDX_FUZZ)
  set(fuzz_flags -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
  add_compile_options(${fuzz_flags} -fno-omit-frame-pointer)
  add_link_options(${fuzz_flags})
endif()
