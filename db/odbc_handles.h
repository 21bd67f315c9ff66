// One owner type per kind of ODBC handle (environment, connection, statement) and one for a
// connection's link to its data source. Internal to db/.
#pragma once

#if defined(_WIN32)
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>

#include <memory>

namespace varion::db::detail {

template <SQLSMALLINT kType>
struct OdbcHandleFreer {
  void operator()(SQLHANDLE handle) const { SQLFreeHandle(kType, handle); }
};

// Every ODBC handle is a void pointer; the kind is the deleter's.
template <SQLSMALLINT kType>
using unique_odbc = std::unique_ptr<void, OdbcHandleFreer<kType>>;
using unique_henv = unique_odbc<SQL_HANDLE_ENV>;
using unique_hdbc = unique_odbc<SQL_HANDLE_DBC>;
using unique_hstmt = unique_odbc<SQL_HANDLE_STMT>;

// A connected connection handle: ends the link with SQLDisconnect and leaves the handle itself to
// its unique_hdbc. A member of this type goes after that unique_hdbc, so that the link ends
// before the handle is freed.
struct OdbcDisconnector {
  void operator()(SQLHANDLE dbc) const { SQLDisconnect(dbc); }
};
using unique_odbc_link = std::unique_ptr<void, OdbcDisconnector>;

// A new handle of the kind under its parent (SQL_NULL_HANDLE for an environment); empty when the
// driver manager refuses, with the reason among the parent's diagnostics.
template <SQLSMALLINT kType>
unique_odbc<kType> AllocateOdbc(SQLHANDLE parent) {
  SQLHANDLE handle = SQL_NULL_HANDLE;
  if (!SQL_SUCCEEDED(SQLAllocHandle(kType, parent, &handle))) return {};
  return unique_odbc<kType>(handle);
}

}  // namespace varion::db::detail
