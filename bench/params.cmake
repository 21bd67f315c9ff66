# The report's WHERE text and parameter page for a list of mixed parameters.
varion_bench(bench_params params_bench.cpp)
