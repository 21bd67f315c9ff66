# Varion SDK for host programs: find_package(Varion REQUIRED), then
# target_link_libraries(app PRIVATE Varion::varion). Builds with the MinGW-w64 toolchain
# (posix threads) the library was built with.
get_filename_component(_varion_prefix "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)

if(NOT TARGET Varion::varion)
  add_library(Varion::varion SHARED IMPORTED)
  set_target_properties(Varion::varion PROPERTIES
    IMPORTED_LOCATION "${_varion_prefix}/bin/varion.dll"
    IMPORTED_IMPLIB "${_varion_prefix}/lib/libvarion.dll.a"
    INTERFACE_INCLUDE_DIRECTORIES "${_varion_prefix}/include/varion"
    INTERFACE_COMPILE_FEATURES cxx_std_20
    # Texts cross the interface as code page 1250 bytes, so the host's literals must be too.
    INTERFACE_COMPILE_OPTIONS "$<$<COMPILE_LANGUAGE:CXX>:-fexec-charset=CP1250>"
    # The C++ runtime linked into the program itself: a program needs no runtime DLL beside
    # it, only varion.dll (which carries its own). Both sides share the system's C runtime, so
    # memory and texts cross the interface freely.
    INTERFACE_LINK_OPTIONS "-static"
    INTERFACE_LINK_LIBRARIES "comctl32;gdi32;user32")
endif()

# Copies varion.dll beside a program after each build, where Windows looks for it.
function(varion_copy_dll target)
  add_custom_command(TARGET ${target} POST_BUILD
                     COMMAND ${CMAKE_COMMAND} -E copy_if_different "${_varion_prefix}/bin/varion.dll"
                             "$<TARGET_FILE_DIR:${target}>")
endfunction()

set(Varion_FOUND TRUE)
