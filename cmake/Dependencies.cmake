# Libraries that are all headers are found by them. What each is for stands in the README.
#
# A cross build sees those of ZQRMT_HOST_INCLUDE_FOLDER, which the toolchain file names, through a folder that holds only
# them: with the whole of the building system's include folder it would see the wrong C library too.
set(header_libraries rapidjson nlohmann CLI fmt utf8cpp kissfft)
if(CMAKE_CROSSCOMPILING)
  set(header_folder ${PROJECT_BINARY_DIR}/headers)
  file(MAKE_DIRECTORY ${header_folder})
  foreach(library IN LISTS header_libraries)
    file(CREATE_LINK ${ZQRMT_HOST_INCLUDE_FOLDER}/${library} ${header_folder}/${library} SYMBOLIC)
  endforeach()
  set(header_search PATHS ${header_folder} NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
endif()

function(add_header_library target header)
  find_path(${target}_INCLUDE ${header} PATH_SUFFIXES utf8cpp ${header_search} REQUIRED)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${${target}_INCLUDE})
endfunction()

add_header_library(rapidjson rapidjson/document.h)
add_header_library(nlohmann nlohmann/json.hpp)
add_header_library(cli11 CLI/CLI.hpp)
add_header_library(utfcpp utf8.h)
add_header_library(kissfft kissfft/kissfft.hh)
add_header_library(fmt_headers fmt/core.h)
add_library(fmt STATIC ${CMAKE_CURRENT_LIST_DIR}/fmt.cpp)
target_link_libraries(fmt PUBLIC fmt_headers)
