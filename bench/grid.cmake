# Grid configuration: the list statement and the layout blobs of a 200-column list.
varion_bench(bench_grid ${CMAKE_CURRENT_LIST_DIR}/grid_bench.cpp)
