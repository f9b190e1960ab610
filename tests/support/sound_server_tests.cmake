# Runs the program's tests that match the filter on a private sound server of each kind, as NAME.pulseaudio and
# NAME.pipewire, or on the kinds given. Without the server such a test is skipped, or fails when ZQRMT_REQUIRE_SOUND_SERVERS is set.
function(add_sound_server_tests name program filter)
  if(CMAKE_CROSSCOMPILING)
    return()
  endif()
  set(kinds ${ARGN})
  if(NOT kinds)
    set(kinds pulseaudio pipewire)
  endif()
  foreach(kind IN LISTS kinds)
    add_test(NAME ${name}.${kind}
      COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tests/support/sound_server.py ${kind}
              $<TARGET_FILE:${program}> --gtest_filter=${filter})
    # A filter that matches nothing would pass.
    set_tests_properties(${name}.${kind} PROPERTIES
      TIMEOUT 120 SKIP_RETURN_CODE 77 ENVIRONMENT ${log_of_tests} FAIL_REGULAR_EXPRESSION "PASSED  . 0 tests")
  endforeach()
endfunction()
