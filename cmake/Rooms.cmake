# A room is a folder of sources with a target of its own. Headers are included by their path from the top of the source
# tree. Which room may include which is the table in ARCHITECTURE.md, to which tools/check_includes.py holds every include.
#
#   add_room(TARGET [SHARED] SOURCES... [USES TARGET...] [PRIVATELY TARGET...])
#
# USES are what the room's headers need too, PRIVATELY what only its sources do.
function(add_room target)
  cmake_parse_arguments(PARSE_ARGV 1 room "SHARED" "" "SOURCES;USES;PRIVATELY")
  if(room_SHARED)
    add_library(${target} SHARED ${room_SOURCES})
  else()
    add_library(${target} STATIC ${room_SOURCES})
  endif()
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
  target_link_libraries(${target} PUBLIC ${room_USES} PRIVATE ${room_PRIVATELY})
endfunction()
