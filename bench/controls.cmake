# Controls: one keystroke through the amount field's model, and its calculator's keys.
varion_bench(bench_controls ${CMAKE_CURRENT_LIST_DIR}/controls_bench.cpp)
