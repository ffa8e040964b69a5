# ktdx_version_resource(TARGET FILE TYPE DESCRIPTION): gives a library or program (TYPE is DLL or APP) the version
# resource that the file's properties show: name, version, and the version of the host interface it was built for. A
# program also gets the manifest in which it says what it can work with.
function(ktdx_version_resource target file type description)
  file(STRINGS ${PROJECT_SOURCE_DIR}/src/host/KtRxModule.h line REGEX "kApiVersion = 0x")
  string(REGEX REPLACE ".*0x([0-9A-Fa-f]+).*" "0x\\1" encoded "${line}")
  math(EXPR major "${encoded} >> 16")
  math(EXPR minor "${encoded} & 0xFFFF")
  set(interface ${major}.${minor})
  string(REPLACE . , numbers ${PROJECT_VERSION}.0)
  set(manifest "")
  if(type STREQUAL APP)
    set(manifest "1 24 \"${PROJECT_SOURCE_DIR}/cmake/windows/Program.manifest\"")
  endif()
  configure_file(${PROJECT_SOURCE_DIR}/cmake/windows/Version.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
endfunction()
