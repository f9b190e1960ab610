# Makes of the installed trees, which CPack has copied, what Debian's policy asks of a package's.
# The system finds libaudioplatform by itself.
file(GLOB_RECURSE files LIST_DIRECTORIES FALSE ${CPACK_TEMPORARY_DIRECTORY}/runtime/*)
foreach(file IN LISTS files)
  if(file MATCHES "/bin/[^/]*$|\\.so" AND NOT IS_SYMLINK ${file})
    file(RPATH_REMOVE FILE ${file})
  endif()
endforeach()

# With SOURCE_DATE_EPOCH, the date of the last change.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(version ${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
foreach(component IN ITEMS runtime development)
  set(tree ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share)
  string(TOUPPER ${component} upper)
  set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  configure_file(${CPACK_ZQRMT_PACKAGING}/changelog.in ${tree}/doc/${package}/changelog.Debian @ONLY)
  file(GLOB pages ${tree}/man/man*/*)
  execute_process(COMMAND gzip -9n ${tree}/doc/${package}/changelog.Debian ${pages} COMMAND_ERROR_IS_FATAL ANY)
  configure_file(${CPACK_ZQRMT_PACKAGING}/${package}.lintian-overrides ${tree}/lintian/overrides/${package} COPYONLY)
endforeach()
