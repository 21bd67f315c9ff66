# Source collection by naming convention, so that a new file needs no edit of a list:
#   name.cpp          portable, into varion_core (never includes <windows.h>)
#   name_win.cpp      Windows only, into the DLL
#   name_linux.cpp    native build only (the directly linked SQLite backend)
#   name_test.cpp     native GoogleTest
#   name_wintest.cpp  GoogleTest under Wine
# The core's own services from the operating system (folders, registry, process ids, module
# strings) have one file per build; the Windows one opens no window, so it joins varion_core as
# a name_linux.cpp does natively, and the core needs nothing of the window library.
set(VARION_CORE_WIN_SERVICES diagnostics/log_platform_win.cpp)

function(varion_collect_sources)
  set(core "")
  set(win "")
  list(TRANSFORM VARION_CORE_WIN_SERVICES PREPEND "${PROJECT_SOURCE_DIR}/" OUTPUT_VARIABLE services)
  foreach(dir IN LISTS ARGN)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/${dir}/*.cpp")
    foreach(f IN LISTS files)
      if(f MATCHES "_(win)?test\\.cpp$")
        continue()
      elseif(f MATCHES "_linux\\.cpp$")
        if(NOT WIN32)
          list(APPEND core "${f}")
        endif()
      elseif(f MATCHES "_win\\.cpp$")
        if(WIN32 AND f IN_LIST services)
          list(APPEND core "${f}")
        elseif(NOT f MATCHES "dll_main_win\\.cpp$")
          list(APPEND win "${f}")
        endif()
      else()
        list(APPEND core "${f}")
      endif()
    endforeach()
  endforeach()
  set(VARION_CORE_SOURCES ${core} PARENT_SCOPE)
  set(VARION_WIN_SOURCES ${win} PARENT_SCOPE)

endfunction()

# Our own targets: warnings are errors, and narrow literals are code page 1250 bytes.
function(varion_warnings target)
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # clang encodes literals only as UTF-8; it builds just the fuzz targets, where the Polish
    # texts are data and their encoding does not matter.
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
  else()
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror -fexec-charset=CP1250)
  endif()
  # GCC 12 reports a false -Wrestrict inside libstdc++'s string concatenation at -O2
  # (GCC bug 105329); the warning says nothing about our code there.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
endfunction()

# Test sources of one subsystem folder: kind is "test" (native) or "wintest" (Wine).
function(varion_tests_of dir kind out)
  file(GLOB_RECURSE files CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/${dir}/*_${kind}.cpp")
  set(${out} ${files} PARENT_SCOPE)
endfunction()
