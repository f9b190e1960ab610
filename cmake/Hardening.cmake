# Compiler and linker settings that make a memory fault harder to use against the process. For builds without sanitizers,
# which check more and don't work with a fortified C library. MSVC has its equivalents on by default.
if(MSVC)
  return()
endif()
include(CheckCXXCompilerFlag)

add_compile_options(-fstack-protector-strong)
# A packager's own level stays. The C library's checks need the optimiser.
if(NOT "${CMAKE_C_FLAGS} ${CMAKE_CXX_FLAGS}" MATCHES "_FORTIFY_SOURCE")
  set(is_optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
  add_compile_options($<${is_optimised}:-U_FORTIFY_SOURCE> $<${is_optimised}:-D_FORTIFY_SOURCE=2>)
endif()

if(WIN32)
  # Linked too, for its library. Windows probes each page of a large stack frame anyway.
  add_link_options(-fstack-protector-strong LINKER:--dynamicbase,--high-entropy-va,--nxcompat)
  return()
endif()

# Not every processor has the first, and not every compiler the second.
foreach(flag IN ITEMS -fcf-protection -fstack-clash-protection)
  string(MAKE_C_IDENTIFIER "has${flag}" has_flag)
  check_cxx_compiler_flag(${flag} ${has_flag})
  if(${has_flag})
    add_compile_options(${flag})
  endif()
endforeach()

# Lets CMake link programs as position-independent ones.
include(CheckPIESupported)
check_pie_supported()
add_link_options(LINKER:-z,relro,-z,now,-z,noexecstack,-z,text)
