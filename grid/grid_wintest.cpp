// The native grid suites, run under Wine: the Windows build of the same code, and the database
// suite on ODBC to SQLite through Wine's ODBC layer.
#include "tests/native_support.cpp"

#include "grid/cust_grid_db_test.cpp"
#include "grid/cust_grid_layout_test.cpp"
#include "grid/cust_grid_sql_test.cpp"
#include "grid/layout_blobs_test.cpp"
#include "grid/list_view_model_test.cpp"
