# Where things are installed below the prefix. A host loads the module by its path, so on Linux it is kept out of the linker's
# folders; the headers have a folder of their own too. For Windows it is one folder that is unpacked and used as it is.
if(WIN32)
  set(CMAKE_INSTALL_BINDIR . CACHE PATH "Folder of rmthost.exe and the DLL, below the prefix")
  set(CMAKE_INSTALL_DOCDIR docs CACHE PATH "Folder of the documents, below the prefix")
endif()
include(GNUInstallDirs)
if(WIN32)
  set(module_folder ${CMAKE_INSTALL_BINDIR})
else()
  set(module_folder ${CMAKE_INSTALL_LIBDIR}/zqrmt)
endif()
set(header_folder ${CMAKE_INSTALL_INCLUDEDIR}/zqrmt)

# Debian's zsh looks in site-functions below /usr/local alone, and in vendor-completions below /usr.
set(ZQRMT_ZSH_COMPLETIONS share/zsh/site-functions CACHE STRING "Folder of zsh's completions, below the prefix")

# What runs, and what a host's author builds with, are packages of their own.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME runtime)
