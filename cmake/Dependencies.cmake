# Third-party pieces. Everything comes from Debian packages; nothing is downloaded at build time.
add_library(varion_deps INTERFACE)

if(WIN32)
  # Only a folder holding a link named boost: /usr/include itself would drag glibc headers in.
  set(VARION_BOOST_LINK_DIR "${CMAKE_BINARY_DIR}/boost-include")
  if(NOT EXISTS "${VARION_BOOST_LINK_DIR}/boost")
    file(MAKE_DIRECTORY "${VARION_BOOST_LINK_DIR}")
    file(CREATE_LINK /usr/include/boost "${VARION_BOOST_LINK_DIR}/boost" SYMBOLIC)
  endif()
  target_include_directories(varion_deps SYSTEM INTERFACE "${VARION_BOOST_LINK_DIR}")
  target_link_libraries(varion_deps INTERFACE odbc32 ole32 oleaut32 uuid advapi32 shell32)
  target_compile_definitions(varion_deps INTERFACE UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601)

  # GoogleTest, built once inside this tree from Debian's sources.
  set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL)
else()
  find_package(Boost 1.81 REQUIRED)
  find_package(GTest REQUIRED)
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(SQLITE3 REQUIRED IMPORTED_TARGET sqlite3)
  pkg_check_modules(ODBC REQUIRED IMPORTED_TARGET odbc)
  target_link_libraries(varion_deps INTERFACE Boost::headers PkgConfig::SQLITE3 PkgConfig::ODBC)
endif()
