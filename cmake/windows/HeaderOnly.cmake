# ktdx_header_only(TARGET FOLDER DEFINITIONS...): an imported target for a library of headers that this machine's own
# system has under /usr/include/FOLDER. Only that folder is shown to the compiler, by way of a link: the headers
# beside it are of another system than the one that is compiled for.
function(ktdx_header_only target folder)
  if(NOT IS_DIRECTORY /usr/include/${folder})
    message(FATAL_ERROR "/usr/include/${folder} is not there (./ktdx test windows installs it)")
  endif()
  set(shown ${CMAKE_BINARY_DIR}/headers/${folder})
  file(MAKE_DIRECTORY ${shown})
  file(CREATE_LINK /usr/include/${folder} ${shown}/${folder} SYMBOLIC)
  if(NOT TARGET ${target})
    add_library(${target} INTERFACE IMPORTED GLOBAL)
    target_include_directories(${target} INTERFACE ${shown})
    target_compile_definitions(${target} INTERFACE ${ARGN})
  endif()
endfunction()
