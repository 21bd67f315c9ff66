// The database backends every database test suite runs over, and a fresh empty database on each:
// SQLite directly ("sqlite"), ODBC to the SQLite driver ("odbc-sqlite") and ODBC to PostgreSQL
// ("odbc-postgres"). The PostgreSQL server is private to the test program: started on first use
// in a temporary folder on a loopback port, stopped and removed when the program ends, however
// it ends.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "db/connection.h"

namespace varion::testing {

// The backends of this build; VARION_DB_BACKENDS (comma-separated names) narrows the list.
std::vector<std::string> DatabaseBackends();

// A database of its own for one test: a new SQLite file, or a PostgreSQL role whose own schema
// takes the tables it creates. Everything is dropped with the object.
class TestDatabase {
 public:
  explicit TestDatabase(std::string_view backend);
  ~TestDatabase();
  TestDatabase(const TestDatabase&) = delete;
  TestDatabase& operator=(const TestDatabase&) = delete;

  const std::string& Backend() const { return m_backend; }
  const std::string& ConnectionString() const { return m_connectionString; }
  db::Connection Connect() const { return db::Connection::Open(m_connectionString); }
  bool IsPostgres() const { return m_backend == "odbc-postgres"; }
  // PostgreSQL only: a superuser connection, for what a test cannot do as its own role.
  db::Connection Admin() const;

 private:
  struct Folder;
  std::string m_backend;
  std::string m_connectionString;
  std::string m_role;
  std::unique_ptr<Folder> m_folder;
};

// The name of a backend's instance of a parameterised suite, the last argument of every
// INSTANTIATE_TEST_SUITE_P over DatabaseBackends(): a test name takes no '-', so "odbc-sqlite"
// gives "odbc_sqlite".
inline std::string BackendTestName(const ::testing::TestParamInfo<std::string>& info) {
  std::string name = info.param;
  for (char& c : name)
    if (c == '-') c = '_';
  return name;
}

// The connection string of the private PostgreSQL server for a role (started on first call).
std::string PostgresConnectionString(const std::string& role);

}  // namespace varion::testing
