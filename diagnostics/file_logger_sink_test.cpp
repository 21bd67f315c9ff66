// The file sink and the file logger factory: paths, line format, failures and concurrent writers.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <regex>
#include <thread>

#include "diagnostics/log_factories.h"
#include "diagnostics/log_platform.h"
#include "tests/log_test_support.h"
#include "tests/native_support.h"

namespace SimpleLog {
namespace {

using varion::testing::ReadLines;
using varion::testing::ReadWholeFile;
using varion::testing::TempDir;

#if defined(_WIN32)
constexpr char kSep = '\\';
constexpr const char* kEol = "\r\n";
#else
constexpr char kSep = '/';
constexpr const char* kEol = "\n";
#endif

std::string S(const char* withSlashes) {
  std::string s = withSlashes;
  for (char& c : s)
    if (c == '|') c = kSep;
  return s;
}

TEST(LogPaths, DirectoryAndNameJoinWithExactlyOneSeparator) {
  struct Case {
    const char* directory;  // '|' stands for the build's separator
    const char* path;
  };
  const Case cases[] = {
      {"logs", "logs|a.log"},
      {"logs|", "logs|a.log"},
      {"logs|||", "logs|a.log"},
      {"|var|log", "|var|log|a.log"},
      {"|", "|a.log"},
      {"", "a.log"},
      {"Księgi|Zakład", "Księgi|Zakład|a.log"},
#if defined(_WIN32)
      {"C:\\logs/", "C:\\logs\\a.log"},
      {"C:\\logs/\\", "C:\\logs\\a.log"},
      {"C:", "C:\\a.log"},
#endif
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.directory);
    EXPECT_EQ(JoinLogPath(S(c.directory), "a.log"), S(c.path));
  }
}

TEST(LogPaths, SinkPathsUseTheGivenOrTheDefaultDirectory) {
  TempDir dir;
  EXPECT_EQ(FileLoggerSink(dir.Path(), "x.log").Path(), dir.Path() + kSep + "x.log");
  EXPECT_EQ(FileLoggerSink(dir.Path() + kSep + kSep, "x.log").Path(), dir.Path() + kSep + "x.log");
  EXPECT_EQ(FileLoggerSink("x.log").Path(), DefaultLogDirectory() + kSep + "x.log");
  EXPECT_EQ(FileLoggerSink("", "x.log").Path(), DefaultLogDirectory() + kSep + "x.log");
  const std::string def = DefaultLogDirectory();
  ASSERT_GE(def.size(), 10u);
  EXPECT_EQ(def.substr(def.size() - 10), std::string(1, kSep) + "Orvant VX");
}

#if !defined(_WIN32)
TEST(LogPaths, DefaultDirectoryIsTheUsersDataDirectory) {
  struct Case {
    const char* xdgDataHome;  // nullptr: unset
    const char* home;
    const char* directory;
  };
  const Case cases[] = {
      {"/srv/data", "/home/ola", "/srv/data/Orvant VX"},
      {nullptr, "/home/ola", "/home/ola/.local/share/Orvant VX"},
      {"", "/home/ola", "/home/ola/.local/share/Orvant VX"},
      // A relative XDG_DATA_HOME is to be ignored.
      {"rel/data", "/home/ola", "/home/ola/.local/share/Orvant VX"},
  };
  const char* savedXdg = std::getenv("XDG_DATA_HOME");
  const char* savedHome = std::getenv("HOME");
  const std::string xdg = savedXdg ? savedXdg : "", home = savedHome ? savedHome : "";
  for (const Case& c : cases) {
    SCOPED_TRACE(c.directory);
    if (c.xdgDataHome) setenv("XDG_DATA_HOME", c.xdgDataHome, 1);
    else unsetenv("XDG_DATA_HOME");
    setenv("HOME", c.home, 1);
    EXPECT_EQ(DefaultLogDirectory(), c.directory);
  }
  if (savedXdg) setenv("XDG_DATA_HOME", xdg.c_str(), 1);
  else unsetenv("XDG_DATA_HOME");
  if (savedHome) setenv("HOME", home.c_str(), 1);
}
#endif

TEST(FileLoggerSinkTest, OneLinePerEntryWithTheLevelInBracketsAppendedToWhatIsThere) {
  TempDir dir;
  const std::string path = JoinLogPath(dir.Path(), "Księga.log");
  { std::ofstream(varion::logplatform::NativePath(path)) << "earlier line\n"; }
  {
    FileLoggerSink sink(dir.Path(), "Księga.log");
    for (int level : {0, 1, 2, 3, -1, 4, 1000}) sink.Write(static_cast<tagFramLogLevel>(level), "Zażółć gęślą jaźń");
  }
  const std::vector<std::string> expected = {
      "earlier line",
      "[DEBUG] Zażółć gęślą jaźń",
      "[INFO] Zażółć gęślą jaźń",
      "[WARNING] Zażółć gęślą jaźń",
      "[ERROR] Zażółć gęślą jaźń",
      "[] Zażółć gęślą jaźń",
      "[] Zażółć gęślą jaźń",
      "[] Zażółć gęślą jaźń",
  };
  EXPECT_EQ(ReadLines(path), expected);
}

TEST(FileLoggerSinkTest, WarningsReachTheFileAtOnceWithEverythingBefore) {
  TempDir dir;
  FileLoggerSink sink(dir.Path(), "a.log");
  sink.Write(FramLogDebug, "1");
  sink.Write(FramLogInfo, "2");
  sink.Write(FramLogWarning, "3");
  EXPECT_EQ(ReadLines(sink.Path()), (std::vector<std::string>{"[DEBUG] 1", "[INFO] 2", "[WARNING] 3"}));
  sink.Write(FramLogDebug, "4");
  sink.Flush();
  EXPECT_EQ(ReadLines(sink.Path()).size(), 4u);
}

TEST(FileLoggerSinkTest, LongAndMultiLineMessagesAreWrittenWhole) {
  TempDir dir;
  std::string huge(3 * 1024 * 1024, 'x');
  for (std::size_t i = 0; i < huge.size(); i += 997) huge[i] = static_cast<char>('a' + i % 26);
  const std::string multi = "pierwsza\ndruga\n\nczwarta\tz tabulatorem";
  {
    FileLoggerSink sink(dir.Path(), "a.log");
    sink.Write(FramLogInfo, huge);
    sink.Write(FramLogError, multi);
    sink.Write(FramLogInfo, "");
  }
  const std::string expected = "[INFO] " + huge + kEol + "[ERROR] pierwsza" + kEol + "druga" + kEol + kEol +
                               "czwarta\tz tabulatorem" + kEol + "[INFO] " + kEol;
  const std::string written = ReadWholeFile(JoinLogPath(dir.Path(), "a.log"));
  EXPECT_EQ(written.size(), expected.size());
  EXPECT_TRUE(written == expected);
}

TEST(FileLoggerSinkTest, AMissingDirectoryIsCreated) {
  TempDir dir;
  const std::string nested = JoinLogPath(JoinLogPath(dir.Path(), "a"), "b");
  {
    FileLoggerSink sink(nested + kSep, "c.log");
    sink.Write(FramLogError, "x");
  }
  EXPECT_EQ(ReadLines(JoinLogPath(nested, "c.log")), std::vector<std::string>{"[ERROR] x"});
}

TEST(FileLoggerSinkTest, AnUnwritablePlaceDropsEntriesAndLaterEntriesTryAgain) {
  TempDir dir;
  // A file where the directory should be: neither opening nor creating the directory can work,
  // whoever runs the test.
  const std::string blocker = JoinLogPath(dir.Path(), "blocked");
  { std::ofstream(varion::logplatform::NativePath(blocker)) << "not a directory"; }
  auto sink = std::make_shared<FileLoggerSink>(blocker, "a.log");
  SimpleLoggerWrapper logger = Custom::CreateLogger(sink, std::make_shared<AlwaysOnLoggerToggle>(), nullptr);
  EXPECT_NO_THROW(logger.Write(FramLogError, "lost"));
  EXPECT_NO_THROW(logger.Write(FramLogDebug, "lost too"));
  EXPECT_NO_THROW(sink->Flush());
  std::filesystem::remove(varion::logplatform::NativePath(blocker));
  logger.Write(FramLogError, "kept");
  EXPECT_EQ(ReadLines(sink->Path()), std::vector<std::string>{"[ERROR] kept"});
}

#if !defined(_WIN32)
TEST(FileLoggerSinkTest, AFullDiskLosesEntriesWithoutRaising) {
  FileLoggerSink sink("/dev", "full");
  for (int i = 0; i < 3; ++i) EXPECT_NO_THROW(sink.Write(FramLogError, std::string(20000, 'x')));
  EXPECT_NO_THROW(sink.Flush());
}
#endif

TEST(FileLoggerFactoryTest, TogglesAndFormattingOfTheBuiltLogger) {
  struct Case {
    bool enabled;
    Formatting formatting;
    const char* line;  // regular expression; nullptr: no file
  };
  const Case cases[] = {
      {true, Formatting::Timestamp, R"(\[WARNING\] \d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}\tKontrola)"},
      {true, Formatting::Dummy, R"(\[WARNING\] Kontrola)"},
      {false, Formatting::Timestamp, nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.enabled);
    TempDir dir;
    std::shared_ptr<const ILoggerToggle> toggle;
    if (c.enabled) toggle = std::make_shared<AlwaysOnLoggerToggle>();
    else toggle = std::make_shared<NoDataFactoryParamLoggerToggle>(varion::db::Connection());
    Custom::File::LoggerFactory factory("Fakturowanie.log", toggle, c.formatting);
    factory.WithCustomDirectory(dir.Path() + kSep).Get().Write(FramLogWarning, "Kontrola");
    const std::string path = JoinLogPath(dir.Path(), "Fakturowanie.log");
    if (!c.line) {
      EXPECT_FALSE(std::filesystem::exists(varion::logplatform::NativePath(path)));
      continue;
    }
    const auto lines = ReadLines(path);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(std::regex_match(lines[0], std::regex(c.line))) << lines[0];
  }
}

// Lines of "<thread>:<sequence>:<payload of the thread's letter>"; every line must come back whole
// and each thread's lines in the order written.
void CheckConcurrentLines(const std::vector<std::string>& lines, int threads, int perThread) {
  const std::regex shape(R"(\[INFO\] (\d+):(\d+):([a-z]+))");
  std::map<int, int> next;
  for (const std::string& line : lines) {
    std::smatch m;
    ASSERT_TRUE(std::regex_match(line, m, shape)) << line.substr(0, 80);
    const int thread = std::stoi(m[1]), seq = std::stoi(m[2]);
    const std::string payload = m[3];
    ASSERT_EQ(payload.find_first_not_of(static_cast<char>('a' + thread)), std::string::npos) << line.substr(0, 80);
    ASSERT_EQ(payload.size(), static_cast<std::size_t>(1 + (seq * 37 + thread * 11) % 700));
    EXPECT_EQ(seq, next[thread]++);
  }
  EXPECT_EQ(static_cast<int>(next.size()), threads);
  for (const auto& [thread, count] : next) EXPECT_EQ(count, perThread) << thread;
}

void WriteConcurrently(const std::vector<ILoggerSink*>& sinks, int threads, int perThread) {
  std::vector<std::thread> pool;
  for (int t = 0; t < threads; ++t) {
    pool.emplace_back([&, t] {
      ILoggerSink* sink = sinks[static_cast<std::size_t>(t) % sinks.size()];
      for (int i = 0; i < perThread; ++i) {
        std::string payload(static_cast<std::size_t>(1 + (i * 37 + t * 11) % 700), static_cast<char>('a' + t));
        sink->Write(FramLogInfo, std::to_string(t) + ":" + std::to_string(i) + ":" + payload);
      }
    });
  }
  for (auto& th : pool) th.join();
}

TEST(FileLoggerSinkTest, ThreadsSharingOneSinkNeverMixTheirLines) {
  TempDir dir;
  const int threads = 4, perThread = 3000;
  {
    FileLoggerSink sink(dir.Path(), "a.log");
    WriteConcurrently({&sink}, threads, perThread);
  }
  const auto lines = ReadLines(JoinLogPath(dir.Path(), "a.log"));
  EXPECT_EQ(lines.size(), static_cast<std::size_t>(threads * perThread));
  CheckConcurrentLines(lines, threads, perThread);
}

TEST(FileLoggerSinkTest, TwoSinksOnOneFileWriteWholeLines) {
  TempDir dir;
  const int threads = 4, perThread = 2000;
  {
    FileLoggerSink first(dir.Path(), "a.log"), second(dir.Path(), "a.log");
    WriteConcurrently({&first, &second}, threads, perThread);
  }
  const auto lines = ReadLines(JoinLogPath(dir.Path(), "a.log"));
  EXPECT_EQ(lines.size(), static_cast<std::size_t>(threads * perThread));
  CheckConcurrentLines(lines, threads, perThread);
}

}  // namespace
}  // namespace SimpleLog
