// The database logging suite under Wine, on ODBC to SQLite through Wine's ODBC layer.
#include "diagnostics/db_logger_test.cpp"
