// Database backends of the Windows test programs: ODBC to SQLite. Under Wine the ODBC layer hands
// the connection to the system's unixODBC and its SQLite driver, which opens files by their Unix
// path; on Windows the driver takes the Windows path.
#include <windows.h>

#include <filesystem>
#include <random>
#include <stdexcept>

#include "base/text.h"
#include "tests/db_backends.h"

namespace varion::testing {
namespace {

// The path the ODBC driver understands: the Unix one under Wine, the Windows one elsewhere.
std::string DriverPath(const std::filesystem::path& path) {
  using ToUnix = char*(CDECL*)(LPCWSTR);
  auto toUnix = reinterpret_cast<ToUnix>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
  if (!toUnix) return text::WideToCp1250(path.wstring());
  char* unix = toUnix(path.c_str());
  if (!unix) throw std::runtime_error("no Unix path for the test database");
  std::string out(unix);
  HeapFree(GetProcessHeap(), 0, unix);
  return out;
}

}  // namespace

struct TestDatabase::Folder {
  std::filesystem::path path;
  Folder() {
    std::random_device rd;
    for (;;) {
      path = std::filesystem::temp_directory_path() / ("varion-" + std::to_string(rd()));
      if (std::filesystem::create_directory(path)) break;
    }
  }
  ~Folder() {
    std::error_code ec;
    std::filesystem::remove_all(path, ec);
  }
};

std::vector<std::string> DatabaseBackends() { return {"odbc-sqlite"}; }

std::string PostgresConnectionString(const std::string&) {
  throw std::runtime_error("the Windows tests have no PostgreSQL server");
}

TestDatabase::TestDatabase(std::string_view backend) : m_backend(backend) {
  if (m_backend != "odbc-sqlite") throw std::invalid_argument("no database backend " + m_backend + " under Windows");
  m_folder = std::make_unique<Folder>();
  m_connectionString = "Driver={SQLite3};Database=" + DriverPath(m_folder->path / "test.db");
}

TestDatabase::~TestDatabase() = default;

db::Connection TestDatabase::Admin() const { return db::Connection::Open(PostgresConnectionString("postgres")); }

}  // namespace varion::testing
