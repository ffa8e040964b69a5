# The distribution has GoogleTest for its own system as libraries and for others as sources.
if(NOT TARGET GTest::gmock)
  if(NOT EXISTS /usr/src/googletest/CMakeLists.txt)
    message(FATAL_ERROR "the sources of GoogleTest are not there (./ktdx test windows installs them)")
  endif()
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
endif()
set(GTest_FOUND TRUE)
