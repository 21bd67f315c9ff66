// The older per-file log through its hooks: the switch asked once, the file path, the lines, the
// size limit and the time text of a value that cannot be converted.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "diagnostics/file_logger_sink.h"
#include "diagnostics/log_platform.h"
#include "diagnostics/simple_log_deprecated.h"
#include "tests/log_test_support.h"
#include "tests/native_support.h"

namespace {

using varion::testing::ReadLines;
using varion::testing::TempDir;

// The switch and the clock under the test's control.
class SwitchedLog : public CSimpleLogDeprecated {
 public:
  SwitchedLog(bool on, std::string file, std::string directory, bool flush = true, int limitKb = 0)
      : CSimpleLogDeprecated(std::move(file), flush, limitKb, std::move(directory)), m_on(on) {}
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

std::filesystem::path Native(const std::string& path) { return varion::logplatform::NativePath(path); }

TEST(SimpleLogDeprecated, WritesOnlyWhenTheSwitchIsOnAndAsksItOnce) {
  for (bool on : {false, true}) {
    SCOPED_TRACE(on);
    TempDir dir;
    SwitchedLog log(on, "Płace.log", dir.Path());
    EXPECT_EQ(log.GetFilePath(), SimpleLog::JoinLogPath(dir.Path(), "Płace.log"));
    EXPECT_TRUE(log.NeedToCheckIfLogEnabled());
    log.Write("Naliczono listę płac");
    log.WriteFormat("Pracownik %s, kwota %d,%02d zł", "Żak", 1234, 5);
    log.Write("");
    EXPECT_FALSE(log.NeedToCheckIfLogEnabled());
    EXPECT_EQ(log.checks, 1);
    EXPECT_EQ(log.IsLoggingDisabled(), !on);
    if (!on) {
      EXPECT_FALSE(std::filesystem::exists(Native(log.GetFilePath())));
      continue;
    }
    const std::vector<std::string> expected = {"14.03.2025 09:26:53\tNaliczono listę płac",
                                               "14.03.2025 09:26:53\tPracownik Żak, kwota 1234,05 zł",
                                               "14.03.2025 09:26:53\t"};
    EXPECT_EQ(ReadLines(log.GetFilePath()), expected);
  }
}

TEST(SimpleLogDeprecated, AFileOverTheSizeLimitIsSetAsideWhenOpened) {
  struct Case {
    int limitKb;
    std::size_t existingBytes;
    bool setAside;
  };
  const Case cases[] = {{0, 5000, false}, {4, 4096, false}, {4, 4097, true}, {-3, 5000, false}};
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.limitKb << " KB, " << c.existingBytes << " bytes");
    TempDir dir;
    const std::string path = SimpleLog::JoinLogPath(dir.Path(), "a.log");
    { std::ofstream(Native(path), std::ios::binary) << std::string(c.existingBytes - 1, 'o') << '\n'; }
    { std::ofstream(Native(path + ".old"), std::ios::binary) << "older still\n"; }
    {
      SwitchedLog log(true, "a.log", dir.Path(), false, c.limitKb);
      log.Write("nowy");
    }
    const auto lines = ReadLines(path);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back(), "14.03.2025 09:26:53\tnowy");
    EXPECT_EQ(lines.size(), c.setAside ? 1u : 2u);
    EXPECT_EQ(std::filesystem::file_size(Native(path + ".old")), c.setAside ? c.existingBytes : 12u);
  }
}

TEST(SimpleLogDeprecated, UnconvertibleTimeIsWrittenAsInvalidDateTime) {
  EXPECT_EQ(SwitchedLog::TimestampOf(varion::DateTime::Invalid()), "Invalid DateTime");
  EXPECT_EQ(SwitchedLog::TimestampOf(varion::DateTime::Null()), "Invalid DateTime");
  const std::string valid = SwitchedLog::TimestampOf(varion::DateTime(2025, 3, 14, 9, 26, 53));
  EXPECT_NE(valid.find("2025"), std::string::npos) << valid;
  EXPECT_NE(valid.find("09:26:53"), std::string::npos) << valid;
}

TEST(SimpleLogDeprecated, AnUnwritableFileDropsEntriesAndLaterOnesTryAgain) {
  TempDir dir;
  const std::string blocker = SimpleLog::JoinLogPath(dir.Path(), "blocked");
  std::filesystem::create_directory(Native(blocker));  // a directory where the file should be
  SwitchedLog log(true, "blocked", dir.Path());
  EXPECT_NO_THROW(log.Write("lost"));
  std::filesystem::remove(Native(blocker));
  log.Write("kept");
  EXPECT_EQ(ReadLines(blocker), std::vector<std::string>{"14.03.2025 09:26:53\tkept"});
}

}  // namespace
