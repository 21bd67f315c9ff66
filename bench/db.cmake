# The database layer against raw SQLite and ODBC loops.
varion_bench(bench_db db_bench.cpp)
