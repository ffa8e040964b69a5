include(${CMAKE_CURRENT_LIST_DIR}/HeaderOnly.cmake)
ktdx_header_only(nlohmann_json::nlohmann_json nlohmann)
set(nlohmann_json_FOUND TRUE)
