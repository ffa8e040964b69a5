# What somebody on a Windows machine unpacks: everything to run and to write clients with, and no tests. cpack makes the
# archive of it (./ktdx package windows); the target package_contents is what has to be built for that.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
add_custom_target(package_contents DEPENDS KtDxNotify KtDxNotifyRes PartsList kthost ktemplate)

install(TARGETS KtDxNotify kthost_core RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
install(TARGETS KtDxNotifyRes PartsList kthost ktemplate RUNTIME DESTINATION bin)
install(FILES src/module/exports.def DESTINATION lib RENAME KtDxNotify.def)
install(DIRECTORY include/ DESTINATION include)
# How files are opened and texts compared is linked in as source where it is needed: no library gives it to clients.
install(DIRECTORY src/host/ DESTINATION include/host FILES_MATCHING PATTERN *.h
        REGEX "/(ExclusiveFile|SystemPath|UserLocale)\\.h$" EXCLUDE)
install(DIRECTORY samples DESTINATION . PATTERN CMakeLists.txt EXCLUDE)
install(FILES docs/template-format.md DESTINATION docs)

# Windows's own programs take lines to end in two characters.
foreach(file README.md demo.cmd)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/package/${file} ${CMAKE_BINARY_DIR}/package/${file} @ONLY NEWLINE_STYLE CRLF)
  install(FILES ${CMAKE_BINARY_DIR}/package/${file} DESTINATION .)
endforeach()

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME ${PROJECT_NAME}-${PROJECT_VERSION}-windows-x64)
set(CPACK_STRIP_FILES ON)
include(CPack)
