// The older per-file log through its hooks: the switch asked once, the lines, the size limit and
// the time text of a value that cannot be converted.
#include <gtest/gtest.h>

#include <filesystem>

#include "diagnostics/file_logger_sink.h"
#include "diagnostics/log_platform.h"
#include "diagnostics/simple_log_deprecated.h"
#include "tests/log_test_support.h"
#include "tests/native_support.h"

namespace {

using varion::logplatform::NativePath;
using varion::testing::ReadLines;
using varion::testing::TempDir;

// The switch and the clock under the test's control.
class SwitchedLog : public CSimpleLogDeprecated {
 public:
  SwitchedLog(bool on, std::string file, std::string directory, int limitKb = 0)
      : CSimpleLogDeprecated(std::move(file), true, limitKb, std::move(directory)), m_on(on) {}
  int checks = 0;
  using CSimpleLogDeprecated::TimestampOf;

 protected:
  bool CheckCanEnableLogging() override {
    ++checks;
    return m_on;
  }
  std::string GetTimestamp() override { return "14.03.2025 09:26:53"; }

 private:
  bool m_on;
};

TEST(SimpleLogDeprecated, WritesOnlyWhenTheSwitchIsOnAndAsksItOnce) {
  for (bool on : {false, true}) {
    SCOPED_TRACE(on);
    TempDir dir;
    std::string path;
    {
      SwitchedLog log(on, "Płace.log", dir.Path());
      path = log.GetFilePath();
      EXPECT_TRUE(log.NeedToCheckIfLogEnabled());
      log.Write("Naliczono listę płac");
      log.WriteFormat("Pracownik %s, kwota %d,%02d zł", "Żak", 1234, 5);
      EXPECT_EQ(log.checks, 1);
      EXPECT_EQ(log.IsLoggingDisabled(), !on);
    }
    EXPECT_EQ(path, SimpleLog::JoinLogPath(dir.Path(), "Płace.log"));
    const std::vector<std::string> expected = {"14.03.2025 09:26:53\tNaliczono listę płac",
                                               "14.03.2025 09:26:53\tPracownik Żak, kwota 1234,05 zł"};
    EXPECT_EQ(ReadLines(path), on ? expected : std::vector<std::string>{});
  }
}

TEST(SimpleLogDeprecated, AFileOverTheSizeLimitIsSetAsideWhenOpened) {
  for (int limitKb : {0, 4}) {
    SCOPED_TRACE(limitKb);
    TempDir dir;
    const std::string path = SimpleLog::JoinLogPath(dir.Path(), "a.log");
    { std::ofstream(NativePath(path), std::ios::binary) << std::string(4096, 'o') << '\n'; }
    { std::ofstream(NativePath(path + ".old"), std::ios::binary) << "older\n"; }
    SwitchedLog(true, "a.log", dir.Path(), limitKb).Write("nowy");
    EXPECT_EQ(ReadLines(path).size(), limitKb ? 1u : 2u);
    EXPECT_EQ(std::filesystem::file_size(NativePath(path + ".old")), limitKb ? 4097u : 6u);
  }
}

TEST(SimpleLogDeprecated, FailuresLoseTheEntryOnly) {
  EXPECT_EQ(SwitchedLog::TimestampOf(varion::DateTime::Invalid()), "Invalid DateTime");
  EXPECT_NE(SwitchedLog::TimestampOf(varion::DateTime(2025, 3, 14, 9, 26, 53)).find("09:26:53"), std::string::npos);
  TempDir dir;
  const std::string blocker = SimpleLog::JoinLogPath(dir.Path(), "blocked");
  std::filesystem::create_directory(NativePath(blocker));  // a directory where the file should be
  SwitchedLog log(true, "blocked", dir.Path());
  EXPECT_NO_THROW(log.Write("lost"));
  std::filesystem::remove(NativePath(blocker));
  log.Write("kept");
  EXPECT_EQ(ReadLines(blocker), std::vector<std::string>{"14.03.2025 09:26:53\tkept"});
}

}  // namespace
