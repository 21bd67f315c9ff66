// The file sink and the file logger factory: paths, line format, failures and concurrent writers.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <regex>
#include <thread>

#if !defined(_WIN32)
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>
#endif

#include "diagnostics/log_factories.h"
#include "diagnostics/log_platform.h"
#include "tests/log_test_support.h"
#include "tests/native_support.h"

namespace SimpleLog {
namespace {

using varion::logplatform::NativePath;
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

TEST(LogPaths, DirectoryAndNameJoinWithExactlyOneSeparator) {
  struct Case {
    const char* directory;  // '|' stands for the build's separator
    const char* path;
  };
  const Case cases[] = {
      {"logs", "logs|a.log"}, {"logs|", "logs|a.log"}, {"logs|||", "logs|a.log"}, {"|var|log", "|var|log|a.log"},
      {"|", "|a.log"},        {"", "a.log"},           {"Księgi|Zakład", "Księgi|Zakład|a.log"},
#if defined(_WIN32)
      {"C:\\logs/\\", "C:\\logs\\a.log"}, {"C:", "C:\\a.log"},
#endif
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.directory);
    std::string directory = c.directory, path = c.path;
    std::replace(directory.begin(), directory.end(), '|', kSep);
    std::replace(path.begin(), path.end(), '|', kSep);
    EXPECT_EQ(JoinLogPath(directory, "a.log"), path);
  }
  TempDir dir;
  EXPECT_EQ(FileLoggerSink(dir.Path() + kSep + kSep, "x.log").Path(), dir.Path() + kSep + "x.log");
  EXPECT_EQ(FileLoggerSink("x.log").Path(), DefaultLogDirectory() + kSep + "x.log");
  EXPECT_EQ(FileLoggerSink("", "x.log").Path(), DefaultLogDirectory() + kSep + "x.log");
}

#if !defined(_WIN32)
TEST(LogPaths, DefaultDirectoryIsTheUsersDataDirectory) {
  const std::string home = std::getenv("HOME") ? std::getenv("HOME") : "";
  setenv("HOME", "/home/ola", 1);
  setenv("XDG_DATA_HOME", "/srv/data", 1);
  EXPECT_EQ(DefaultLogDirectory(), "/srv/data/Orvant VX");
  setenv("XDG_DATA_HOME", "relative/is/ignored", 1);
  EXPECT_EQ(DefaultLogDirectory(), "/home/ola/.local/share/Orvant VX");
  unsetenv("XDG_DATA_HOME");
  EXPECT_EQ(DefaultLogDirectory(), "/home/ola/.local/share/Orvant VX");
  setenv("HOME", home.c_str(), 1);
}
#endif

TEST(FileLoggerSinkTest, OneLinePerEntryWithTheLevelInBracketsAppendedToWhatIsThere) {
  TempDir dir;
  const std::string path = JoinLogPath(dir.Path(), "Księga.log");
  { std::ofstream(NativePath(path)) << "earlier line\n"; }
  FileLoggerSink sink(dir.Path(), "Księga.log");
  for (int level : {0, 1, -1, 4}) sink.Write(static_cast<tagFramLogLevel>(level), "Zażółć gęślą jaźń");
  sink.Write(FramLogWarning, "w");
  sink.Write(FramLogError, "e");
  const std::vector<std::string> expected = {"earlier line",       "[DEBUG] Zażółć gęślą jaźń", "[INFO] Zażółć gęślą jaźń",
                                             "[] Zażółć gęślą jaźń", "[] Zażółć gęślą jaźń",      "[WARNING] w",
                                             "[ERROR] e"};
  EXPECT_EQ(ReadLines(path), expected);
}

// Every entry is in the file when Write returns, whatever its level, while the sink lives on; and
// it stays there when the process is killed at once, with no destructor or flush to run.
TEST(FileLoggerSinkTest, EveryEntryIsInTheFileWhenWriteReturns) {
  for (int level : {0, 1, 2, 3, 7}) {
    SCOPED_TRACE(level);
    TempDir dir;
    FileLoggerSink sink(dir.Path(), "a.log");
    sink.Write(static_cast<tagFramLogLevel>(level), "jeden");
    sink.Write(static_cast<tagFramLogLevel>(level), "dwa");
    const std::string name(LevelName(static_cast<tagFramLogLevel>(level)));
    EXPECT_EQ(ReadLines(sink.Path()), (std::vector<std::string>{"[" + name + "] jeden", "[" + name + "] dwa"}));
#if !defined(_WIN32)
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
      FileLoggerSink inChild(dir.Path(), "a.log");
      inChild.Write(static_cast<tagFramLogLevel>(level), "przed zabiciem");
      raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    EXPECT_EQ(ReadLines(sink.Path()).back(), "[" + name + "] przed zabiciem");
#endif
  }
}

TEST(FileLoggerSinkTest, LongAndMultiLineMessagesAreWrittenWhole) {
  TempDir dir;
  std::string huge(10 * 1024 * 1024, 'x');
  for (std::size_t i = 0; i < huge.size(); i += 997) huge[i] = static_cast<char>('a' + i % 26);
  {
    FileLoggerSink sink(dir.Path(), "a.log");
    sink.Write(FramLogInfo, huge);
    sink.Write(FramLogError, "pierwsza\ndruga\n\nczwarta");
    sink.Write(FramLogInfo, "");
  }
  const std::string expected = "[INFO] " + huge + kEol + "[ERROR] pierwsza" + kEol + "druga" + kEol + kEol + "czwarta" +
                               kEol + "[INFO] " + kEol;
  EXPECT_TRUE(ReadWholeFile(JoinLogPath(dir.Path(), "a.log")) == expected);
}

TEST(FileLoggerSinkTest, AnUnwritablePlaceDropsEntriesAndLaterEntriesTryAgain) {
  TempDir dir;
  // A file where the directory should be: no one can open or create it, root included.
  const std::string blocker = JoinLogPath(dir.Path(), "blocked");
  { std::ofstream(NativePath(blocker)) << "not a directory"; }
  auto sink = std::make_shared<FileLoggerSink>(JoinLogPath(blocker, "sub"), "a.log");
  SimpleLoggerWrapper logger = Custom::CreateLogger(sink, std::make_shared<AlwaysOnLoggerToggle>(), nullptr);
  EXPECT_NO_THROW(logger.Write(FramLogError, "lost"));
  EXPECT_NO_THROW(logger.Write(FramLogDebug, "lost too"));
  EXPECT_NO_THROW(sink->Flush());
  std::filesystem::remove(NativePath(blocker));
  logger.Write(FramLogError, "kept; the missing directories are made");
  EXPECT_EQ(ReadLines(sink->Path()), std::vector<std::string>{"[ERROR] kept; the missing directories are made"});
}

TEST(FileLoggerFactoryTest, ToggleAndTimestampOfTheBuiltLogger) {
  for (bool enabled : {true, false}) {
    SCOPED_TRACE(enabled);
    TempDir dir;
    std::shared_ptr<const ILoggerToggle> toggle = std::make_shared<AlwaysOnLoggerToggle>();
    if (!enabled) toggle = std::make_shared<NoDataFactoryParamLoggerToggle>(varion::db::Connection());
    Custom::File::LoggerFactory("Fakturowanie.log", toggle, Formatting::Timestamp)
        .WithCustomDirectory(dir.Path() + kSep)
        .Get()
        .Write(FramLogWarning, "Kontrola");
    const std::string path = JoinLogPath(dir.Path(), "Fakturowanie.log");
    EXPECT_EQ(std::filesystem::exists(NativePath(path)), enabled);
    if (!enabled) continue;
    const auto lines = ReadLines(path);
    ASSERT_EQ(lines.size(), 1u);
    const std::regex shape(R"(\[WARNING\] \d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}\tKontrola)");
    EXPECT_TRUE(std::regex_match(lines[0], shape)) << lines[0];
  }
}

// Four threads, each through one of two sinks of the same file, write "<thread>:<seq>:<letters>";
// every line must come back whole and each thread's lines in the order written.
TEST(FileLoggerSinkTest, ThreadsAndSinksSharingAFileNeverMixTheirLines) {
  TempDir dir;
  const int threads = 4, perThread = 3000;
  auto length = [](int t, int i) { return static_cast<std::size_t>(1 + (i * 37 + t * 11) % 700); };
  {
    FileLoggerSink first(dir.Path(), "a.log"), second(dir.Path(), "a.log");
    std::vector<std::thread> pool;
    for (int t = 0; t < threads; ++t)
      pool.emplace_back([&, t] {
        for (int i = 0; i < perThread; ++i)
          (t % 2 ? first : second)
              .Write(FramLogInfo, std::to_string(t) + ":" + std::to_string(i) + ":" + std::string(length(t, i), static_cast<char>('a' + t)));
      });
    for (auto& th : pool) th.join();
  }
  const std::regex shape(R"(\[INFO\] (\d):(\d+):([a-d]+))");
  std::map<int, int> next;
  for (const std::string& line : ReadLines(JoinLogPath(dir.Path(), "a.log"))) {
    std::smatch m;
    ASSERT_TRUE(std::regex_match(line, m, shape)) << line.substr(0, 80);
    const int t = std::stoi(m[1]), i = std::stoi(m[2]);
    ASSERT_EQ(m[3].str(), std::string(length(t, i), static_cast<char>('a' + t)));
    EXPECT_EQ(i, next[t]++);
  }
  ASSERT_EQ(next.size(), static_cast<std::size_t>(threads));
  for (const auto& [t, count] : next) EXPECT_EQ(count, perThread) << t;
}

}  // namespace
}  // namespace SimpleLog
