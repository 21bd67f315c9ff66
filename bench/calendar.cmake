# The month calendar and date field models: key handling and a full grid layout per call.
varion_bench(bench_calendar calendar_bench.cpp)
