// The native database suites, run under Wine on ODBC to SQLite through Wine's ODBC layer.
#include "db/connection_string_test.cpp"
#include "db/database_test.cpp"
#include "db/recordset_test.cpp"
#include "db/schema/schema_test.cpp"
#include "db/stream_test.cpp"
#include "db/updatable_recordset_test.cpp"
