# libFuzzer target of the stored grid layouts; see fuzz/CMakeLists.txt for VARION_FUZZ.
option(VARION_FUZZ "Build the libFuzzer targets (clang only)" OFF)
if(VARION_FUZZ AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  add_executable(grid_layout_fuzz "${CMAKE_CURRENT_LIST_DIR}/grid_layout_fuzz.cpp")
  target_link_libraries(grid_layout_fuzz PRIVATE varion_core)
  target_compile_options(grid_layout_fuzz PRIVATE -fsanitize=fuzzer)
  target_link_options(grid_layout_fuzz PRIVATE -fsanitize=fuzzer)
  varion_warnings(grid_layout_fuzz)
endif()
