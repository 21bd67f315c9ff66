// Database backends of the Windows test programs: ODBC to SQLite (under Wine, the system's
// unixODBC and its SQLite driver).
#include <windows.h>

#include <filesystem>
#include <random>
#include <stdexcept>

#include "db/driver_path_win.h"
#include "tests/db_backends.h"

namespace varion::testing {

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
  m_connectionString = db::SqliteOdbcConnectionString((m_folder->path / "test.db").wstring());
}

TestDatabase::~TestDatabase() = default;

db::Connection TestDatabase::Admin() const { return db::Connection::Open(PostgresConnectionString("postgres")); }

}  // namespace varion::testing
