include(${CMAKE_CURRENT_LIST_DIR}/HeaderOnly.cmake)
ktdx_header_only(fmt::fmt fmt FMT_HEADER_ONLY)
set(fmt_FOUND TRUE)
