#include "db/driver_path_win.h"

#include <windows.h>

#include "base/text.h"
#include "db/connection_string.h"

namespace varion::db {

std::string DriverFilePath(const std::wstring& windowsPath) {
  wchar_t full[MAX_PATH * 4];
  DWORD n = GetFullPathNameW(windowsPath.c_str(), static_cast<DWORD>(std::size(full)), full, nullptr);
  if (n == 0 || n >= std::size(full)) return {};
  // Wine's own export; absent on Windows.
  using ToUnix = char*(CDECL*)(LPCWSTR);
  auto toUnix = reinterpret_cast<ToUnix>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
  if (!toUnix) return text::WideToCp1250(full);
  char* unixPath = toUnix(full);
  if (!unixPath) return {};
  std::string out(unixPath);
  HeapFree(GetProcessHeap(), 0, unixPath);
  return out;
}

std::string SqliteOdbcConnectionString(const std::wstring& windowsPath) {
  ConnectionString database;
  database.Set("Database", DriverFilePath(windowsPath));  // braced when the path needs it
  return "Driver={SQLite3};" + database.ToString();
}

}  // namespace varion::db
