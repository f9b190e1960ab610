# Header-only libraries are found by their headers, so that a cross build can point at a folder that holds only them
# (-DZQRMT_HEADERS=...). What each is for stands in the README.
set(ZQRMT_HEADERS "" CACHE PATH "Folder that holds the header-only libraries; empty: the system's")

function(add_header_library target header)
  if(ZQRMT_HEADERS)
    set(where PATHS ${ZQRMT_HEADERS} NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  endif()
  find_path(${target}_INCLUDE ${header} PATH_SUFFIXES utf8cpp ${where} REQUIRED)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${${target}_INCLUDE})
endfunction()

add_header_library(rapidjson rapidjson/document.h)
add_header_library(cli11 CLI/CLI.hpp)
add_header_library(utfcpp utf8.h)
add_header_library(fmt fmt/core.h)
target_compile_definitions(fmt INTERFACE FMT_HEADER_ONLY)
