# A room is a folder of sources with a target of its own.
#
# Its headers are reached as "folder/header.h" through a link in the build tree that holds this one room. A source can
# therefore include a room's headers only when its own target links that room: a forbidden include does not compile.
function(add_room target folder)
  cmake_parse_arguments(PARSE_ARGV 2 room "SHARED" "" "SOURCES;USES")
  if(room_SHARED)
    add_library(${target} SHARED ${room_SOURCES})
    set(scope PUBLIC)
  elseif(room_SOURCES)
    add_library(${target} STATIC ${room_SOURCES})
    set(scope PUBLIC)
  else()
    add_library(${target} INTERFACE)
    set(scope INTERFACE)
  endif()
  set(root ${PROJECT_BINARY_DIR}/rooms/${target})
  cmake_path(GET folder PARENT_PATH parent)
  file(MAKE_DIRECTORY ${root}/${parent})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${root}/${folder} SYMBOLIC)
  target_include_directories(${target} ${scope} $<BUILD_INTERFACE:${root}>)
  target_link_libraries(${target} ${scope} ${room_USES})
endfunction()
