// File paths for file-based ODBC drivers (SQLite). Under Wine the ODBC layer hands connections to
// the system's unixODBC, whose drivers open files by their Unix path; on Windows the driver takes
// the Windows path.
#pragma once

#include <string>

#include "base/export.h"

namespace varion::db {

// The full path of `windowsPath` as the driver must see it, in code page 1250 (a Unix path is
// UTF-8 bytes, kept as they are). Empty when the path cannot be mapped.
VARION_API std::string DriverFilePath(const std::wstring& windowsPath);

// "Driver={SQLite3};Database=<path>" for a database file.
VARION_API std::string SqliteOdbcConnectionString(const std::wstring& windowsPath);

}  // namespace varion::db
