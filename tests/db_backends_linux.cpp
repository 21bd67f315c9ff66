// Database backends of the native test programs, with the private PostgreSQL server.
#include "tests/db_backends.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <sstream>
#include <stdexcept>

#include "tests/native_support.h"

namespace varion::testing {
namespace {

namespace fs = std::filesystem;

std::string Quote(const std::string& s) {
  std::string out = "'";
  for (char c : s) {
    if (c == '\'') out += "'\\''";
    else out += c;
  }
  return out + "'";
}

std::string PostgresBinDir() {
  std::string best;
  std::error_code ec;
  for (const auto& e : fs::directory_iterator("/usr/lib/postgresql", ec)) {
    if (fs::exists(e.path() / "bin" / "initdb") && e.path().string() > best) best = e.path().string();
  }
  if (best.empty()) throw std::runtime_error("PostgreSQL is not installed (no /usr/lib/postgresql/*/bin/initdb)");
  return best + "/bin";
}

int FreeLoopbackPort() {
  int s = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in a{};
  a.sin_family = AF_INET;
  a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  a.sin_port = 0;
  socklen_t len = sizeof a;
  int port = 0;
  if (bind(s, reinterpret_cast<sockaddr*>(&a), sizeof a) == 0 && getsockname(s, reinterpret_cast<sockaddr*>(&a), &len) == 0)
    port = ntohs(a.sin_port);
  close(s);
  if (port == 0) throw std::runtime_error("no free loopback port for PostgreSQL");
  return port;
}

// The server runs as an unprivileged user: PostgreSQL refuses to run as root.
std::string AsServerUser(const std::string& command) {
  if (geteuid() != 0) return command;
  return "runuser -u postgres -- sh -c " + Quote(command);
}

void Run(const std::string& command, const std::string& what, const std::string& log) {
  if (std::system((command + " >>" + Quote(log) + " 2>&1").c_str()) != 0) {
    std::ifstream in(log);
    std::stringstream text;
    text << in.rdbuf();
    throw std::runtime_error(what + " failed:\n" + text.str());
  }
}

class PostgresServer {
 public:
  PostgresServer() {
    m_bin = PostgresBinDir();
    char pattern[] = "/tmp/varion-pg-XXXXXX";
    if (!mkdtemp(pattern)) throw std::runtime_error("mkdtemp failed");
    m_dir = pattern;
    m_log = m_dir + "/setup.log";
    if (geteuid() == 0) Run("chown postgres: " + Quote(m_dir), "chown", m_log);
    StartWatchdog();
    m_port = FreeLoopbackPort();
    Run(AsServerUser(m_bin + "/initdb -D " + Quote(m_dir + "/data") +
                     " -A trust -U postgres -E UTF8 --locale=C --no-sync"),
        "initdb", m_log);
    Run(AsServerUser(m_bin + "/pg_ctl -D " + Quote(m_dir + "/data") + " -l " + Quote(m_dir + "/server.log") +
                     " -w -t 60 -o " +
                     Quote("-F -p " + std::to_string(m_port) + " -k " + m_dir +
                           " -c listen_addresses=127.0.0.1 -c max_connections=200") +
                     " start"),
        "pg_ctl start", m_log);
  }

  // The watchdog stops the server and removes the folder once this process has gone, even
  // when it crashed or was killed: it waits for end of file on a pipe only this process writes.
  void StartWatchdog() {
    int fds[2];
    if (pipe2(fds, O_CLOEXEC) != 0) throw std::runtime_error("pipe failed");
    std::string stop = AsServerUser(m_bin + "/pg_ctl -D " + Quote(m_dir + "/data") + " -m immediate -w stop") +
                       " >/dev/null 2>&1; rm -rf " + Quote(m_dir);
    std::string script = "cat >/dev/null; " + stop;
    pid_t pid = fork();
    if (pid < 0) throw std::runtime_error("fork failed");
    if (pid == 0) {
      setsid();
      dup2(fds[0], 0);
      int devnull = open("/dev/null", O_WRONLY);
      if (devnull >= 0) {
        dup2(devnull, 1);
        dup2(devnull, 2);
      }
      execl("/bin/sh", "sh", "-c", script.c_str(), static_cast<char*>(nullptr));
      _exit(127);
    }
    close(fds[0]);
    m_watchdogPipe = fds[1];
    m_watchdog = pid;
  }

  ~PostgresServer() {
    close(m_watchdogPipe);
    int status = 0;
    waitpid(m_watchdog, &status, 0);
  }

  std::string ConnectionString(const std::string& role) const {
    return "Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=" + std::to_string(m_port) +
           ";Database=postgres;Uid=" + role + ";Pwd=x;ByteaAsLongVarBinary=1;UseServerSidePrepare=1";
  }

 private:
  std::string m_bin, m_dir, m_log;
  int m_port = 0;
  int m_watchdogPipe = -1;
  pid_t m_watchdog = -1;
};

PostgresServer& Server() {
  static PostgresServer server;
  return server;
}

std::atomic<int> g_roleCounter{0};

}  // namespace

struct TestDatabase::Folder {
  TempDir dir;
};

std::vector<std::string> DatabaseBackends() {
  std::vector<std::string> all = {"sqlite", "odbc-sqlite", "odbc-postgres"};
  const char* only = std::getenv("VARION_DB_BACKENDS");
  if (!only || !*only) return all;
  std::vector<std::string> chosen;
  std::stringstream list(only);
  std::string name;
  while (std::getline(list, name, ','))
    for (const auto& b : all)
      if (b == name) chosen.push_back(b);
  return chosen;
}

std::string PostgresConnectionString(const std::string& role) { return Server().ConnectionString(role); }

TestDatabase::TestDatabase(std::string_view backend) : m_backend(backend) {
  if (m_backend == "sqlite" || m_backend == "odbc-sqlite") {
    m_folder = std::make_unique<Folder>();
    const std::string file = m_folder->dir.Path() + "/test.db";
    m_connectionString = m_backend == "sqlite" ? "Provider=SQLite;Data Source=" + file
                                               : "Driver={SQLite3};Database=" + file;
  } else if (m_backend == "odbc-postgres") {
    m_role = "vt_" + std::to_string(getpid()) + "_" + std::to_string(++g_roleCounter);
    db::Connection admin = Admin();
    admin.Execute("CREATE ROLE " + m_role + " LOGIN");
    // The role's own schema comes first on the default search path ("$user", public).
    admin.Execute("CREATE SCHEMA " + m_role + " AUTHORIZATION " + m_role);
    m_connectionString = PostgresConnectionString(m_role);
  } else {
    throw std::invalid_argument("unknown database backend " + m_backend);
  }
}

TestDatabase::~TestDatabase() {
  if (m_role.empty()) return;
  try {
    db::Connection admin = Admin();
    admin.Execute("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE usename = '" + m_role + "'");
    admin.Execute("DROP SCHEMA " + m_role + " CASCADE");
    admin.Execute("DROP ROLE " + m_role);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "dropping test role %s: %s\n", m_role.c_str(), e.what());
  }
}

db::Connection TestDatabase::Admin() const { return db::Connection::Open(PostgresConnectionString("postgres")); }

}  // namespace varion::testing

// Under LeakSanitizer: the PostgreSQL ODBC driver keeps 320 bytes of each statement whose
// server-side prepare the server refused, even after SQLFreeHandle. The handles themselves are
// freed (the suite counts them); the leak is the driver's own.
extern "C" const char* __lsan_default_suppressions() { return "leak:psqlodbcw.so\n"; }
