# Two packages for Debian.
set(CPACK_PACKAGE_NAME ZQRMTTestsAudio)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The ZQRMTTestsAudio developers")
set(CPACK_PACKAGE_CONTACT "The ZQRMTTestsAudio developers <zqrmt-tests-audio@packages.invalid>")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS "pipewire-pulse | pulseaudio")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "test speakers and microphones by a tone
The test module ZQRMTTestsAudio plays a tone on an audio endpoint or records
from one while the tone plays, for hosts of a diagnostics framework. rmthost
is a host for people and scripts: it runs a test, puts the volume back
whatever happens, and says whether the tone was heard, whole and clean.

libaudioplatform carries out the tests on PulseAudio, PipeWire, or a virtual
machine in memory that needs no sound hardware.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${CMAKE_CURRENT_SOURCE_DIR}/postinst ${CMAKE_CURRENT_SOURCE_DIR}/postrm ${CMAKE_CURRENT_SOURCE_DIR}/triggers)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${package}-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${package} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "headers and examples for hosts of ZQRMTTestsAudio
What the author of a host needs to load the test module ZQRMTTestsAudio and to
link with libaudioplatform: headers, pkg-config and CMake packages, examples
in C and Python, and documents.")

set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/finish_debian_tree.cmake)
# For that script.
set(CPACK_ZQRMT_PACKAGE ${package})
set(CPACK_ZQRMT_PACKAGING ${CMAKE_CURRENT_SOURCE_DIR})
include(CPack)
