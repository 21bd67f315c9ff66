// Assembly of loggers, the wrapper, level names, formatters and the entry helpers.
#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <regex>
#include <stdexcept>

#include "diagnostics/log_factories.h"
#include "tests/log_test_support.h"

namespace SimpleLog {
namespace {

using varion::DateTime;
using varion::testing::FixedClock;
using varion::testing::RecordingSink;

class SwitchToggle : public ILoggerToggle {
 public:
  explicit SwitchToggle(bool on) : m_on(on) {}
  bool IsEnabled() const override { return m_on; }

 private:
  bool m_on;
};

class CountingFormatter : public IFormatter {
 public:
  std::string ApplyExtraFormatting(std::string_view text) const override {
    ++calls;
    return "<" + std::string(text) + ">";
  }
  mutable std::atomic<int> calls{0};
};

class ThrowingSink : public ILoggerSink {
 public:
  void Write(tagFramLogLevel, std::string_view) override { throw std::runtime_error("disk gone"); }
};

class ThrowingFormatter : public IFormatter {
 public:
  std::string ApplyExtraFormatting(std::string_view) const override { throw std::bad_alloc(); }
};

TEST(SimpleLogLevels, NamesOfTheFourLevelsAndEmptyForAnyOther) {
  struct Case {
    int level;
    const char* name;
  };
  const Case cases[] = {{0, "DEBUG"}, {1, "INFO"},  {2, "WARNING"}, {3, "ERROR"},
                        {-1, ""},     {4, ""},      {INT_MIN, ""},  {INT_MAX, ""}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.level);
    EXPECT_EQ(LevelName(static_cast<tagFramLogLevel>(c.level)), c.name);
  }
}

TEST(SimpleLogAssembly, ToggleDecidesBeforeFormattingAndFormatterShapesTheText) {
  struct Case {
    bool enabled;
    bool withFormatter;
    int formatted;
    std::vector<std::string> written;
  };
  const Case cases[] = {
      {true, true, 2, {"<a>", "<b>"}},
      {true, false, 0, {"a", "b"}},
      {false, true, 0, {}},
      {false, false, 0, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "enabled " << c.enabled << ", formatter " << c.withFormatter);
    auto sink = std::make_shared<RecordingSink>();
    auto formatter = std::make_shared<CountingFormatter>();
    SimpleLoggerWrapper logger = Custom::CreateLogger(sink, std::make_shared<SwitchToggle>(c.enabled),
                                                      c.withFormatter ? formatter : nullptr);
    logger.Write(FramLogInfo, "a");
    logger.Write(FramLogError, "b");
    EXPECT_EQ(formatter->calls.load(), c.formatted);
    std::vector<std::string> written;
    for (const auto& e : sink->Entries()) written.push_back(e.second);
    EXPECT_EQ(written, c.written);
    if (!sink->Entries().empty()) {
      EXPECT_EQ(sink->Entries()[0].first, FramLogInfo);
      EXPECT_EQ(sink->Entries()[1].first, FramLogError);
    }
  }
}

TEST(SimpleLogAssembly, MissingPartsAndFailingPartsNeverReachTheCaller) {
  auto sink = std::make_shared<RecordingSink>();
  auto on = std::make_shared<AlwaysOnLoggerToggle>();
  // Without a toggle the logger is off.
  Custom::CreateLogger(sink, nullptr, nullptr).Write(FramLogError, "x");
  EXPECT_TRUE(sink->Entries().empty());
  EXPECT_NO_THROW(Custom::CreateLogger(nullptr, on, nullptr).Write(FramLogError, "x"));
  EXPECT_NO_THROW(Custom::CreateLogger(std::make_shared<ThrowingSink>(), on, nullptr).Write(FramLogError, "x"));
  EXPECT_NO_THROW(Custom::CreateLogger(sink, on, std::make_shared<ThrowingFormatter>()).Write(FramLogError, "x"));
  EXPECT_TRUE(sink->Entries().empty());
  EXPECT_NO_THROW(Dummy::CreateLogger().Write(FramLogError, "x"));
}

TEST(SimpleLogWrapper, MovesAndUnwrapsItsOneLogger) {
  auto sink = std::make_shared<RecordingSink>();
  SimpleLoggerWrapper first = Custom::CreateLogger(sink, std::make_shared<AlwaysOnLoggerToggle>(), nullptr);
  SimpleLoggerWrapper second = std::move(first);
  first.Write(FramLogInfo, "from the moved-from wrapper");
  second.Write(FramLogInfo, "one");
  std::unique_ptr<ISimpleLogger> raw = second.Unwrap();
  ASSERT_NE(raw, nullptr);
  EXPECT_FALSE(second.HasLogger());
  second.Write(FramLogInfo, "from the unwrapped wrapper");
  raw->Write(FramLogWarning, "two");
  ASSERT_EQ(sink->Entries().size(), 2u);
  EXPECT_EQ(sink->Entries()[0].second, "one");
  EXPECT_EQ(sink->Entries()[1].second, "two");
  static_assert(!std::is_copy_constructible_v<SimpleLoggerWrapper>);
}

TEST(SimpleLogFormatters, TimestampTextOfClockValues) {
  const double ms = 1.0 / 86'400'000;
  struct Case {
    DateTime when;
    const char* text;
  };
  const Case cases[] = {
      {DateTime(2024, 2, 29, 23, 59, 59), "2024-02-29 23:59:59.000"},
      {DateTime(DateTime(2025, 3, 14, 9, 26, 53).Value() + 589 * ms), "2025-03-14 09:26:53.589"},
      // A fraction just under a whole millisecond rounds up, into the next day if need be.
      {DateTime(DateTime(2025, 3, 14, 12, 0, 0).Value() + 999.6 * ms), "2025-03-14 12:00:01.000"},
      {DateTime(DateTime(2024, 12, 31, 23, 59, 59).Value() + 999.7 * ms), "2025-01-01 00:00:00.000"},
      // Before 1899-12-30 the days count backwards while the time still counts forwards.
      {DateTime(-1.25), "1899-12-29 06:00:00.000"},
      {DateTime(), "1899-12-30 00:00:00.000"},
      {DateTime(9999, 12, 31, 23, 59, 59), "9999-12-31 23:59:59.000"},
      {DateTime(100, 1, 1), "0100-01-01 00:00:00.000"},
      {DateTime::Invalid(), "Invalid DateTime"},
      {DateTime::Null(), "Invalid DateTime"},
      {DateTime(2024, 2, 30), "Invalid DateTime"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    TimestampFormatter formatter(std::make_shared<FixedClock>(c.when));
    EXPECT_EQ(formatter.ApplyExtraFormatting("Zapisano \"Łódź\"\tok"), std::string(c.text) + "\tZapisano \"Łódź\"\tok");
    EXPECT_EQ(TimestampFormatter::TimeText(c.when), c.text);
  }
}

TEST(SimpleLogFormatters, FactoryGivesUnchangedOrTimestampedTextOnTheSystemClock) {
  EXPECT_EQ(FormatterFactory::Create(Formatting::Dummy)->ApplyExtraFormatting("a\nb"), "a\nb");
  const std::string stamped = FormatterFactory::Create(Formatting::Timestamp)->ApplyExtraFormatting("a\nb");
  EXPECT_TRUE(std::regex_match(stamped, std::regex(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}\ta\nb)"))) << stamped;
  // The system clock is the local time that DateTime::Now gives, with a fraction of the second.
  const DateTime before = DateTime::Now();
  const DateTime now = SystemClock().CurrentTime();
  const DateTime after = DateTime::Now();
  ASSERT_TRUE(now.IsValid());
  EXPECT_GE(now.Value(), before.Value() - 1e-9);
  EXPECT_LT(now.Value(), after.Value() + 1.0 / 86400);
}

TEST(SimpleLogFields, ComErrorAndSourceLocationAreAppendedAsNamedFields) {
  struct Case {
    varion::Status32 code;
    const char* message;
    const char* written;
  };
  const Case cases[] = {
      {varion::kFail, "Nieokreślony błąd", "Zapis dokumentu error_message=Nieokreślony błąd error_code=0x80004005"},
      {varion::kPointer, "", "Zapis dokumentu error_message= error_code=0x80004003"},
      {0x1, "x=y", "Zapis dokumentu error_message=x=y error_code=0x1"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.written);
    auto sink = std::make_shared<RecordingSink>();
    SimpleLoggerWrapper logger = Custom::CreateLogger(sink, std::make_shared<AlwaysOnLoggerToggle>(), nullptr);
    ComHelpers::WriteComError(logger, "Zapis dokumentu", varion::ComError(c.code, c.message));
    ASSERT_EQ(sink->Entries().size(), 1u);
    EXPECT_EQ(sink->Entries()[0].first, FramLogError);
    EXPECT_EQ(sink->Entries()[0].second, c.written);
  }

  const int line = __LINE__ + 1;
  const LogFields::Field here = LogFields::SourceLocation();
  EXPECT_EQ(here.name, "source_location");
  EXPECT_EQ(here.value.rfind("simple_log_test.cpp:" + std::to_string(line) + " ", 0), 0u) << here.value;
  EXPECT_NE(here.value.find("TestBody"), std::string::npos) << here.value;
  EXPECT_EQ(LogFields::WithFields("a", {{"k", "v"}, here}), "a k=v source_location=" + here.value);
}

}  // namespace
}  // namespace SimpleLog
